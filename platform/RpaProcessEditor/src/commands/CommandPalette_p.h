// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_CommandPalette.h"

#include <QWidget>

class CommandList;
class QModelIndex;

// The commands that can be added: search, groups, drag or double click.
class CommandPalette : public QWidget
{
    Q_OBJECT

public:
    explicit CommandPalette(QWidget* parent = nullptr);

signals:
    void SigCommandChosen(const QString& command);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void SlotSearch(const QString& text);
    void Activate(const QModelIndex& index);

    Ui::CommandPalette ui; // the label stands in the place of the list when nothing fits
    CommandList* commands;
};
