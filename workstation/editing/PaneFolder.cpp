// SPDX-License-Identifier: Apache-2.0

#include "PaneFolder.h"

#include <OxBase/DpiTool.h>

#include <QAbstractButton>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QWidget>

namespace
{
constexpr int roomyWidth = 1280;

QAbstractButton* ButtonOf(const QWidget* editor, const char* name)
{
    return editor->findChild<QAbstractButton*>(QLatin1String(name));
}

// What hides the button is the state of the pane, not the page that is shown.
QAbstractButton* IfOffered(QAbstractButton* button, const QWidget* pane)
{
    return button && !button->isHidden() && pane && !pane->isHidden() ? button : nullptr;
}
} // namespace

PaneFolder::PaneFolder(QWidget* shownEditor) : QObject(shownEditor), editor(shownEditor)
{
    editor->installEventFilter(this);
    if (auto* unfold = ButtonOf(editor, "pushButtonUnfold"))
        connect(unfold, &QAbstractButton::clicked, this, [this] { folded = folded && working; });
}

bool PaneFolder::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        Arrange(static_cast<QResizeEvent*>(event)->size().width());
    return QObject::eventFilter(watched, event);
}

void PaneFolder::Arrange(int width)
{
    const bool isNarrow = width < DpiTool::ScaleDefault(roomyWidth);
    if (isNarrow == narrow || working)
        return;
    const QScopedValueRollback<bool> guard(working, true);
    narrow = isNarrow;
    if (narrow && FoldButton()) {
        FoldButton()->click();
        folded = true;
    } else if (!narrow && folded) {
        folded = false;
        if (UnfoldButton())
            UnfoldButton()->click();
    }
}

QAbstractButton* PaneFolder::FoldButton() const
{
    return IfOffered(ButtonOf(editor, "browserFold"),
                     editor->findChild<QWidget*>(QStringLiteral("browserPane")));
}

QAbstractButton* PaneFolder::UnfoldButton() const
{
    auto* const button = ButtonOf(editor, "pushButtonUnfold");
    return IfOffered(button, button ? button->parentWidget() : nullptr);
}
