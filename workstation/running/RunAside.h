// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QFrame>

class IBrowserEngine;
class IBrowserWidget;
class QStackedWidget;
class RpaAppData;
class WbLabel;
class WbRichReader;
class WbTabBar;

// What stands beside the page of a running app: its usage instructions and, where its processes work with web
// pages, the browser in which they do.
class RunAside : public QFrame
{
    Q_OBJECT

public:
    explicit RunAside(QWidget* parent = nullptr);

    void ShowApp(const RpaAppData& app);
    // The browser goes with the app. Nothing may run in it any more.
    void Clear();

    // Null when the app needs no browser, or where none is built.
    IBrowserEngine* GetBrowserEngine() const;
    // Brings the browser to the front; the usage instructions stay a click away.
    void ShowBrowser();

private:
    void MakeBrowser();

    WbLabel* caption = nullptr;
    WbTabBar* tabs = nullptr;
    QStackedWidget* stack = nullptr;
    WbRichReader* manual;
    IBrowserWidget* browser = nullptr;
};
