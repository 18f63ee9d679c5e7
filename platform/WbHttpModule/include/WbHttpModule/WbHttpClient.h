// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbHttpModule/WbHttpAnswer.h>
#include <WbHttpModule/WbHttpModuleExport.h>
#include <WbHttpModule/WbHttpRequest.h>

#include <functional>
#include <memory>

// Sends requests and answers each exactly once, on the thread that made the client (the GUI thread), from its
// event loop, never inside Send(). Answers come in the order in which they complete; there is no order
// between requests. Follows no redirect, uses no proxy, keeps no cookie and decodes no compression.
//
// The network, hashing, text conversion and the check of JSON run on threads of the client's own.
class WBHTTPMODULE_EXPORT WbHttpClient
{
public:
    using Id = quint64;
    using Callback = std::function<void(const WbHttpAnswer& answer)>;

    // Starts the threads, which end with it.
    WbHttpClient();

    // Answers whatever is outstanding as Cancelled, in the order it was sent, before it returns; so are
    // requests that are sent by those callbacks.
    ~WbHttpClient();

    // Name and version of the library that carries the requests, and of what it encrypts with. Any thread.
    static QString GetLibraryName();
    static QString GetTlsName();

    WbHttpClient(const WbHttpClient&) = delete;
    WbHttpClient& operator=(const WbHttpClient&) = delete;

    // The id is never 0 and never used again by this client.
    Id Send(const WbHttpRequest& request, Callback callback);

    // Makes the answer of an outstanding request Cancelled, from the event loop like any other. The server
    // may have done what was asked all the same. Unknown and answered ids are ignored.
    void Cancel(Id id);

    // Requests that are not answered yet.
    int GetOutstandingCount() const;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
