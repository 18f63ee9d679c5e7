// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_WheelFolderRow.h"

#include <WbBaseUI/WbBaseWidget.h>

// Where the user names a folder of wheels, by typing or by choosing: packages come from there without a
// network. What is no folder is refused in words beside the field and told to nobody.
class WheelFolderRow : public WbBaseWidget
{
    Q_OBJECT

public:
    // folder: the one chosen before; empty for none.
    WheelFolderRow(const QString& folder, QWidget* parent);

    // Why a text cannot be such a folder, in the user's words; empty when it can. Nothing means no folder.
    static QString Problem(const QString& text);

signals:
    // Another folder than before, or empty: none any more.
    void SigChosen(const QString& folder);

private:
    void SlotBrowse();
    void SlotEntered();

    Ui::WheelFolderRow ui;
    QString chosen;
};
