#pragma once

#include "AppRecord.h"

#include <WbBaseUI/WbBaseWidget.h>

class AppCardDelegate;
class AppListModel;
class QListView;
class QSortFilterProxyModel;
class QStackedWidget;
class RequestStatusBaseWidget;
class WbLabel;
class WbLineEdit;
class WbPushButton;

// The apps as cards: find one, open one, rename one, make a new one. The page shows and announces; what
// happens is the owner's business.
class AppListPage : public WbBaseWidget
{
    Q_OBJECT

public:
    explicit AppListPage(AppListModel* model, QWidget* parent = nullptr);
    ~AppListPage() override;

    void ShowLoading();
    void ShowFailed(const QString& reason);
    void ShowApps();

    // Makes a card current and visible.
    void SelectApp(const QString& appId);

signals:
    void SigOpen(const AppRecord& app);
    void SigCreate(int kind);
    void SigRename(const AppRecord& app);
    void SigRefresh();
    // Another list of apps (AppTabs::Tab).
    void SigTab(int tab);
    void SigInvitations(const AppRecord& app);

private:
    QWidget* CreateHead();
    QWidget* CreateContent();
    QWidget* CreateEmptyState();
    void CreateShortcuts();
    void UpdateContent();
    void SlotActivated(const QModelIndex& index);
    void SlotClicked(const QModelIndex& index);
    void ShowCardMenu(const QModelIndex& index, const QPoint& globalPos);
    AppRecord AppOf(const QModelIndex& index) const;

    AppListModel* const model;
    QSortFilterProxyModel* const filter;
    WbLineEdit* editSearch = nullptr;
    QStackedWidget* content = nullptr;
    QListView* cards = nullptr;
    QWidget* emptyState = nullptr;
    WbLabel* labelEmpty = nullptr;
    WbLabel* labelEmptyHint = nullptr;
    QWidget* emptyButtons = nullptr;
    RequestStatusBaseWidget* status = nullptr;
    bool menuTookClick = false;
};
