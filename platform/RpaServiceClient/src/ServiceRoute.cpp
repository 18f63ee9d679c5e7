// SPDX-License-Identifier: Apache-2.0

#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/VersionServiceSettings.h>

#include <QJsonDocument>
#include <QUuid>

#include <algorithm>

WbHttpRequest ServiceRoute::Fetch(const QByteArray& path, const QString& part)
{
    const auto* settings = VersionServiceSettings::Instance();
    QByteArray base = settings->GetBaseUrl().toEncoded();
    while (base.endsWith('/'))
        base.chop(1);
    WbHttpRequest request;
    request.url = QUrl::fromEncoded(
        base + "/api/v1" + QByteArray(path).replace("%1", QUrl::toPercentEncoding(part)), QUrl::StrictMode);
    request.bearerToken = settings->GetToken();
    request.caFile = settings->GetCaFile();
    request.limits = settings->GetLimits();
    request.expectation.json = true;
    return request;
}

WbHttpRequest ServiceRoute::Change(const QByteArray& method, const QByteArray& path, const QString& part,
                                   const QJsonObject& body)
{
    WbHttpRequest request = Fetch(path, part);
    request.method = method;
    request.headers.push_back({"Idempotency-Key", QUuid::createUuid().toByteArray(QUuid::WithoutBraces)});
    if (!body.isEmpty()) {
        request.headers.push_back({"Content-Type", "application/json"});
        request.body = QJsonDocument(body).toJson(QJsonDocument::Compact);
    }
    return request;
}

WbHttpRequest ServiceRoute::ChangeOnly(const QByteArray& method, const QByteArray& path, const QString& part,
                                       const QJsonObject& body)
{
    WbHttpRequest request = Change(method, path, part, body);
    request.expectation.json = false;
    return request;
}

WbHttpRequest ServiceRoute::AtRevision(WbHttpRequest request, int revision)
{
    if (revision > 0)
        request.headers.push_back({"If-Match", '"' + QByteArray::number(revision) + '"'});
    return request;
}

bool ServiceRoute::IsValidId(const QString& id)
{
    constexpr int longest = 64;
    return !id.isEmpty() && id.size() <= longest && std::all_of(id.cbegin(), id.cend(), [](QChar c) {
        return (c >= QLatin1Char('a') && c <= QLatin1Char('z')) ||
               (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) ||
               (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('_') ||
               c == QLatin1Char('-');
    });
}
