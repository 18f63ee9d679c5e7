// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_MainWindow.h"

#include <WbBaseUI/WbBaseWidget.h>

class ServerStatusIndicator;

// The workstation's window: a head with the way back, the account and the server's state, and one page below
// it.
class MainWindow : public WbBaseWidget
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent = nullptr);

    // Adds a page; the first one is shown. backText: text of the button that leads away from it, empty for a
    // page that nothing leads away from. The window's title names what the page shows by its windowTitle().
    // Takes ownership.
    void AddPage(QWidget* page, const QString& backText);

    void ShowPage(QWidget* page) { ui.stackPages->setCurrentWidget(page); }
    QWidget* CurrentPage() const { return ui.stackPages->currentWidget(); }

    // Name of the signed-in user; empty before sign-in, which also takes away the settings button.
    void ShowAccount(const QString& name);

    // Stands below whichever page is shown. Takes ownership.
    void AddFoot(QWidget* foot);

    // The page with the editor: packages and versions are offered with it.
    void OfferEditing(QWidget* page) { editingPage = page; }

    ServerStatusIndicator* GetServerStatusIndicator() const { return ui.serverMark; }

    // Lets the window go without asking again.
    void CloseForGood();

signals:
    void SigPageShown(QWidget* page);
    void SigBack(QWidget* from);
    void SigSettings();
    void SigPackages();
    void SigVersions();
    void SigRuns();
    // The user wants to close the window; it stays until CloseForGood().
    void SigCloseRequested();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void Connect();
    void UpdateHead();
    void UpdateTitle();

    Ui::MainWindow ui;
    QWidget* editingPage = nullptr;
    bool signedIn = false;
    bool mayClose = false;
};
