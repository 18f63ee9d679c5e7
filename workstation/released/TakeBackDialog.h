// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "FieldDialog.h"

// Asks whether users shall lose or get a version, and why: a reason of 1 to 200 characters.
class TakeBackDialog : public FieldDialog
{
    Q_OBJECT

public:
    // act: what the confirming button says. consequence: what becomes of users.
    TakeBackDialog(const QString& title, const QString& act, const QString& consequence, QWidget* parent);

    QString GetReason() const { return GetText(); }
};
