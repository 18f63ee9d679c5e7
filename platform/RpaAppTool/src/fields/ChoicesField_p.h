// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ValueField_p.h"

#include <RpaAppData/RpaParamData.h>

class QListWidget;

// Choices of which any number is ticked.
class ChoicesField : public ValueField
{
    Q_OBJECT

public:
    explicit ChoicesField(const RpaParamItem& item);

    void ShowValue(const QVariant& value) override;

private:
    void TakeTicks();

    QListWidget* list;
};
