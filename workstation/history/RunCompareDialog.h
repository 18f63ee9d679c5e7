// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DateLanguage.h"
#include "ui_RunCompareDialog.h"

#include <RpaRunHistory/RpaRunComparison.h>
#include <RpaRunHistory/RpaRunHistory.h>
#include <WbBaseUI/WbBaseDialog.h>

// Two runs of one app side by side: parameters that differ, the first call that does, and how long each place
// took.
class RunCompareDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    // runs: newest first, two at least. after: id of the later one; the earlier one is the last good run before
    // it, or the run before it. The history is not owned and lives longer.
    RunCompareDialog(RpaRunHistory* history, const QVector<RpaRunRecord>& runs, qint64 after,
                     DateLanguage language, QWidget* parent);

    // 0 when there is none to compare with.
    static qint64 RunBefore(const QVector<RpaRunRecord>& runs, qint64 after);

signals:
    void SigShowPlace(const RpaRunPlace& place);

private:
    void Compare();
    void TakeDetails(quint64 question, bool isAfter, const RpaRunDetails& details);
    void Show(const RpaRunComparison& comparison);
    void ShowFirstDifference(const RpaRunComparison& comparison);
    void AddParameters(const RpaRunComparison& comparison);
    void AddPlaces(const RpaRunComparison& comparison);
    QTreeWidgetItem* AddHeading(const QString& title);
    void Activate(const QTreeWidgetItem* item);
    RpaRunRecord RunOf(const QComboBox* combo) const;

    Ui::RunCompareDialog ui;
    RpaRunHistory* const history;
    const QVector<RpaRunRecord> runs;
    RpaRunDetails before;
    RpaRunDetails after;
    QVector<RpaRunPlace> places; // those that items name by their number
    quint64 asked = 0;           // answers to earlier questions are passed over
    int answered = 0;
};
