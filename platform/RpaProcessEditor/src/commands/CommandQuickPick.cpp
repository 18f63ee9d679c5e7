// SPDX-License-Identifier: Apache-2.0

#include "CommandList_p.h"
#include "CommandQuickPick_p.h"

#include <OxBase/DpiTool.h>

#include <QKeyEvent>

CommandQuickPick::CommandQuickPick(QWidget* parent)
    : QFrame(parent, Qt::Popup), commands(new CommandList(this))
{
    ui.setupUi(this);
    ui.lineEditQuickPick->installEventFilter(this);
    ui.quickPickView->setModel(commands);
    auto* delegate = new CommandListDelegate(ui.quickPickView);
    delegate->wide = true;
    ui.quickPickView->setItemDelegate(delegate);
    ui.labelNoQuickPick->setContentsMargins(6, 6, 6, 0);

    connect(ui.lineEditQuickPick, &QLineEdit::textChanged, this, &CommandQuickPick::SlotSearch);
    connect(ui.quickPickView, &QListView::clicked, this, &CommandQuickPick::Take);
}

void CommandQuickPick::Open(const QPoint& globalPosition)
{
    resize(DpiTool::ScaleDefault(460), DpiTool::ScaleDefault(340));
    ui.lineEditQuickPick->clear();
    SlotSearch(QString());
    const QWidget* window = parentWidget()->window();
    const QRect area(window->mapToGlobal(QPoint()), window->size());
    const int x = qBound(area.left(), globalPosition.x(), qMax(area.left(), area.right() - width()));
    const int y = qBound(area.top(), globalPosition.y(), qMax(area.top(), area.bottom() - height()));
    move(x, y);
    show();
    ui.lineEditQuickPick->setFocus();
}

void CommandQuickPick::SlotSearch(const QString& text)
{
    commands->Show(text, false);
    ui.labelNoQuickPick->setText(commands->NothingFound());
    ui.labelNoQuickPick->setVisible(!ui.labelNoQuickPick->text().isEmpty());
    ui.quickPickView->setVisible(ui.labelNoQuickPick->text().isEmpty());
    ui.quickPickView->setCurrentIndex(commands->index(0));
}

void CommandQuickPick::Take()
{
    const QString command = ui.quickPickView->currentIndex().data(CommandList::NameRole).toString();
    if (command.isEmpty())
        return; // nothing fits: the words stay to be changed
    hide();
    emit SigCommandChosen(command);
}

void CommandQuickPick::Step(int rows)
{
    const int row = qBound(0, ui.quickPickView->currentIndex().row() + rows, commands->rowCount() - 1);
    ui.quickPickView->setCurrentIndex(commands->index(row));
}

bool CommandQuickPick::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Take();
            return true;
        case Qt::Key_Escape:
            hide();
            return true;
        case Qt::Key_Down:
            Step(1);
            return true;
        case Qt::Key_Up:
            Step(-1);
            return true;
        case Qt::Key_PageDown:
            Step(8);
            return true;
        case Qt::Key_PageUp:
            Step(-8);
            return true;
        default:
            break;
        }
    }
    return QFrame::eventFilter(watched, event);
}
