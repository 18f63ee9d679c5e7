// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_RunReportDialog.h"

#include <WbBaseUI/WbBaseDialog.h>

// What the author of an app has to know about a run that went wrong: versions, what happened, the log. The
// user sees all of it, may take out what is private, and copies or saves it to send it on whichever way they
// talk.
class RunReportDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    RunReportDialog(const QString& report, QWidget* parent);

    // The report: app: name and version; problem and details: may be empty. The log is that of the engine.
    static QString Write(const QString& app, const QString& problem, const QString& details);

private:
    void Copy();
    void Save();

    Ui::RunReportDialog ui;
};
