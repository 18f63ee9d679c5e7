// SPDX-License-Identifier: Apache-2.0

#include <RpaServiceClient/ServiceRoutes.h>
#include <RpaServiceClient/VersionServiceSettings.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>

#include <algorithm>

namespace
{
WbHttpRequest Route(const QByteArray& method, const QByteArray& path)
{
    const auto* settings = VersionServiceSettings::Instance();
    QByteArray base = settings->GetBaseUrl().toEncoded();
    while (base.endsWith('/'))
        base.chop(1);
    WbHttpRequest request;
    request.method = method;
    request.url = QUrl::fromEncoded(base + "/api/v1" + path, QUrl::StrictMode);
    request.bearerToken = settings->GetToken();
    request.allowPlainSecrets = settings->GetAllowPlainSecrets();
    request.caFile = settings->GetCaFile();
    request.limits = settings->GetLimits();
    request.expectation.json = true;
    return request;
}

QByteArray Escaped(const QString& text)
{
    return QUrl::toPercentEncoding(text);
}

void AddHeader(WbHttpRequest* request, const QByteArray& name, const QByteArray& value)
{
    request->headers.append(qMakePair(name, value));
}

void AddKey(WbHttpRequest* request, const QByteArray& key)
{
    AddHeader(request, "Idempotency-Key", key);
}

void AddRevision(WbHttpRequest* request, int revision)
{
    if (revision > 0)
        AddHeader(request, "If-Match", '"' + QByteArray::number(revision) + '"');
}

void SetJsonBody(WbHttpRequest* request, const QJsonObject& body)
{
    AddHeader(request, "Content-Type", "application/json");
    request->body = QJsonDocument(body).toJson(QJsonDocument::Compact);
}

void SetContent(WbHttpRequest* request, const ServiceRoutes::VersionContent& content)
{
    AddHeader(request, "Content-Type", "application/json");
    AddHeader(request, "Version-Name", Escaped(content.name));
    AddHeader(request, "Version-Description", Escaped(content.description));
    AddHeader(request, "Version-Api", Escaped(content.apiVersion));
    // Never null, or the transport would take the (empty) bytes instead of the text.
    request->bodyText = content.json.isNull() ? QStringLiteral("") : content.json;
    request->digestBody = true;
    // What could never be loaded again must not replace what can.
    request->guardBody = true;
}
} // namespace

