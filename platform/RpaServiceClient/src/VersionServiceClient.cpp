// SPDX-License-Identifier: Apache-2.0

#include "AccountAnswers_p.h"
#include "ReleaseAnswers_p.h"

#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoutes.h>
#include <RpaServiceClient/ServiceTransport.h>
#include <RpaServiceClient/VersionServiceClient.h>

#include <QPointer>

class VersionServiceClient::Private
{
public:
    template <typename Value>
    using Read = std::function<std::optional<Value>(const WbHttpAnswer& answer)>;

    template <typename Value>
    void Send(const WbHttpRequest& route, QObject* context, const Callback<Value>& callback,
              const Read<Value>& read)
    {
        const bool hasContext = context != nullptr;
        const QPointer<QObject> guard(context);
        const QPointer<QObject> client(&whole);
        transport.Send(route, [callback, read, guard, client, hasContext](const WbHttpAnswer& answer) {
            if (callback && (!hasContext || (guard && client)))
                callback(ResultOf<Value>(answer, read));
        });
    }

    template <typename Value>
    static VersionServiceResult<Value> ResultOf(const WbHttpAnswer& answer, const Read<Value>& read)
    {
        VersionServiceResult<Value> result;
        if (!answer.IsSuccess()) {
            result.errorDesc = ServiceAnswers::FailureText(answer);
            result.errorCode = ServiceAnswers::RefusalCode(answer);
            return result;
        }
        const std::optional<Value> value = read(answer);
        result.success = value.has_value();
        if (value)
            result.value = *value;
        else
            result.errorDesc = ServiceAnswers::UnusableText();
        return result;
    }

    ServiceTransport transport;
    QObject whole; // after the transport: gone when that answers for the last time
};

namespace
{
std::optional<VersionServiceApp> App(const WbHttpAnswer& answer)
{
    return AccountAnswers::ReadApp(ServiceAnswers::ObjectOf(answer.body));
}

std::optional<VersionServiceNothing> Nothing(const WbHttpAnswer& answer)
{
    Q_UNUSED(answer)
    return VersionServiceNothing();
}

std::optional<VersionServiceSession> Session(const WbHttpAnswer& answer)
{
    return AccountAnswers::ReadSession(ServiceAnswers::ObjectOf(answer.body));
}

std::optional<VersionServiceSession> NewSession(const WbHttpAnswer& answer)
{
    const auto session = Session(answer);
    return session && !session->token.isEmpty() ? session : std::nullopt;
}

std::optional<QVector<VersionServiceApp>> Apps(const WbHttpAnswer& answer)
{
    return AccountAnswers::ReadApps(ServiceAnswers::ObjectOf(answer.body));
}

std::optional<QVector<VersionServiceVersion>> Versions(const WbHttpAnswer& answer)
{
    const auto records = ServiceAnswers::ReadVersions(answer.body);
    if (!records)
        return std::nullopt;
    QVector<VersionServiceVersion> versions;
    for (const ServiceAnswers::VersionRecord& record : *records) {
        const RpaAppSnapshot& snapshot = *record.snapshot;
        versions.append({snapshot.GetId(), snapshot.GetName(), snapshot.GetState(), record.revision,
                         record.sha256, snapshot.GetPin(), snapshot.GetDesc(), snapshot.GetApiVersion()});
    }
    return versions;
}

// Reads the object that an answer carries.
template <typename Value>
auto ReadBody(std::optional<Value> (*read)(const QJsonObject& json))
{
    return [read](const WbHttpAnswer& answer) { return read(ServiceAnswers::ObjectOf(answer.body)); };
}
} // namespace

VersionServiceClient::VersionServiceClient() : d(std::make_unique<Private>()) {}

VersionServiceClient::~VersionServiceClient() = default;

void VersionServiceClient::SignIn(const QString& account, const QString& password, bool stay,
                                  QObject* context, const Callback<VersionServiceSession>& callback)
{
    d->Send<VersionServiceSession>(ServiceRoutes::SignIn(account, password, stay, ServiceRoutes::NewKey()),
                                   context, callback, NewSession);
}

void VersionServiceClient::GetCurrentSession(QObject* context,
                                             const Callback<VersionServiceSession>& callback)
{
    d->Send<VersionServiceSession>(ServiceRoutes::CurrentSession(), context, callback, Session);
}

