// SPDX-License-Identifier: Apache-2.0

#include "Request.h"

#include "../base/JsonText.h"

#include <QUrlQuery>

#include <algorithm>

namespace server
{
namespace
{
QByteArray Find(const Headers& headers, const char* name)
{
    const auto found = std::find_if(headers.begin(), headers.end(),
                                    [name](const auto& header) { return header.first == name; });
    return found == headers.end() ? QByteArray() : found->second;
}
} // namespace

QByteArray RequestHead::Header(const char* name) const
{
    return Find(headers, name);
}

QString RequestHead::QueryValue(const char* name) const
{
    QByteArray form = query;
    form.replace('+', "%20");
    return QUrlQuery(QString::fromUtf8(form)).queryItemValue(QString::fromLatin1(name), QUrl::FullyDecoded);
}

Response Response::Json(int status, QByteArray body)
{
    Response response;
    response.status = status;
    response.body = std::move(body);
    return response;
}

Response Response::Empty(int status)
{
    Response response;
    response.status = status;
    response.contentType.clear();
    return response;
}

Response Response::Refuse(int status, const char* code, const QString& message)
{
    return Json(status, JsonText()
                            .BeginObject()
                            .Member("code", QString::fromLatin1(code))
                            .Member("message", message)
                            .EndObject()
                            .Take());
}

Response& Response::With(const char* name, QByteArray value)
{
    headers.emplace_back(name, std::move(value));
    return *this;
}

QByteArray Response::Header(const char* name) const
{
    return Find(headers, name);
}
} // namespace server
