// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_GivenDialog.h"

#include <RpaProcessData/RpaProcessPart.h>
#include <WbBaseUI/WbBaseDialog.h>

#include <QMap>
#include <QVector>

class LastValues;
class QLineEdit;

// Asks for the variables that a part of a process needs and that what is skipped would have set. An empty
// field leaves its variable without a value.
class GivenDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    GivenDialog(const RpaPartVariables& variables, const LastValues& values, QWidget* parent);

    // Variable -> Python expression.
    QMap<QString, QString> GetGiven() const;

private:
    void AddRow(const QString& name, const QString& value, const QString& hint);
    void SlotEdited();

    struct Row
    {
        QString name;
        QLineEdit* edit;
    };
    QVector<Row> rows;
    Ui::GivenDialog ui;
};
