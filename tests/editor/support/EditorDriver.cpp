// SPDX-License-Identifier: Apache-2.0

#include "EditorDriver.h"

#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <WbBaseUI/ElidedLabelEx.h>

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QTextEdit>
#include <QWindow>
#include <QtTest>

EditorDriver::EditorDriver() : editor(std::make_unique<RpaAppEditorWidget>())
{
    editor->resize(1280, 720);
    editor->show();
}

EditorDriver::~EditorDriver() = default;

void EditorDriver::Destroy()
{
    editor.reset();
}

QWidget* EditorDriver::AsWidget() const
{
    return editor.get();
}

void EditorDriver::Require(const QObject* part, const char* objectName)
{
    if (!part)
        qFatal("the editor has no \"%s\"", objectName);
}

void EditorDriver::Press(const char* buttonName)
{
    QTest::mouseClick(Find(buttonName), Qt::LeftButton);
}

QStringList EditorDriver::GetVersions() const
{
    const auto* combo = Find<QComboBox>("version_combo");
    auto* list = qobject_cast<QListWidget*>(combo->view());
    QStringList names;
    for (int i = 0; i < list->count(); ++i) {
        QWidget* row = list->itemWidget(list->item(i));
        row->ensurePolished();
        names.append(row->findChild<ElidedLabelEx*>(QStringLiteral("rpa_version_combo_text"))->GetText());
    }
    return names;
}

QString EditorDriver::GetSelectedVersion() const
{
    return Find<QComboBox>("version_combo")->lineEdit()->text();
}

QListWidget* EditorDriver::OpenVersions()
{
    auto* combo = Find<QComboBox>("version_combo");
    Click(combo->lineEdit(), combo->lineEdit()->rect().center());
    return qobject_cast<QListWidget*>(combo->view());
}

bool EditorDriver::PickVersion(const QString& name)
{
    const int row = GetVersions().indexOf(name);
    if (row < 0)
        return false;
    QListWidget* const list = OpenVersions();
    Click(list->viewport(), list->visualItemRect(list->item(row)).center());
    return true;
}

bool EditorDriver::PressDelete(const QString& name)
{
    const int index = GetVersions().indexOf(name);
    if (index < 0)
        return false;
    QListWidget* const list = OpenVersions();
    QWidget* const row = list->itemWidget(list->item(index));
    QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
    QCoreApplication::sendEvent(row, &enter);
    auto* mark = row->findChild<QWidget*>(QStringLiteral("rpa_version_combo_delete"));
    if (!mark || mark->isHidden())
        return false;
    Click(mark, mark->rect().center());
    return true;
}

// As the window system sends it: a popup gets what is meant for others. The press may end the window.
void EditorDriver::Click(const QWidget* part, const QPoint& place)
{
    const QPointer<QWindow> window = part->window()->windowHandle();
    const QPoint inWindow = part->mapTo(part->window(), place);
    QTest::mousePress(window.data(), Qt::LeftButton, Qt::NoModifier, inWindow);
    if (window)
        QTest::mouseRelease(window.data(), Qt::LeftButton, Qt::NoModifier, inWindow);
}

void EditorDriver::ShowPage(const char* buttonName)
{
    QTest::mouseClick(Find(buttonName), Qt::LeftButton);
}

void EditorDriver::TypeInstructions(const QString& text)
{
    ShowPage("pushButtonExtend");
    auto* view = Find<QTextEdit>("richTextView");
    QTest::keyClick(view, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClicks(view, text);
}

QString EditorDriver::GetInstructions() const
{
    return Find<QTextEdit>("richTextView")->toPlainText();
}

RequestStatus EditorDriver::GetStatus() const
{
    return Find<RequestStatusBaseWidget>("requestStatusWidget")->GetStatus();
}
