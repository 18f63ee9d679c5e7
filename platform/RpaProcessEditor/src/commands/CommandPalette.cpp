// SPDX-License-Identifier: Apache-2.0

#include "CommandList_p.h"
#include "CommandPalette_p.h"

#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbTheme.h>

#include <QKeyEvent>
#include <QListView>
#include <QVBoxLayout>

CommandPalette::CommandPalette(QWidget* parent)
    : QWidget(parent), search(new WbLineEdit), view(new QListView), labelNothing(new WbLabel),
      commands(new CommandList(this))
{
    setObjectName(QStringLiteral("commandPalette"));
    search->setObjectName(QStringLiteral("lineEditCommandSearch"));
    search->setPlaceholderText(QStringLiteral("搜索指令"));
    search->setAccessibleName(QStringLiteral("搜索指令"));
    search->setClearButtonEnabled(true);
    search->installEventFilter(this);
    view->setObjectName(QStringLiteral("commandListView"));
    view->setAccessibleName(QStringLiteral("指令"));
    view->setModel(commands);
    view->setItemDelegate(new CommandListDelegate(view));
    view->setUniformItemSizes(true);
    view->setDragDropMode(QAbstractItemView::DragOnly);
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->setFrameShape(QFrame::NoFrame);
    view->setMouseTracking(true);
    view->installEventFilter(this);
    labelNothing->setObjectName(QStringLiteral("labelNoCommand"));
    labelNothing->setProperty("hint", true);
    labelNothing->setWordWrap(true);
    labelNothing->setTextFormat(Qt::PlainText);
    labelNothing->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    labelNothing->setContentsMargins(6, 6, 6, 0);
    labelNothing->hide();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 8, 4, 0);
    layout->setSpacing(6);
    layout->addWidget(search);
    layout->addWidget(view);
    layout->addWidget(labelNothing, 1);

    connect(search, &QLineEdit::textChanged, this, &CommandPalette::SlotSearch);
    connect(view, &QListView::doubleClicked, this, &CommandPalette::Activate);
    connect(view, &QListView::clicked, this, [this](const QModelIndex& index) {
        if (index.data(CommandList::NameRole).toString().isEmpty() && search->text().isEmpty())
            commands->ToggleGroup(index.data(CommandList::GroupRole).toString());
    });
    connect(WbTheme::Instance(), &WbTheme::SigChanged, view, [this] { view->viewport()->update(); });
}

void CommandPalette::SlotSearch(const QString& text)
{
    commands->Show(text, true);
    labelNothing->setText(commands->NothingFound());
    labelNothing->setVisible(!labelNothing->text().isEmpty());
    view->setVisible(labelNothing->text().isEmpty());
    const int first = commands->FirstCommandRow();
    if (!text.isEmpty() && first >= 0)
        view->setCurrentIndex(commands->index(first));
}

void CommandPalette::Activate(const QModelIndex& index)
{
    const QString command = index.data(CommandList::NameRole).toString();
    if (!command.isEmpty())
        emit SigCommandChosen(command);
}

bool CommandPalette::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        Activate(view->currentIndex());
        return true;
    }
    if (watched == search && key == Qt::Key_Down && !view->isHidden()) {
        view->setFocus();
        return true;
    }
    if (watched == search && key == Qt::Key_Escape && !search->text().isEmpty()) {
        search->clear();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}
