#pragma once

#include <OxHttp/OxHttpExport.h>

#include <QHash>
#include <QList>
#include <QSharedPointer>

class HttpObserverBase;
class IHttpRequest;
class IHttpResponse;

// Hands every answer to the observers registered for its notification id, in the order of their registration.
// GUI thread only. Observers may register, unregister or be destroyed while a notification is delivered: one that
// is gone is skipped, one that came during the delivery hears the next.
class OXHTTP_EXPORT HttpNotifyManager
{
public:
    static HttpNotifyManager* Instance();

    void AddObserver(HttpObserverBase* observer, const QList<int>& notifyIds);
    void RemoveAllMessage(HttpObserverBase* observer);

    // Called by the request library, once per request.
    void Notify(int notifyId, const QSharedPointer<IHttpRequest>& request,
                const QSharedPointer<IHttpResponse>& response);

private:
    HttpNotifyManager() = default;

    QHash<int, QList<HttpObserverBase*>> observersById;
};
