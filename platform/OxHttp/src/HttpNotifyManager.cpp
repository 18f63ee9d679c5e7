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
    for (const int notifyId : notifyIds) {
        auto& registrations = registrationsById[notifyId];
        const bool known =
            std::any_of(registrations.cbegin(), registrations.cend(),
                        [observer](const Registration& entry) { return entry.observer == observer; });
        if (!known)
            registrations.append({observer, ++lastSerial});
    }
}

void HttpNotifyManager::RemoveAllMessage(HttpObserverBase* observer)
{
    for (auto& registrations : registrationsById) {
        const auto end =
            std::remove_if(registrations.begin(), registrations.end(),
                           [observer](const Registration& entry) { return entry.observer == observer; });
        registrations.erase(end, registrations.end());
    }
}

void HttpNotifyManager::Notify(int notifyId, const QSharedPointer<IHttpRequest>& request,
                               const QSharedPointer<IHttpResponse>& response)
{
    Q_ASSERT(request && response);
    // A copy, because observers change the list while they are told.
    const auto registrations = registrationsById.value(notifyId);
    for (const auto& registration : registrations) {
        if (IsRegistered(notifyId, registration))
            registration.observer->OnHttpNotify(notifyId, request, response);
    }
}

bool HttpNotifyManager::IsRegistered(int notifyId, const Registration& registration) const
{
    const auto registrations = registrationsById.value(notifyId);
    return std::any_of(
        registrations.cbegin(), registrations.cend(),
        [&registration](const Registration& entry) { return entry.serial == registration.serial; });
}
