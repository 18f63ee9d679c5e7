// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ActEntries.h"

#include <WbBaseUI/WbBaseDialog.h>

// All keys, by where they work.
class KeysDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    explicit KeysDialog(const QVector<ActEntry>& acts, QWidget* parent = nullptr);
    ~KeysDialog() override;
};
