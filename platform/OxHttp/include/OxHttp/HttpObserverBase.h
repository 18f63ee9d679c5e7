// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <OxHttp/OxHttpExport.h>

#include <QSharedPointer>

class IHttpRequest;
class IHttpResponse;

// Wants server answers. Registers with HttpNotifyManager in its constructor and unregisters first thing in
// its destructor.
class OXHTTP_EXPORT HttpObserverBase
{
public:
    virtual ~HttpObserverBase();

    // One answer to one request; GUI thread. Both pointers are never null.
    virtual void OnHttpNotify(int notifyId, QSharedPointer<IHttpRequest> request,
                              QSharedPointer<IHttpResponse> response) = 0;
};
