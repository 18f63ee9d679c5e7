// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ReportText.h"
#include "ui_RunReportDialog.h"

#include <WbBaseUI/WbBaseDialog.h>

// What the author of an app has to know about a run that went wrong: versions, what happened, the log. The
// user sees all of it, may take out whole parts and whatever is private, and copies or saves it to send it on whichever way they
// talk.
class RunReportDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    RunReportDialog(const ReportParts& parts, QWidget* parent);

    // The report: app: name and version; problem and details: may be empty. kept: what the history has of the
    // run, its log among it; empty: then the log is that of the engine.
    static ReportParts Parts(const QString& app, const QString& problem, const QString& details,
                             const ReportParts& kept);
    // The same as one text.
    static QString Write(const QString& app, const QString& problem, const QString& details);

private:
    void Copy();
    void Save();

    void OfferParts(const ReportParts& parts);

    Ui::RunReportDialog ui;
    ReportText text;
};
