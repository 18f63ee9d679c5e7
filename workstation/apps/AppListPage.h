// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRecord.h"

#include <WbBaseUI/WbBaseWidget.h>

class AppCards;
class AppListModel;
class AppPageHead;
class QMenu;
class QModelIndex;
class WbPushButton;

// The apps as cards: find one, open one, rename one, make a new one. The page shows and announces; what
// happens is the owner's business.
class AppListPage : public WbBaseWidget
{
    Q_OBJECT

public:
    explicit AppListPage(AppListModel* model, QWidget* parent = nullptr);

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
    // Another list of apps (AppPageHead::Tab).
    void SigTab(int tab);
    void SigInvitations(const AppRecord& app);
    void SigReleases(const AppRecord& app);
    void SigCopy(const AppRecord& app);
    void SigTags(const AppRecord& app);
    void SigExport(const AppRecord& app);
    void SigDelete(const AppRecord& app);
    void SigImport();
    void SigBin();

private:
    WbPushButton* CreateButton(const char* name, int kind, QWidget* parent);
    void AddButtons();
    QWidget* CreateOffer();
    void ConnectCards();
    void CreateShortcuts();
    void AddMore();
    void FillMore(QMenu* menu);
    void ActOnCurrent(void (AppListPage::*act)(const AppRecord& app));
    void SlotActivated(const QModelIndex& index) { emit SigOpen(AppOf(index)); }
    void SlotClicked(const QModelIndex& index);
    void ShowCardMenu(const QModelIndex& index, const QPoint& globalPos);
    AppRecord AppOf(const QModelIndex& index) const;

    AppListModel* const model;
    AppPageHead* const head;
    AppCards* const cards;
    bool menuTookClick = false;
};
