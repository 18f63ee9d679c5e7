#pragma once

#include "AppTabs.h"

#include <RpaEditorLogic/VersionServiceRecords.h>
#include <WbBaseUI/WbBaseWidget.h>

class QListView;
class QSortFilterProxyModel;
class QStackedWidget;
class ReleasedAppModel;
class RequestStatusBaseWidget;
class WbLabel;
class WbLineEdit;
class WbPushButton;

// The online or the gray apps as cards, to be run; on the gray page an invitation code is redeemed. The page
// shows and announces; what happens is the owner's business.
class ReleasedListPage : public WbBaseWidget
{
    Q_OBJECT

public:
    // tab: AppTabs::Online or AppTabs::Gray. The model is not owned.
    ReleasedListPage(AppTabs::Tab tab, ReleasedAppModel* model, QWidget* parent = nullptr);

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
    QWidget* CreateHead();
    QWidget* CreateRedeemRow();
    QWidget* CreateContent();
    QWidget* CreateEmptyState();
    void UpdateContent();
    void SlotRedeem();

    const AppTabs::Tab tab;
    ReleasedAppModel* const model;
    QSortFilterProxyModel* const filter;
    WbLineEdit* editSearch = nullptr;
    WbLineEdit* editCode = nullptr; // on the gray page only
    WbPushButton* buttonRedeem = nullptr;
    WbLabel* labelProblem = nullptr;
    QStackedWidget* content = nullptr;
    QListView* cards = nullptr;
    QWidget* emptyState = nullptr;
    WbLabel* labelEmpty = nullptr;
    WbLabel* labelEmptyHint = nullptr;
    RequestStatusBaseWidget* status = nullptr;
};
