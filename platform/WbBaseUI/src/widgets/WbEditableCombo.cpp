// SPDX-License-Identifier: Apache-2.0

#include "WholeCharacters_p.h"

#include <WbBaseUI/WbEditableCombo.h>

#include <QLineEdit>

WbEditableCombo::WbEditableCombo(QWidget* parent) : WbComboBox(parent)
{
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
    // Without this the Return key replaces the typed text by a row that differs from it in letter case only.
    setDuplicatesEnabled(true);
    WholeCharacters::Keep(lineEdit());
}

void WbEditableCombo::SetMaxLength(int length)
{
    lineEdit()->setMaxLength(length);
}

void WbEditableCombo::SetPlaceholderText(const QString& text)
{
    lineEdit()->setPlaceholderText(text);
}
