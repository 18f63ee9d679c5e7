// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBrowserLite/WbBrowserLiteExport.h>

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>

class IBrowserBorderWindow;
class IBrowserWidget;
class QWidget;

// Makes embedded browsers. GUI thread only.
class WBBROWSERLITE_EXPORT WbBrowserLite : public QObject
{
    Q_OBJECT

public:
    static WbBrowserLite* Instance();

    // Prepares the process for a web engine: shares the contexts that windows are drawn with, and takes from
    // the environment what would open pages to a debugger. Call it before the QApplication is made; harmless
    // where there is no web engine.
    static void PrepareApplication();

    // Name and version of the web engine that the built-in browser has; empty where there is none. Starts
    // nothing.
    static QString GetEngineName();

    // Null where the library was built without a web engine. Owned by the parent. Costs little: the web
    // engine starts with the first page.
    IBrowserWidget* CreateBrowserWidget(QWidget* parent);

    // The browser that was made last, null when there is none or it is gone.
    IBrowserWidget* GetBrowserWidget() const;

    // Makes browser widgets instead of the built-in factory; null goes back to it. Used by a workstation that
    // has its own browser, and by tests.
    using Factory = std::function<IBrowserWidget*(QWidget* parent)>;
    void SetBrowserFactory(Factory factory);

    // A top-level window when the parent is null; the caller then owns it.
    IBrowserBorderWindow* CreateBrowserEmbed(QWidget* parent);

signals:
    // A browser was made, and is the newest from now on.
    void SigBrowserCreated(IBrowserWidget* browser);

private:
    WbBrowserLite();
    ~WbBrowserLite() override;

    Factory browserFactory;
    QPointer<IBrowserWidget> newest;
};
