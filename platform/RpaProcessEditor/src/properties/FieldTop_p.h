// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QWidget>

class QHBoxLayout;
class QLabel;

// The row above a field: its label and, at the right end, its buttons. As high without buttons as with them, so
// that every label keeps the same distance from its field.
class FieldTop : public QWidget
{
    Q_OBJECT

public:
    explicit FieldTop(QLabel* label, QWidget* parent = nullptr);

    void AddButton(QWidget* button);

private:
    QHBoxLayout* layout;
};
