#pragma once

#include <WbBrowserLite/WbBrowserLiteExport.h>

#include <QString>
#include <QVariant>

#include <functional>

// The embedded browser as a running process drives it. GUI thread. Every call is answered exactly once.
class WBBROWSERLITE_EXPORT IBrowserEngine
{
public:
    using Answer = std::function<void(bool ok, const QVariant& value)>;

    virtual ~IBrowserEngine();

    // Loads a page (http, https, or file below the app's folder); ok when it has loaded.
    virtual void Open(const QString& url, const Answer& answer) = 0;

    // Runs a script of the engine in its own world, invisible to the page; value is what the script returned.
    virtual void RunScript(const QString& script, const Answer& answer) = 0;
};
