// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "SecretStore.h"

#include <QUrl>

// The sign-in that outlives the workstation: the token of one server, never a password. Nothing is kept until
// the user asks for it.
class KeptSignIn
{
public:
    explicit KeptSignIn(const QString& file) : store(file) {}

    // False when it could not be written; nothing is kept then.
    bool Keep(const QUrl& server, const QByteArray& token);

    // The token kept for this server; empty when there is none, or one of another server.
    QByteArray GetToken(const QUrl& server) const;

    void Forget() { store.Remove(); }

private:
    SecretStore store;
};
