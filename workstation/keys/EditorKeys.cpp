// SPDX-License-Identifier: Apache-2.0

#include "EditorKeys.h"

#include "EditorPage.h"

#include <RpaProblems/RpaProblemPane.h>
#include <WbBaseUI/WbEditHistory.h>
#include <WbBaseUI/WbFocusForward.h>
#include <WbBaseUI/WbIconButtonWidget.h>
#include <WbBrowserLite/IBrowserWidget.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QPointer>

namespace
{
constexpr const char* pageButtons[] = {"pushButtonUI", "pushButtonProcess", "pushButtonExtend"};
constexpr const char* pages[] = {"pageUIDesign", "pageProcess", "pageExtendInfo"};
constexpr int pageCount = 3;

// What is being written in a field or a cell is the app's only once the field is left, which a button pressed
// with the mouse sees to.
void FinishField()
{
    const QPointer<QWidget> field = QApplication::focusWidget();
    if (!field)
        return;
    field->clearFocus();
    if (field && field->isVisible() && !QApplication::focusWidget())
        field->setFocus(Qt::OtherFocusReason);
}

// The keyboard goes along to what is shown now, to its main part where there is one.
void TakeFocus(QWidget* page)
{
    const auto parts = page->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* part : parts) {
        const bool knows =
            part->focusProxy() || part->findChild<WbFocusForward*>(QString(), Qt::FindDirectChildrenOnly);
        if (knows && part->isVisible()) {
            part->setFocus(Qt::ShortcutFocusReason);
            return;
        }
    }
    QWidget* const focus = QApplication::focusWidget();
    if (focus && focus->isVisible() && page->isAncestorOf(focus))
        return;
    for (QWidget* next = page->nextInFocusChain(); next != page; next = next->nextInFocusChain()) {
        const bool takes = next->focusPolicy() & Qt::TabFocus;
        if (takes && next->isVisible() && next->isEnabled() && page->isAncestorOf(next)) {
            next->setFocus(Qt::ShortcutFocusReason);
            return;
        }
    }
}
} // namespace

void EditorKeys::BindTo(KeyActs* acts) const
{
    BindPages(acts);
    BindButtons(acts);
    BindSteps(acts);
    BindBrowser(acts);
}

void EditorKeys::BindPages(KeyActs* acts) const
{
    const auto open = [this] { return WhyNotOpen(); };
    const KeyAct shows[] = {KeyAct::PageUI, KeyAct::PageProcess, KeyAct::PageUsage};
    for (int index = 0; index < pageCount; ++index)
        acts->Bind(shows[index], open, [this, index] { ShowPage(index); });
    acts->Bind(KeyAct::ShowProblems, open, [this] { ShowProblems(); });
    acts->Bind(KeyAct::PageNext, open, [this] { ShowPage((CurrentPage() + 1) % pageCount); });
    acts->Bind(KeyAct::PagePrevious, open, [this] { ShowPage((CurrentPage() + pageCount - 1) % pageCount); });
}

void EditorKeys::BindButtons(KeyActs* acts) const
{
    const QString creators = QStringLiteral("只有应用的创建者可以使用");
    const std::tuple<KeyAct, const char*, QString> buttons[] = {
        {KeyAct::Save, "pushButtonSave", QString()},
        {KeyAct::SaveAs, "pushButtonSaveAs", QString()},
        {KeyAct::Gray, "pushButtonBeta", creators},
        {KeyAct::Publish, "pushButtonPublish", creators},
        {KeyAct::ExportTemplate, "pushButtonExportAppData", QStringLiteral("只有超级管理员可以使用")},
    };
    for (const auto& [act, name, whyHidden] : buttons) {
        const char* const button = name;
        acts->Bind(
            act, [this, button, why = whyHidden] { return WhyNotPress(button, why); },
            [this, button] { Press(button); });
    }
    const auto versions = [this] { return editor->findChild<QComboBox*>(QStringLiteral("version_combo")); };
    acts->Bind(
        KeyAct::ChooseVersion,
        [this, versions] {
            const QString reason = WhyNotOpen();
            const bool runs = reason.isEmpty() && !versions()->isEnabled();
            return runs ? QStringLiteral("流程正在运行") : reason;
        },
        [versions] {
            versions()->setFocus(Qt::ShortcutFocusReason);
            versions()->showPopup();
        });
}

