// SPDX-License-Identifier: Apache-2.0

#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/VersionServiceSettings.h>

#include <QJsonDocument>
#include <QUuid>

#include <algorithm>

WbHttpRequest ServiceRoute::Fetch(const QByteArray& path)
{
    const auto* settings = VersionServiceSettings::Instance();
    QByteArray base = settings->GetBaseUrl().toEncoded();
    while (base.endsWith('/'))
        base.chop(1);
    WbHttpRequest request;
    request.url = QUrl::fromEncoded(base + "/api/v1" + path, QUrl::StrictMode);
    request.bearerToken = settings->GetToken();
    request.caFile = settings->GetCaFile();
    request.limits = settings->GetLimits();
    request.expectation.json = true;
    return request;
}

WbHttpRequest ServiceRoute::Change(const QByteArray& method, const QByteArray& path)
{
    WbHttpRequest request = Fetch(path);
    request.method = method;
    AddHeader(&request, "Idempotency-Key", QUuid::createUuid().toByteArray(QUuid::WithoutBraces));
    return request;
}

WbHttpRequest ServiceRoute::Change(const QByteArray& method, const QByteArray& path, const QJsonObject& body)
{
    WbHttpRequest request = Change(method, path);
    AddHeader(&request, "Content-Type", "application/json");
    request.body = QJsonDocument(body).toJson(QJsonDocument::Compact);
    return request;
}

WbHttpRequest ServiceRoute::Silent(WbHttpRequest request)
{
    request.expectation.json = false;
    return request;
}

void ServiceRoute::AddHeader(WbHttpRequest* request, const QByteArray& name, const QByteArray& value)
{
    request->headers.append(qMakePair(name, value));
}

void ServiceRoute::AddRevision(WbHttpRequest* request, int revision)
{
    if (revision > 0)
        AddHeader(request, "If-Match", '"' + QByteArray::number(revision) + '"');
}

QByteArray ServiceRoute::Escaped(const QString& text)
{
    return QUrl::toPercentEncoding(text);
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
