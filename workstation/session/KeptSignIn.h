// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "SecretStore.h"

#include <QUrl>

// A sign-in that outlives the workstation, in a file: the token of one server, never a password. Nothing is kept until
// the user asks for it.
class KeptSignIn
{
public:
    explicit KeptSignIn(const QString& file) : store(file) {}

    // The form in which it is kept; empty when the token is none.
    static QByteArray Written(const QUrl& server, const QByteArray& token);
    // The token of that form for this server; empty when there is none, or one of another server.
    static QByteArray TokenIn(const QByteArray& written, const QUrl& server);

    // False when it could not be written; nothing is kept then.
    bool Keep(const QUrl& server, const QByteArray& token);

    // The token kept for this server; empty when there is none, or one of another server.
    QByteArray GetToken(const QUrl& server) const { return TokenIn(store.Read(), server); }

    void Forget() { store.Remove(); }

private:
    SecretStore store;
};
