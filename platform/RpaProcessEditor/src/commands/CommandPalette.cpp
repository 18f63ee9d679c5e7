// SPDX-License-Identifier: Apache-2.0

#include "CommandList_p.h"
#include "CommandPalette_p.h"

#include <WbBaseUI/WbTheme.h>

#include <QKeyEvent>

CommandPalette::CommandPalette(QWidget* parent) : QWidget(parent), commands(new CommandList(this))
{
    ui.setupUi(this);
    ui.lineEditCommandSearch->installEventFilter(this);
    ui.commandListView->setModel(commands);
    ui.commandListView->setItemDelegate(new CommandListDelegate(ui.commandListView));
    ui.commandListView->installEventFilter(this);
    ui.labelNoCommand->setContentsMargins(6, 6, 6, 0);
    ui.labelNoCommand->hide();

    connect(ui.lineEditCommandSearch, &QLineEdit::textChanged, this, &CommandPalette::SlotSearch);
    connect(ui.commandListView, &QListView::doubleClicked, this, &CommandPalette::Activate);
    connect(ui.commandListView, &QListView::clicked, this, [this](const QModelIndex& index) {
        if (index.data(CommandList::NameRole).toString().isEmpty() &&
            ui.lineEditCommandSearch->text().isEmpty())
            commands->ToggleGroup(index.data(CommandList::GroupRole).toString());
    });
    connect(WbTheme::Instance(), &WbTheme::SigChanged, ui.commandListView,
            [this] { ui.commandListView->viewport()->update(); });
}

void CommandPalette::SlotSearch(const QString& text)
{
    commands->Show(text, true);
    ui.labelNoCommand->setText(commands->NothingFound());
    ui.labelNoCommand->setVisible(!ui.labelNoCommand->text().isEmpty());
    ui.commandListView->setVisible(ui.labelNoCommand->text().isEmpty());
    const int first = commands->FirstCommandRow();
    if (!text.isEmpty() && first >= 0)
        ui.commandListView->setCurrentIndex(commands->index(first));
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
        Activate(ui.commandListView->currentIndex());
        return true;
    }
    if (watched == ui.lineEditCommandSearch && key == Qt::Key_Down && !ui.commandListView->isHidden()) {
        ui.commandListView->setFocus();
        return true;
    }
    if (watched == ui.lineEditCommandSearch && key == Qt::Key_Escape &&
        !ui.lineEditCommandSearch->text().isEmpty()) {
        ui.lineEditCommandSearch->clear();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}
