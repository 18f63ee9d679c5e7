// SPDX-License-Identifier: Apache-2.0

#include "CommandList_p.h"
#include "CommandQuickPick_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>

#include <QKeyEvent>
#include <QListView>
#include <QVBoxLayout>

CommandQuickPick::CommandQuickPick(QWidget* parent)
    : QFrame(parent, Qt::Popup), edit(new WbLineEdit), view(new QListView), labelNothing(new WbLabel),
      commands(new CommandList(this))
{
    setObjectName(QStringLiteral("commandQuickPick"));
    setFrameShape(QFrame::StyledPanel);
    edit->setObjectName(QStringLiteral("lineEditQuickPick"));
    edit->setPlaceholderText(QStringLiteral("输入指令的名称或用途，回车添加"));
    edit->setAccessibleName(QStringLiteral("查找并添加指令"));
    edit->installEventFilter(this);
    view->setObjectName(QStringLiteral("quickPickView"));
    view->setModel(commands);
    auto* delegate = new CommandListDelegate(view);
    delegate->wide = true;
    view->setItemDelegate(delegate);
    view->setUniformItemSizes(true);
    view->setFrameShape(QFrame::NoFrame);
    view->setFocusPolicy(Qt::NoFocus);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    labelNothing->setObjectName(QStringLiteral("labelNoQuickPick"));
    labelNothing->setProperty("hint", true);
    labelNothing->setWordWrap(true);
    labelNothing->setTextFormat(Qt::PlainText);
    labelNothing->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    labelNothing->setContentsMargins(6, 6, 6, 0);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addWidget(edit);
    layout->addWidget(view);
    layout->addWidget(labelNothing, 1);

    connect(edit, &QLineEdit::textChanged, this, &CommandQuickPick::SlotSearch);
    connect(view, &QListView::clicked, this, &CommandQuickPick::Take);
}

void CommandQuickPick::Open(const QPoint& globalPosition)
{
    resize(DpiTool::ScaleDefault(460), DpiTool::ScaleDefault(340));
    edit->clear();
    SlotSearch(QString());
    const QWidget* window = parentWidget()->window();
    const QRect area(window->mapToGlobal(QPoint()), window->size());
    const int x = qBound(area.left(), globalPosition.x(), qMax(area.left(), area.right() - width()));
    const int y = qBound(area.top(), globalPosition.y(), qMax(area.top(), area.bottom() - height()));
    move(x, y);
    show();
    edit->setFocus();
}

void CommandQuickPick::SlotSearch(const QString& text)
{
    commands->Show(text, false);
    labelNothing->setText(commands->NothingFound());
    labelNothing->setVisible(!labelNothing->text().isEmpty());
    view->setVisible(labelNothing->text().isEmpty());
    view->setCurrentIndex(commands->index(0));
}

void CommandQuickPick::Take()
{
    const QString command = view->currentIndex().data(CommandList::NameRole).toString();
    if (command.isEmpty())
        return; // nothing fits: the words stay to be changed
    hide();
    emit SigCommandChosen(command);
}

void CommandQuickPick::Step(int rows)
{
    const int row = qBound(0, view->currentIndex().row() + rows, commands->rowCount() - 1);
    view->setCurrentIndex(commands->index(row));
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
