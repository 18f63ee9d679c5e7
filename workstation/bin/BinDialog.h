// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DateLanguage.h"

#include <RpaServiceClient/apps/ListDeletedAppsRequest.h>
#include <RpaServiceClient/apps/VersionServiceApp.h>
#include <WbBaseUI/WbBaseDialog.h>

#include <memory>

namespace Ui
{
class BinDialog;
}

// The deleted apps that can be restored. Shows and announces; what happens is the owner's business.
class BinDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    BinDialog(DateLanguage language, QWidget* parent);
    ~BinDialog() override;

    void ShowApps(const QVector<VersionServiceDeletedApp>& apps);
    void ShowProblem(const QString& problem);

signals:
    void SigRestore(const VersionServiceApp& app);
    // Out of the bin for good.
    void SigPurge(const QVector<VersionServiceApp>& apps);

private:
    void Connect();
    void Say(const QString& text);
    QVector<VersionServiceApp> Chosen() const;
    void SlotChoiceChanged();

    const std::unique_ptr<Ui::BinDialog> ui;
    const DateLanguage dateLanguage;
    QVector<VersionServiceDeletedApp> shown;
};