void VersionServiceClient::SignOut(QObject* context, const Callback<VersionServiceNothing>& callback)
{
    d->Send<VersionServiceNothing>(ServiceRoutes::SignOut(ServiceRoutes::NewKey()), context, callback,
                                   Nothing);
}

void VersionServiceClient::ListApps(const QString& nameFilter, QObject* context,
                                    const Callback<QVector<VersionServiceApp>>& callback)
{
    d->Send<QVector<VersionServiceApp>>(ServiceRoutes::ListApps(nameFilter), context, callback, Apps);
}

void VersionServiceClient::GetApp(const QString& appId, QObject* context,
                                  const Callback<VersionServiceApp>& callback)
{
    d->Send<VersionServiceApp>(ServiceRoutes::GetApp(appId), context, callback, App);
}

void VersionServiceClient::CreateApp(const QString& name, int kind, QObject* context,
                                     const Callback<VersionServiceApp>& callback)
{
    d->Send<VersionServiceApp>(ServiceRoutes::CreateApp(name, kind, ServiceRoutes::NewKey()), context,
                               callback, App);
}

void VersionServiceClient::RenameApp(const QString& appId, const QString& name, QObject* context,
                                     const Callback<VersionServiceApp>& callback)
{
    d->Send<VersionServiceApp>(ServiceRoutes::RenameApp(appId, name, ServiceRoutes::NewKey()), context,
                               callback, App);
}

void VersionServiceClient::CreateAppUnderFreeName(const QString& name, int kind, QObject* context,
                                                  const Callback<VersionServiceApp>& callback)
{
    d->Send<VersionServiceApp>(ServiceRoutes::CreateApp(name, kind, ServiceRoutes::NewKey(), true), context,
                               callback, App);
}

void VersionServiceClient::SetTags(const QString& appId, const QStringList& tags, QObject* context,
                                   const Callback<VersionServiceApp>& callback)
{
    d->Send<VersionServiceApp>(ServiceRoutes::SetTags(appId, tags, ServiceRoutes::NewKey()), context,
                               callback, App);
}

void VersionServiceClient::CopyApp(const QString& appId, QObject* context,
                                   const Callback<VersionServiceApp>& callback)
{
    d->Send<VersionServiceApp>(ServiceRoutes::CopyApp(appId, ServiceRoutes::NewKey()), context, callback,
                               App);
}

void VersionServiceClient::DeleteApp(const QString& appId, QObject* context,
                                     const Callback<VersionServiceNothing>& callback)
{
    d->Send<VersionServiceNothing>(ServiceRoutes::DeleteApp(appId, ServiceRoutes::NewKey()), context,
                                   callback, Nothing);
}

void VersionServiceClient::ListDeletedApps(QObject* context,
                                           const Callback<QVector<VersionServiceDeletedApp>>& callback)
{
    d->Send<QVector<VersionServiceDeletedApp>>(ServiceRoutes::DeletedApps(), context, callback,
                                               ReadBody(AccountAnswers::ReadDeletedApps));
}

void VersionServiceClient::RestoreApp(const QString& appId, QObject* context,
                                      const Callback<VersionServiceApp>& callback)
{
    d->Send<VersionServiceApp>(ServiceRoutes::RestoreApp(appId, ServiceRoutes::NewKey()), context, callback,
                               App);
}

void VersionServiceClient::PurgeApp(const QString& appId, QObject* context,
                                    const Callback<VersionServiceNothing>& callback)
{
    d->Send<VersionServiceNothing>(ServiceRoutes::PurgeApp(appId, ServiceRoutes::NewKey()), context, callback,
                                   Nothing);
}

void VersionServiceClient::CreateVersion(const QString& appId, const VersionServiceContent& content,
                                         QObject* context, const Callback<VersionServiceNothing>& callback)
{
    // Saved is what the server confirms by the digest of what was sent.
    d->Send<VersionServiceNothing>(ServiceRoutes::CreateVersion(appId, content, ServiceRoutes::NewKey()),
                                   context, callback, [](const WbHttpAnswer& answer) {
                                       return ServiceAnswers::ReadSaved(answer)
                                                  ? std::optional(VersionServiceNothing())
                                                  : std::nullopt;
                                   });
}

void VersionServiceClient::ListVersions(const QString& appId, QObject* context,
                                        const Callback<QVector<VersionServiceVersion>>& callback)
{
    d->Send<QVector<VersionServiceVersion>>(ServiceRoutes::ListVersions(appId), context, callback, Versions);
}

