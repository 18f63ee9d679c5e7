// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "LoadClient.h"

#include <QByteArray>
#include <QJsonObject>

#include <map>
#include <memory>
#include <optional>

// Speaks the version protocol to a server under test, blocking, from any one thread; connects anew when the
// connection broke.
class ApiClient
{
public:
    ApiClient(unsigned short port, QByteArray token);

    struct Reply
    {
        int status = 0; // 0: no answer came
        QByteArray body;
        QJsonObject json;
        QByteArray head;
    };
    using Headers = std::map<QByteArray, QByteArray>;

    Reply Ask(const QByteArray& method, const QByteArray& path, const QByteArray& body = {},
              const Headers& headers = {});

    Reply Get(const QByteArray& path) { return Ask("GET", path); }
    Reply SignIn(const QByteArray& account, const QByteArray& password);

    // The token of a fresh session; empty when it was refused.
    static QByteArray TokenOf(unsigned short port, const QByteArray& account, const QByteArray& password);

    // Writes with a key of their own unless one is given.
    Reply CreateApp(const QByteArray& name);
    Reply Create(const QByteArray& appId, const QByteArray& name, const QByteArray& body,
                 const QByteArray& key = {});
    Reply Overwrite(const QByteArray& versionId, qint64 revision, const QByteArray& body,
                    const QByteArray& key = {});

    Reply Release(const QByteArray& versionId, qint64 revision, int type);

    // The next request goes over a new connection; after the server was started again.
    void Disconnect() { std::atomic_store(&connection, {}); }

    // Ends the connection; a request that waits for its answer gets none. Any thread.
    void EndConnection();

    static QByteArray NewKey();

    // The smallest content that is an app: of this number, or with these members.
    static QByteArray Body(int number) { return Body("\"n\":" + QByteArray::number(number)); }
    static QByteArray Body(const QByteArray& members)
    {
        return R"({"uiData":{"pages":[]},"processData":{"processes":[]},)" + members + '}';
    }

private:
    const unsigned short port;
    const QByteArray token;
    std::shared_ptr<LoadClient> connection; // replaced atomically
};
