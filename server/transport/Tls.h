// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "Transport.h"

#include <QString>

namespace server
{
struct TlsFiles
{
    QString certificate; // PEM: the server's own first, then those that lead to its authority
    QString key;         // PEM, without a password
};

// The server's certificate and key. Any thread.
class Tls
{
public:
    virtual ~Tls() = default;

    // A transport that encrypts with what was read last; connections that stand keep what they began with.
    virtual std::unique_ptr<Transport> Wrap(Socket socket) = 0;

    // Reads the files again. Throws std::runtime_error when they are of no use; the former stay in use then.
    virtual void Reload() = 0;
};

// Throws std::runtime_error when the files are of no use, or this server cannot encrypt.
std::unique_ptr<Tls> OpenTls(const TlsFiles& files);

// Name and version of what encrypts; empty when this server was built without.
QString TlsName();
} // namespace server