void VersionServiceClient::ListOnlineApps(QObject* context,
                                          const Callback<QVector<VersionServiceReleasedApp>>& callback)
{
    d->Send<QVector<VersionServiceReleasedApp>>(ServiceRoutes::OnlineApps(), context, callback,
                                                ReadBody(ReleaseAnswers::ReadReleasedApps));
}

void VersionServiceClient::ListGrayApps(QObject* context,
                                        const Callback<QVector<VersionServiceReleasedApp>>& callback)
{
    d->Send<QVector<VersionServiceReleasedApp>>(ServiceRoutes::GrayApps(), context, callback,
                                                ReadBody(ReleaseAnswers::ReadReleasedApps));
}

void VersionServiceClient::GetVersionData(const QString& versionId, QObject* context,
                                          const Callback<QByteArray>& callback)
{
    // What it holds is for whoever asked; here only the digest counts.
    d->Send<QByteArray>(ServiceRoutes::VersionData(versionId), context, callback,
                        [](const WbHttpAnswer& answer) { return std::optional<QByteArray>(answer.body); });
}

void VersionServiceClient::ListReleases(const QString& appId, QObject* context,
                                        const Callback<QVector<VersionServiceRelease>>& callback)
{
    d->Send<QVector<VersionServiceRelease>>(ServiceRoutes::ListReleases(appId), context, callback,
                                            ReadBody(ReleaseAnswers::ReadReleases));
}

void VersionServiceClient::TakeBack(const VersionServiceTakeBack& order, QObject* context,
                                    const Callback<QString>& callback)
{
    d->Send<QString>(ServiceRoutes::TakeBack(order, ServiceRoutes::NewKey()), context, callback,
                     ReadBody(ReleaseAnswers::ReadTakenBack));
}

void VersionServiceClient::ListSaves(const QString& appId, QObject* context,
                                     const Callback<QVector<VersionServiceSave>>& callback)
{
    d->Send<QVector<VersionServiceSave>>(ServiceRoutes::ListSaves(appId), context, callback,
                                         ReadBody(ReleaseAnswers::ReadSaves));
}

void VersionServiceClient::NoteSave(const QString& versionId, int revision, const QString& note,
                                    QObject* context, const Callback<VersionServiceNothing>& callback)
{
    d->Send<VersionServiceNothing>(
        ServiceRoutes::NoteSave(versionId, revision, note, ServiceRoutes::NewKey()), context, callback,
        Nothing);
}

void VersionServiceClient::ListInvitations(const QString& appId, QObject* context,
                                           const Callback<QVector<VersionServiceInvitation>>& callback)
{
    d->Send<QVector<VersionServiceInvitation>>(ServiceRoutes::ListInvitations(appId), context, callback,
                                               ReadBody(ReleaseAnswers::ReadInvitations));
}

void VersionServiceClient::CreateInvitation(const QString& appId, int validDays, int mostUses,
                                            QObject* context,
                                            const Callback<VersionServiceInvitation>& callback)
{
    d->Send<VersionServiceInvitation>(
        ServiceRoutes::CreateInvitation(appId, validDays, mostUses, ServiceRoutes::NewKey()), context,
        callback, ReadBody(ReleaseAnswers::ReadInvitation));
}

void VersionServiceClient::RevokeInvitation(const QString& invitationId, QObject* context,
                                            const Callback<VersionServiceInvitation>& callback)
{
    d->Send<VersionServiceInvitation>(ServiceRoutes::RevokeInvitation(invitationId, ServiceRoutes::NewKey()),
                                      context, callback, ReadBody(ReleaseAnswers::ReadInvitation));
}

void VersionServiceClient::RedeemInvitation(const QString& code, QObject* context,
                                            const Callback<VersionServiceReleasedApp>& callback)
{
    d->Send<VersionServiceReleasedApp>(ServiceRoutes::RedeemInvitation(code, ServiceRoutes::NewKey()),
                                       context, callback, ReadBody(ReleaseAnswers::ReadReleasedApp));
}

void VersionServiceClient::ListAudit(const QString& beforeId, int limit, QObject* context,
                                     const Callback<QVector<VersionServiceAuditEntry>>& callback)
{
    d->Send<QVector<VersionServiceAuditEntry>>(ServiceRoutes::Audit(beforeId, limit), context, callback,
                                               ReadBody(ReleaseAnswers::ReadAudit));
}
