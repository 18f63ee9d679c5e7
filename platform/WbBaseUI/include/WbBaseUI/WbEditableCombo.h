// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbComboBox.h>

// Editable combo box: a text with suggestions. Typing never completes or inserts anything by itself.
class WBBASEUI_EXPORT WbEditableCombo : public WbComboBox
{
    Q_OBJECT

public:
    explicit WbEditableCombo(QWidget* parent = nullptr);

    // Longest text that can be typed, in UTF-16 units.
    void SetMaxLength(int length);

    // What stands in the empty field; plain text.
    void SetPlaceholderText(const QString& text);
};
