// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DateLanguage.h"
#include "ui_BinDialog.h"

#include <RpaServiceClient/apps/ListDeletedAppsRequest.h>
#include <RpaServiceClient/apps/VersionServiceApp.h>
#include <WbBaseUI/WbBaseDialog.h>

// The deleted apps that can be restored. Shows and announces; what happens is the owner's business.
class BinDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    BinDialog(DateLanguage language, QWidget* parent);

    void ShowApps(const QVector<VersionServiceDeletedApp>& apps);
    void ShowProblem(const QString& problem) { Say(problem); }

signals:
    void SigRestore(const VersionServiceApp& app);
    // Out of the bin for good.
    void SigPurge(const QVector<VersionServiceApp>& apps);

private:
    void Connect();
    void Say(const QString& text) { ui.labelState->setText(text); }
    QVector<VersionServiceApp> Chosen() const;
    void SlotChoiceChanged();

    Ui::BinDialog ui;
    const DateLanguage dateLanguage;
    QVector<VersionServiceDeletedApp> shown;
};
