// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppPageHead.h"
#include "ui_ReleasedListPage.h"

#include <RpaServiceClient/releases/VersionServiceReleasedApp.h>
#include <WbBaseUI/WbBaseWidget.h>

class AppCards;
class ReleasedAppModel;

// The online or the gray apps as cards, to be run; on the gray page an invitation code is redeemed. The page
// shows and announces; what happens is the owner's business.
class ReleasedListPage : public WbBaseWidget
{
    Q_OBJECT

public:
    // tab: AppPageHead::Online or AppPageHead::Gray. The model is not owned.
    ReleasedListPage(AppPageHead::Tab tab, ReleasedAppModel* model, QWidget* parent = nullptr);

    void ShowLoading();
    void ShowFailed(const QString& reason);
    void ShowApps();

    // The end of a redemption: empties the field, or shows why the code was refused (empty: it was not).
    void ShowRedeemed(const QString& problem);

    // Makes a card current and visible.
    void SelectApp(const QString& appId);

signals:
    void SigTab(int tab);
    void SigRun(const VersionServiceReleasedApp& app);
    void SigRefresh();
    void SigRedeem(const QString& code);

private:
    void SlotRedeem();

    ReleasedAppModel* const model;
    AppPageHead* const head;
    AppCards* const cards;
    Ui::ReleasedListPage ui;
};
