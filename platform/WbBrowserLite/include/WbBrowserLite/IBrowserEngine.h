// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBrowserLite/WbBrowserLiteExport.h>

#include <QString>
#include <QVariant>

#include <functional>

// The embedded browser as a running process drives it. GUI thread. Every call is answered exactly once, also
// when the page or the browser goes away first; where ok is false the value is the reason, for the author.
class WBBROWSERLITE_EXPORT IBrowserEngine
{
public:
    using Answer = std::function<void(bool ok, const QVariant& value)>;

    virtual ~IBrowserEngine();

    // Loads a page (http or https); ok when it has loaded, within 60 s. A call while another page still loads
    // takes its place.
    virtual void Open(const QString& url, const Answer& answer) = 0;

    // Runs a script of the engine in its own world, invisible to the page; value is what its last expression
    // gave. Waits up to 10 s for a page that is loading; a script gets 60 s.
    virtual void RunScript(const QString& script, const Answer& answer) = 0;
};
