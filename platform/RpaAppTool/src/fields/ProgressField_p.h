// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ValueField_p.h"

class QLabel;
class QProgressBar;

// How far a run is, as the run says.
class ProgressField : public ValueField
{
    Q_OBJECT

public:
    ProgressField();

    void ShowValue(const QVariant& value) override;

private:
    QProgressBar* bar;
    QLabel* percent;
};
