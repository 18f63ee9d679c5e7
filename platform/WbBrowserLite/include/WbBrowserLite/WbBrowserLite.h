#pragma once

#include <WbBrowserLite/WbBrowserLiteExport.h>

#include <QWidget>

#include <functional>

class IBrowserBorderWindow;
class IBrowserWidget;

// Makes embedded browsers. GUI thread only.
class WBBROWSERLITE_EXPORT WbBrowserLite
{
public:
    static WbBrowserLite* Instance();

    // Null where the library was built without a web engine. Owned by the parent.
    IBrowserWidget* CreateBrowserWidget(QWidget* parent);

    // Makes browser widgets instead of the built-in factory; null goes back to it. Used by a workstation that
    // has its own browser, and by tests.
    using Factory = std::function<IBrowserWidget*(QWidget* parent)>;
    void SetBrowserFactory(Factory factory);

    // A top-level window when the parent is null; the caller then owns it.
    IBrowserBorderWindow* CreateBrowserEmbed(QWidget* parent);

private:
    WbBrowserLite() = default;

    Factory browserFactory;
};
