// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QVariant>
#include <QWidget>

class QHBoxLayout;
struct RpaParamItem;

// The part of a field in which a value is entered or seen, for the types that need more than one widget of
// Qt.
class ValueField : public QWidget
{
    Q_OBJECT

public:
    // Null for the types that have none.
    static ValueField* Create(const RpaParamItem& item);

    // Without emitting anything.
    virtual void ShowValue(const QVariant& value) = 0;
    // Where the cursor goes.
    QWidget* GetInput() const { return input; }

signals:
    // The user entered something; invalid for an emptied field.
    void SigEntered(const QVariant& value);

protected:
    // The widget that the value is entered in or seen in takes the room; what stands beside it goes into the
    // row. spacing in pixels at 100 %.
    QHBoxLayout* AddInput(QWidget* widget, int spacing = 0);

private:
    QWidget* input = nullptr;
};