void EditorKeys::BindSteps(KeyActs* acts) const
{
    WbEditHistory* const history = WbEditHistory::Instance();
    const auto unless = [this](bool can, const QString& reason) {
        const QString closed = WhyNotOpen();
        return closed.isEmpty() && !can ? reason : closed;
    };
    acts->Bind(
        KeyAct::Undo,
        [unless, history] {
            return unless(history->CanUndo(), QStringLiteral("没有可以撤销的修改，或流程正在运行"));
        },
        [this, history] { ShowPlace(history->Undo()); });
    acts->Bind(
        KeyAct::Redo,
        [unless, history] {
            return unless(history->CanRedo(), QStringLiteral("没有可以重做的修改，或流程正在运行"));
        },
        [this, history] { ShowPlace(history->Redo()); });
}

void EditorKeys::BindBrowser(KeyActs* acts) const
{
    const auto reason = [this](const QAbstractButton* button) {
        const QString closed = WhyNotOpen();
        return closed.isEmpty() && !button ? QStringLiteral("浏览器窗口不在这一页") : closed;
    };
    acts->Bind(
        KeyAct::FoldBrowser, [this, reason] { return reason(FoldButton()); },
        [this] { FoldButton()->click(); });
    acts->Bind(
        KeyAct::PopOutBrowser, [this, reason] { return reason(BrowserButton("browserPopup")); },
        [this] { BrowserButton("browserPopup")->click(); });
}

QString EditorKeys::WhyNotOpen() const
{
    const auto* content = editor->findChild<QWidget*>(QStringLiteral("editorWidget"));
    return content && content->isVisible() ? QString() : QStringLiteral("应用还没有打开");
}

QString EditorKeys::WhyNotPress(const char* name, const QString& whyHidden) const
{
    QString closed = WhyNotOpen();
    if (!closed.isEmpty())
        return closed;
    const auto* button = editor->findChild<QAbstractButton*>(QLatin1String(name));
    if (!button->isVisible())
        return whyHidden;
    return button->isEnabled() ? QString() : QStringLiteral("现在不可用");
}

void EditorKeys::Press(const char* name) const
{
    FinishField();
    editor->findChild<QAbstractButton*>(QLatin1String(name))->click();
}

int EditorKeys::CurrentPage() const
{
    for (int index = 0; index < pageCount; ++index) {
        const auto* button = editor->findChild<WbIconButtonWidget*>(QLatin1String(pageButtons[index]));
        if (button->bSelected)
            return index;
    }
    return 0;
}

void EditorKeys::ShowPage(int index) const
{
    FinishField();
    emit editor->findChild<WbIconButtonWidget*>(QLatin1String(pageButtons[index]))->SigClicked();
    TakeFocus(editor->findChild<QWidget*>(QLatin1String(pages[index])));
}

// Nothing changes unseen.
void EditorKeys::ShowPlace(QWidget* place) const
{
    for (int index = 0; index < pageCount; ++index) {
        const auto* page = editor->findChild<QWidget*>(QLatin1String(pages[index]));
        if (place && page->isAncestorOf(place) && CurrentPage() != index)
            ShowPage(index);
    }
}

void EditorKeys::ShowProblems() const
{
    auto* pane = editor->findChild<RpaProblemPane*>();
    pane->SetOpen(true);
    pane->setFocus(Qt::ShortcutFocusReason);
}

// The browser is in the editor, or in the window that it popped out into.
QAbstractButton* EditorKeys::BrowserButton(const char* name) const
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget* window : windows) {
        const auto* browser =
            window->isVisible() ? window->findChild<IBrowserWidget*>(QStringLiteral("browserPane")) : nullptr;
        auto* button = browser ? browser->findChild<QAbstractButton*>(QLatin1String(name)) : nullptr;
        if (button && button->isVisible())
            return button;
    }
    return nullptr;
}

QAbstractButton* EditorKeys::FoldButton() const
{
    auto* unfold = editor->findChild<QAbstractButton*>(QStringLiteral("pushButtonUnfold"));
    return unfold && unfold->isVisible() ? unfold : BrowserButton("browserFold");
}
