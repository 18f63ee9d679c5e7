// SPDX-License-Identifier: Apache-2.0

#include <OxHttp/HttpNotifyManager.h>
#include <OxHttp/HttpObserverBase.h>
#include <OxHttp/IHttpRequest.h>
#include <OxHttp/IHttpResponse.h>

#include <algorithm>

HttpNotifyManager* HttpNotifyManager::Instance()
{
    static HttpNotifyManager manager;
    return &manager;
}

void HttpNotifyManager::AddObserver(HttpObserverBase* observer, const QList<int>& notifyIds)
{
    if (!observer)
        return;
    const quint64 serial = SerialOf(observer);
    const bool isParty = dynamic_cast<QObject*>(observer) != nullptr;
    for (const int notifyId : notifyIds) {
        auto& registrations = registrationsById[notifyId];
        const bool known =
            std::any_of(registrations.cbegin(), registrations.cend(),
                        [observer](const Registration& entry) { return entry.observer == observer; });
        if (!known)
            registrations.append({observer, serial, isParty});
    }
}

void HttpNotifyManager::RemoveAllMessage(HttpObserverBase* observer)
{
    for (auto position = registrationsById.begin(); position != registrationsById.end(); ++position) {
        auto& registrations = *position;
        const bool wasHeard = !registrations.isEmpty();
        const auto end =
            std::remove_if(registrations.begin(), registrations.end(),
                           [observer](const Registration& entry) { return entry.observer == observer; });
        registrations.erase(end, registrations.end());
        if (wasHeard && registrations.isEmpty())
            ++audienceById[position.key()];
    }
}

quint64 HttpNotifyManager::GetAudienceNumber(int notifyId) const
{
    return audienceById.value(notifyId);
}

void HttpNotifyManager::Notify(int notifyId, const QSharedPointer<IHttpRequest>& request,
                               const QSharedPointer<IHttpResponse>& response, const IsFor& isFor)
{
    Q_ASSERT(request && response);
    // A copy, because observers change the list while they are told.
    const auto registrations = registrationsById.value(notifyId);
    for (const auto& registration : registrations) {
        if (!IsRegistered(notifyId, registration))
            continue;
        if (!isFor || !registration.isParty || isFor(registration.serial))
            registration.observer->OnHttpNotify(notifyId, request, response);
    }
}

QVector<quint64> HttpNotifyManager::GetParties(int notifyId) const
{
    QVector<quint64> parties;
    const auto registrations = registrationsById.value(notifyId);
    for (const Registration& registration : registrations)
        if (registration.isParty)
            parties.append(registration.serial);
    return parties;
}

quint64 HttpNotifyManager::SerialOf(HttpObserverBase* observer)
{
    for (const auto& registrations : qAsConst(registrationsById)) {
        for (const Registration& registration : registrations)
            if (registration.observer == observer)
                return registration.serial;
    }
    return ++lastSerial;
}

bool HttpNotifyManager::IsRegistered(int notifyId, const Registration& registration) const
{
    const auto registrations = registrationsById.value(notifyId);
    return std::any_of(
        registrations.cbegin(), registrations.cend(),
        [&registration](const Registration& entry) { return entry.serial == registration.serial; });
}
