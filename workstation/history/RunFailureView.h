// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_RunFailureView.h"

#include <RpaRunHistory/RpaRunDetails.h>
#include <RpaRunHistory/RpaRunRecord.h>

#include <QVector>
#include <QWidget>

// How a run stood when it failed: the calls that led there, the variables, its last calls of the outside, the
// browser. What is missing is said.
class RunFailureView : public QWidget
{
    Q_OBJECT

public:
    explicit RunFailureView(QWidget* parent = nullptr);

    void ShowFailure(const RpaRunRecord& run, const RpaRunDetails& details);

    static constexpr int lastSpans = 20;

signals:
    // The user asked for the place of a call.
    void SigShowPlace(const RpaRunPlace& place);

private:
    QTreeWidgetItem* AddHeading(const QString& title);
    void AddPlace(QTreeWidgetItem* heading, const QStringList& texts, const RpaRunPlace& place);
    void AddStack(const RpaRunRecord& run, const RpaRunFailure& failure);
    void AddScopes(const RpaRunFailure& failure);
    void AddLastSpans(const RpaRunSpans& spans);
    void ShowPicture(const QByteArray& picture);
    void Activate(const QTreeWidgetItem* item);

    Ui::RunFailureView ui;
    QVector<RpaRunPlace> places; // those that items name by their number
};
