// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRecord.h"
#include "FieldDialog.h"

class QButtonGroup;

// Asks for the name of an app, 1 to 50 characters, and for its kind when the app is new.
class AppNameDialog : public FieldDialog
{
    Q_OBJECT

public:
    enum class Purpose
    {
        Create,
        Rename,
    };

    AppNameDialog(Purpose purpose, QWidget* parent);

    QString GetName() const { return GetText(); }
    void SetName(const QString& name);

    int GetKind() const;
    void SetKind(int kind);

private:
    void AddKinds();

    QButtonGroup* const kinds;
};
