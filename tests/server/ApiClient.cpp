// SPDX-License-Identifier: Apache-2.0

#include "ApiClient.h"

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QUuid>

#include <stdexcept>

ApiClient::ApiClient(unsigned short thePort, QByteArray theToken) : port(thePort), token(std::move(theToken))
{
}

QByteArray ApiClient::NewKey()
{
    return QUuid::createUuid().toByteArray(QUuid::WithoutBraces);
}

ApiClient::Reply ApiClient::Ask(const QByteArray& method, const QByteArray& path, const QByteArray& body,
                                const Headers& headers)
{
    QByteArray request =
        method + ' ' + path + " HTTP/1.1\r\nHost: localhost\r\nAuthorization: Bearer " + token + "\r\n";
    for (const auto& [name, value] : headers)
        request += name + ": " + value + "\r\n";
    if (!body.isNull())
        request += "Content-Length: " + QByteArray::number(body.size()) + "\r\n";
    request += "\r\n" + body;
    LoadClient::Answer answer;
    try {
        if (!connection)
            std::atomic_store(&connection, std::make_shared<LoadClient>(port));
        answer = connection->Ask(request.toStdString(), true);
    } catch (const std::runtime_error&) {
        // Nobody listens: no answer.
    }
    if (answer.status == 0)
        Disconnect();
    Reply reply;
    reply.status = answer.status;
    reply.head = QByteArray::fromStdString(answer.head);
    reply.body = QByteArray::fromStdString(answer.body);
    reply.json = QJsonDocument::fromJson(reply.body.left(100000)).object();
    return reply;
}

void ApiClient::EndConnection()
{
    if (const auto current = std::atomic_load(&connection))
        current->End();
}

ApiClient::Reply ApiClient::SignIn(const QByteArray& account, const QByteArray& password)
{
    return Ask("POST", "/api/v1/sessions",
               "{\"account\":\"" + account + "\",\"password\":\"" + password + "\"}");
}

QByteArray ApiClient::TokenOf(unsigned short port, const QByteArray& account, const QByteArray& password)
{
    return ApiClient(port, {})
        .SignIn(account, password)
        .json.value(QLatin1String("token"))
        .toString()
        .toLatin1();
}

ApiClient::Reply ApiClient::CreateApp(const QByteArray& name)
{
    return Ask("POST", "/api/v1/apps", "{\"kind\":0,\"name\":\"" + name + "\"}",
               {{"Idempotency-Key", NewKey()}});
}

ApiClient::Reply ApiClient::Create(const QByteArray& appId, const QByteArray& name, const QByteArray& body,
                                   const QByteArray& key)
{
    const QByteArray digest =
        "sha-256=:" + QCryptographicHash::hash(body, QCryptographicHash::Sha256).toBase64() + ':';
    return Ask("POST", "/api/v1/apps/" + appId + "/versions", body,
               {{"Content-Digest", digest},
                {"Version-Name", name},
                {"Idempotency-Key", key.isEmpty() ? NewKey() : key}});
}

ApiClient::Reply ApiClient::Overwrite(const QByteArray& versionId, qint64 revision, const QByteArray& body,
                                      const QByteArray& key)
{
    const QByteArray digest =
        "sha-256=:" + QCryptographicHash::hash(body, QCryptographicHash::Sha256).toBase64() + ':';
    return Ask("PUT", "/api/v1/versions/" + versionId, body,
               {{"Content-Digest", digest},
                {"If-Match", '"' + QByteArray::number(revision) + '"'},
                {"Idempotency-Key", key.isEmpty() ? NewKey() : key}});
}

ApiClient::Reply ApiClient::Release(const QByteArray& versionId, qint64 revision, int type)
{
    return Ask("POST", "/api/v1/versions/" + versionId + "/release",
               "{\"type\":" + QByteArray::number(type) + '}',
               {{"If-Match", '"' + QByteArray::number(revision) + '"'}, {"Idempotency-Key", NewKey()}});
}
