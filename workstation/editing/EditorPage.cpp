// SPDX-License-Identifier: Apache-2.0

#include "EditorPage.h"

#include "PaneFolder.h"
#include "PopOutRoom.h"
#include "ProblemDesk.h"
#include "ReleaseReview.h"
#include "ResultsBar.h"

#include <RpaAppTool/IAppParamWidget.h>
#include <RpaCore/IRpaLifeCycle.h>
#include <RpaCore/RobotExecuteInfo.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <RpaProblems/RpaProblemPane.h>
#include <WbBaseUI/WbIconButtonWidget.h>

#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <utility>

namespace
{
RobotExecuteInfo LaunchInfo(const AppRecord& app)
{
    RobotExecuteInfo info;
    info.SetAppId(app.id);
    info.SetAppName(app.name);
    info.SetCreator(app.creatorPin);
    info.SetOxsAppKey(app.oxsAppKey);
    info.SetAppKind(app.kind);
    return info;
}
} // namespace

EditorPage::EditorPage(QWidget* parent)
    : WbBaseWidget(parent), parts(new QSplitter(Qt::Vertical)),
      desk(new ProblemDesk(new RpaProblemPane(parts))), results(new ResultsBar)
{
    setObjectName(QStringLiteral("EditorPage"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(parts, 1);
    layout->addWidget(results);
    parts->setChildrenCollapsible(false);
    new ReleaseReview(this);
}

void EditorPage::Open(const AppRecord& record)
{
    Discard();
    app = record;
    setWindowTitle(app.name);
    editor = new RpaAppEditorWidget(this);
    parts->insertWidget(0, editor);
    parts->setStretchFactor(0, 1);
    desk->SetEditor(editor);
    new PaneFolder(editor); // the editor owns them
    constexpr int pageMargin = 28;
    if (auto* pages = editor->findChild<QStackedWidget*>(QStringLiteral("stackedWidgetTop")))
        new PopOutRoom(pages, pageMargin);
    editor->show();
    editor->setFocus();
    if (auto* params = editor->findChild<IAppParamWidget*>())
        connect(params, &IAppParamWidget::SigDemanded, this, &EditorPage::SlotDemanded);
    emit SigOpened(editor);
    editor->SetExecuteInfo(LaunchInfo(app));
}

// The run may have been started from another page of the editor than the one with the field.
void EditorPage::SlotDemanded()
{
    auto* const designPage = editor->findChild<WbIconButtonWidget*>(QStringLiteral("pushButtonUI"));
    if (designPage && !designPage->bSelected)
        emit designPage->SigClicked();
}

bool EditorPage::Leave()
{
    if (asking)
        return false;
    if (!editor)
        return true;
    asking = true;
    const BeforeCloseResult answer = editor->BeforeClose();
    asking = false;
    if (answer == BeforeCloseResult::Refused)
        return false;
    Discard();
    return true;
}

void EditorPage::Discard()
{
    // Deleted at once: an editor that is merely hidden would go on hearing the answers meant for the next
    // one.
    if (!editor)
        return;
    desk->SetEditor(nullptr);
    delete editor;
    editor = nullptr;
    results->Forget();
    const AppRecord left = std::exchange(app, AppRecord());
    emit SigLeft(left);
    emit SigClosed();
}
