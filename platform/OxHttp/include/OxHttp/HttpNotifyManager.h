// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <OxHttp/OxHttpExport.h>

#include <QHash>
#include <QList>
#include <QSharedPointer>
#include <QVector>

#include <functional>

class HttpObserverBase;
class IHttpRequest;
class IHttpResponse;

// Hands every answer to the observers registered for its notification id, in the order of their registration.
// GUI thread only. Observers may register, unregister or be destroyed while a notification is delivered: one
// that is gone is skipped, one that came during the delivery hears the next. A delivery may start inside
// another one (an observer that waits in a nested event loop); each goes to its own end.
//
// An observer that is a QObject as well (when it registers) is a party: it acts on answers, and may be left
// out of those that are not for it. One that is nothing but an observer looks on and hears everything.
class OXHTTP_EXPORT HttpNotifyManager
{
public:
    // The one of the process.
    static HttpNotifyManager* Instance();

    // Registers for the given ids, in addition to those the observer has already; an id it has is kept as it
    // is, so nobody hears an answer twice. Null is ignored.
    void AddObserver(HttpObserverBase* observer, const QList<int>& notifyIds);

    // Afterwards the observer hears nothing more, a delivery under way included. Unknown observers are
    // ignored.
    void RemoveAllMessage(HttpObserverBase* observer);

    // Another number whenever the last observer of the id has gone: what was asked for before then has nobody
    // left to hear it.
    quint64 GetAudienceNumber(int notifyId) const;

    // Called by the request library, once per request. Both pointers must not be null. Of the parties only
    // those hear the answer for which isFor, when given, is true at their turn.
    using IsFor = std::function<bool(quint64 party)>;
    void Notify(int notifyId, const QSharedPointer<IHttpRequest>& request,
                const QSharedPointer<IHttpResponse>& response, const IsFor& isFor = nullptr);

    // The parties registered for the id, by numbers that are never used again and grow with the time of an
    // observer's first registration.
    QVector<quint64> GetParties(int notifyId) const;
    // Every observer that registers from now on has a greater number.
    quint64 GetLastSerial() const { return lastSerial; }

private:
    // The serial tells an observer from a later one that happens to live at the same address.
    struct Registration
    {
        HttpObserverBase* observer;
        quint64 serial;
        bool isParty;
    };

    HttpNotifyManager() = default;

    quint64 SerialOf(HttpObserverBase* observer);
    bool IsRegistered(int notifyId, const Registration& registration) const;

    QHash<int, QVector<Registration>> registrationsById;
    QHash<int, quint64> audienceById;
    quint64 lastSerial = 0;
};
