// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DateLanguage.h"
#include "ui_RunHistoryDialog.h"

#include <RpaRunHistory/RpaRunHistory.h>
#include <WbBaseUI/WbBaseDialog.h>

#include <QTimer>

class RunListModel;
class WorkstationSettings;

// The kept runs of one app: a list that is filtered, and of the selected one how it ended, its log, what it did
// outside and how it failed. Two are compared; one is given on as a file. Follows the history while it is open.
class RunHistoryDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    // None is owned; both live longer.
    RunHistoryDialog(RpaRunHistory* history, const QString& appId, WorkstationSettings* settings,
                     QWidget* parent);

    // Of the newest run that failed, as soon as the list is there.
    void ShowLastFailure();

signals:
    // The user asked for a place of the app.
    void SigShowPlace(const RpaRunPlace& place);

private:
    void Connect();
    void FillFilters();
    void AddVersions(const QVector<RpaRunRecord>& runs);
    bool IsFiltered() const;
    void Load();
    void ShowRuns(const QVector<RpaRunRecord>& runs);
    void ShowSelected();
    void ShowRun(const RpaRunRecord& run, const QVector<RpaLogLine>& log);
    RpaRunRecord Selected() const;
    void PickLastFailure();
    void Compare();
    void Export();
    void OpenRunFile();
    void ShowFile(const RpaRunFile& file);
    void Remove();
    void RemoveAll();

    Ui::RunHistoryDialog ui;
    RpaRunHistory* const history;
    const QString appId;
    const DateLanguage dateLanguage;
    RunListModel* const model;
    QTimer typing;             // the list follows a pause in typing
    bool showsFailure = false; // as soon as the runs are there
    quint64 asked = 0;         // answers to earlier questions are passed over
};
