// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_RowsDialog.h"

#include <WbBaseUI/WbBaseDialog.h>

class QFrame;
class QVBoxLayout;
class WbLabel;
class WbPushButton;

// A dialog with a caption, rows that scroll, a line that says how things stand, and a button that closes it.
class RowsDialog : public WbBaseDialog
{
    Q_OBJECT

public:
protected:
    RowsDialog(const QString& title, const QString& caption, QWidget* parent);

    static WbLabel* MakeLabel(const char* objectName, const QString& text, QWidget* parent);
    static WbPushButton* MakeButton(const char* objectName, const QString& text, int type, QWidget* parent);

    // A card: a text, a hint below it, and buttons beside them.
    QFrame* AddRow(WbLabel* text, WbLabel* hint, const QVector<WbPushButton*>& acts);

    QVBoxLayout* Rows() const { return ui.layoutRows; }
    void ClearRows();
    // Stands before the button that closes.
    void AddButton(WbPushButton* button);
    // Nothing to say: no line.
    void Say(const QString& text, bool isProblem);
    // As high as the rows want, up to this height (at 100 %); more of them scroll.
    void FitRows(int most);

private:
    Ui::RowsDialog ui;
};
