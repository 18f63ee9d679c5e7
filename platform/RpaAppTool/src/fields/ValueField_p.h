// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QVariant>
#include <QWidget>

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
    virtual QWidget* GetInput() = 0;

signals:
    // The user entered something; invalid for an emptied field.
    void SigEntered(const QVariant& value);
};
