// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DateLanguage.h"
#include "ui_RunView.h"

#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaRunHistory/RpaRunDetails.h>
#include <RpaRunHistory/RpaRunRecord.h>

#include <QWidget>

// One run: how it ended, its facts, and on tabs its log, its timeline and how it stood when it failed.
class RunView : public QWidget
{
    Q_OBJECT

public:
    enum Tab
    {
        LogTab,
        TimelineTab,
        FailureTab,
    };

    explicit RunView(QWidget* parent = nullptr);

    void SetDateLanguage(DateLanguage language) { dateLanguage = language; }
    // id 0: no run; then the text stands in its place.
    void ShowRun(const RpaRunRecord& run, const QVector<RpaLogLine>& log, const QString& text = QString());
    // Of the run that is shown.
    void ShowDetails(const RpaRunDetails& details);
    void PickTab(Tab tab) { ui.tabsRun->setCurrentIndex(tab); }

signals:
    void SigShowPlace(const RpaRunPlace& place);

private:
    void ShowLog(const RpaRunRecord& run, const QVector<RpaLogLine>& log);

    Ui::RunView ui;
    DateLanguage dateLanguage = DateLanguage::System;
    RpaRunRecord shown;
};
