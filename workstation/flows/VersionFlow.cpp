// SPDX-License-Identifier: Apache-2.0

#include "VersionFlow.h"

#include "EditorPage.h"
#include "MainWindow.h"
#include "Session.h"
#include "VersionDialog.h"
#include "VersionHint.h"
#include "WorkstationSettings.h"

#include <QComboBox>
#include <QLineEdit>

namespace
{
QComboBox* FindList(const QWidget& editor)
{
    return editor.findChild<QComboBox*>(QStringLiteral("version_combo"));
}
} // namespace

VersionFlow::VersionFlow(const Session* ofUser, const WorkstationSettings* store, EditorPage* editorPage,
                         MainWindow* mainWindow)
    : session(ofUser), settings(store), page(editorPage), window(mainWindow)
{
    connect(page, &EditorPage::SigOpened, this, [this](const QWidget* editor) { Follow(*editor); });
    connect(page, &EditorPage::SigClosed, &versions, [this] { versions.SetApp(QString()); });
    connect(window, &MainWindow::SigVersions, this, &VersionFlow::Show);
}

void VersionFlow::Follow(const QWidget& editor)
{
    versions.SetApp(page->GetApp().id);
    if (auto* list = FindList(editor))
        new VersionHint(list, &versions, settings->GetDateLanguage()); // goes with the list
}

void VersionFlow::Show()
{
    const auto* list = FindList(*page);
    if (!list)
        return;
    auto* dialog = new VersionDialog(&versions, session->GetPin(), list->lineEdit()->text(),
                                     settings->GetDateLanguage(), window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}
