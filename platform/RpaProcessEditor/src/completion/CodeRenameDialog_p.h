// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_CodeRenameDialog.h"

#include <WbBaseUI/WbBaseDialog.h>

#include <QVector>

// Asks for another name, and shows the lines as they will be with it.
class CodeRenameDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    // offsets: where the name stands in the text, in order.
    CodeRenameDialog(const QString& programText, const QString& name, const QVector<int>& places,
                     QWidget* parent);

    // What was typed.
    QString GetName() const { return ui.lineEditCodeName->text().trimmed(); }

private:
    void SlotChanged();
    void ShowLines(const QString& name);
    QString Note(const QString& name) const;

    const QString text;
    const QString formerName;
    const QVector<int> offsets;
    Ui::CodeRenameDialog ui;
};
