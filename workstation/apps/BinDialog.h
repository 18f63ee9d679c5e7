// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DateLanguage.h"

#include <RpaServiceClient/apps/ListDeletedAppsRequest.h>
#include <RpaServiceClient/apps/VersionServiceApp.h>
#include <WbBaseUI/WbBaseDialog.h>

class QListWidget;
class WbLabel;
class WbPushButton;

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
    WbPushButton* CreateButton(const char* name, const QString& text);
    void ConnectButtons(WbPushButton* close);
    void Say(const QString& text);
    QVector<VersionServiceApp> Chosen() const;
    void SlotChoiceChanged();

    const DateLanguage dateLanguage;
    QVector<VersionServiceDeletedApp> shown;
    QListWidget* list;
    WbLabel* labelState;
    WbPushButton* buttonRestore;
    WbPushButton* buttonPurge;
    WbPushButton* buttonEmpty;
};