bool ServiceRoutes::IsValidId(const QString& id)
{
    constexpr int longest = 64;
    return !id.isEmpty() && id.size() <= longest && std::all_of(id.cbegin(), id.cend(), [](QChar c) {
        return (c >= QLatin1Char('a') && c <= QLatin1Char('z')) ||
               (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) ||
               (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('_') ||
               c == QLatin1Char('-');
    });
}

WbHttpRequest ServiceRoutes::ListVersions(const QString& appId)
{
    return Route("GET", "/apps/" + Escaped(appId) + "/versions");
}

WbHttpRequest ServiceRoutes::CreateVersion(const QString& appId, const VersionContent& content,
                                           const QByteArray& key)
{
    auto request = Route("POST", "/apps/" + Escaped(appId) + "/versions");
    AddKey(&request, key);
    SetContent(&request, content);
    return request;
}

WbHttpRequest ServiceRoutes::CreateVersion(const QString& appId, const VersionServiceContent& content,
                                           const QByteArray& key)
{
    auto request =
        CreateVersion(appId, VersionContent{content.name, content.description, content.apiVersion, {}}, key);
    request.bodyText = QString(); // the bytes instead
    request.body = content.data;
    return request;
}

WbHttpRequest ServiceRoutes::OverwriteVersion(const QString& versionId, const VersionContent& content,
                                              int revision, const QByteArray& key)
{
    auto request = Route("PUT", "/versions/" + Escaped(versionId));
    AddKey(&request, key);
    AddRevision(&request, revision);
    SetContent(&request, content);
    return request;
}

WbHttpRequest ServiceRoutes::VersionData(const QString& versionId)
{
    auto request = Route("GET", "/versions/" + Escaped(versionId) + "/data");
    request.expectation.contentDigest = true;
    request.expectation.outline = true;
    return request;
}

WbHttpRequest ServiceRoutes::DeleteVersion(const QString& versionId, int revision, const QByteArray& key)
{
    auto request = Route("DELETE", "/versions/" + Escaped(versionId));
    request.expectation.json = false;
    AddKey(&request, key);
    AddRevision(&request, revision);
    return request;
}

WbHttpRequest ServiceRoutes::ReleaseVersion(const QString& versionId, int publishType, int revision,
                                            const QByteArray& key)
{
    auto request = Route("POST", "/versions/" + Escaped(versionId) + "/release");
    AddKey(&request, key);
    AddRevision(&request, revision);
    SetJsonBody(&request, {{QStringLiteral("type"), publishType}});
    return request;
}

WbHttpRequest ServiceRoutes::SignIn(const QString& account, const QString& password, bool stay,
                                    const QByteArray& key)
{
    auto request = Route("POST", "/sessions");
    request.hasSecretBody = true;
    // The token of an earlier session has no business here.
    request.bearerToken.clear();
    AddKey(&request, key);
    SetJsonBody(&request, {{QStringLiteral("account"), account},
                           {QStringLiteral("password"), password},
                           {QStringLiteral("stay"), stay}});
    return request;
}

WbHttpRequest ServiceRoutes::CurrentSession()
{
    return Route("GET", "/sessions/current");
}

WbHttpRequest ServiceRoutes::SignOut(const QByteArray& key)
{
    auto request = Route("DELETE", "/sessions/current");
    request.expectation.json = false;
    AddKey(&request, key);
    return request;
}

WbHttpRequest ServiceRoutes::ListApps(const QString& nameFilter)
{
    return Route("GET", "/apps?query=" + Escaped(nameFilter));
}

WbHttpRequest ServiceRoutes::GetApp(const QString& appId)
{
    return Route("GET", "/apps/" + Escaped(appId));
}

WbHttpRequest ServiceRoutes::CreateApp(const QString& name, int kind, const QByteArray& key, bool anyName)
{
    auto request = Route("POST", "/apps");
    AddKey(&request, key);
    QJsonObject body{{QStringLiteral("name"), name}, {QStringLiteral("kind"), kind}};
    if (anyName)
        body.insert(QStringLiteral("anyName"), true);
    SetJsonBody(&request, body);
    return request;
}

WbHttpRequest ServiceRoutes::RenameApp(const QString& appId, const QString& name, const QByteArray& key)
{
    auto request = Route("PATCH", "/apps/" + Escaped(appId));
    AddKey(&request, key);
    SetJsonBody(&request, {{QStringLiteral("name"), name}});
    return request;
}

WbHttpRequest ServiceRoutes::SetTags(const QString& appId, const QStringList& tags, const QByteArray& key)
{
    auto request = Route("PATCH", "/apps/" + Escaped(appId));
    AddKey(&request, key);
    SetJsonBody(&request, {{QStringLiteral("tags"), QJsonArray::fromStringList(tags)}});
    return request;
}

WbHttpRequest ServiceRoutes::CopyApp(const QString& appId, const QByteArray& key)
{
    auto request = Route("POST", "/apps/" + Escaped(appId) + "/copies");
    AddKey(&request, key);
    return request;
}

WbHttpRequest ServiceRoutes::DeleteApp(const QString& appId, const QByteArray& key)
{
    auto request = Route("DELETE", "/apps/" + Escaped(appId));
    request.expectation.json = false;
    AddKey(&request, key);
    return request;
}

WbHttpRequest ServiceRoutes::DeletedApps()
{
    return Route("GET", "/deleted-apps");
}

WbHttpRequest ServiceRoutes::RestoreApp(const QString& appId, const QByteArray& key)
{
    auto request = Route("POST", "/deleted-apps/" + Escaped(appId) + "/restore");
    AddKey(&request, key);
    return request;
}

WbHttpRequest ServiceRoutes::PurgeApp(const QString& appId, const QByteArray& key)
{
    auto request = Route("DELETE", "/deleted-apps/" + Escaped(appId));
    request.expectation.json = false;
    AddKey(&request, key);
    return request;
}

WbHttpRequest ServiceRoutes::OnlineApps()
{
    return Route("GET", "/online-apps");
}

WbHttpRequest ServiceRoutes::GrayApps()
{
    return Route("GET", "/gray-apps");
}

WbHttpRequest ServiceRoutes::ListReleases(const QString& appId)
{
    return Route("GET", "/apps/" + Escaped(appId) + "/releases");
}

WbHttpRequest ServiceRoutes::TakeBack(const VersionServiceTakeBack& order, const QByteArray& key)
{
    auto request = Route("POST", "/apps/" + Escaped(order.appId) + "/take-back");
    AddKey(&request, key);
    SetJsonBody(&request, {{QStringLiteral("state"), order.state},
                           {QStringLiteral("from"), order.from},
                           {QStringLiteral("to"), order.to},
                           {QStringLiteral("reason"), order.reason}});
    return request;
}

WbHttpRequest ServiceRoutes::ListSaves(const QString& appId)
{
    return Route("GET", "/apps/" + Escaped(appId) + "/saves");
}

WbHttpRequest ServiceRoutes::NoteSave(const QString& versionId, int revision, const QString& note,
                                      const QByteArray& key)
{
    auto request = Route("PUT", "/versions/" + Escaped(versionId) + "/note");
    request.expectation.json = false;
    AddKey(&request, key);
    SetJsonBody(&request, {{QStringLiteral("revision"), revision}, {QStringLiteral("note"), note}});
    return request;
}

WbHttpRequest ServiceRoutes::ListInvitations(const QString& appId)
{
    return Route("GET", "/apps/" + Escaped(appId) + "/invitations");
}

WbHttpRequest ServiceRoutes::CreateInvitation(const QString& appId, int validDays, int mostUses,
                                              const QByteArray& key)
{
    auto request = Route("POST", "/apps/" + Escaped(appId) + "/invitations");
    AddKey(&request, key);
    SetJsonBody(&request, {{QStringLiteral("validDays"), validDays}, {QStringLiteral("mostUses"), mostUses}});
    return request;
}

WbHttpRequest ServiceRoutes::RevokeInvitation(const QString& invitationId, const QByteArray& key)
{
    auto request = Route("DELETE", "/invitations/" + Escaped(invitationId));
    AddKey(&request, key);
    return request;
}

WbHttpRequest ServiceRoutes::RedeemInvitation(const QString& code, const QByteArray& key)
{
    auto request = Route("POST", "/invitations/redeem");
    AddKey(&request, key);
    SetJsonBody(&request, {{QStringLiteral("code"), code}});
    return request;
}

WbHttpRequest ServiceRoutes::Audit(const QString& beforeId, int limit)
{
    QByteArray path = "/audit?limit=" + QByteArray::number(limit);
    if (!beforeId.isEmpty())
        path += "&before=" + Escaped(beforeId);
    return Route("GET", path);
}

QByteArray ServiceRoutes::NewKey()
{
    return QUuid::createUuid().toByteArray(QUuid::WithoutBraces);
}
