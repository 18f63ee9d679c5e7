// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../base/Log.h"
#include "../transport/Tls.h"

#include <QDateTime>

#include <array>

namespace server
{
// Keeps the server's certificate up to date with its files. On one thread at a time.
class CertificateKeeper
{
public:
    // Throws std::runtime_error when the files are of no use.
    CertificateKeeper(const TlsFiles& files, Log& log);

    const std::shared_ptr<Tls>& Current() const { return tls; }

    // Reads the files again. What is of no use is logged, and the former certificate stays.
    void Reload();

    // The same when a file has changed since it was read.
    void ReloadWhenChanged();

private:
    using Stamp = std::array<std::pair<QDateTime, qint64>, 2>;

    Stamp StampNow() const;

    const TlsFiles files;
    Log& log;
    Stamp read; // before the files were read, so that a change meanwhile is seen the next time
    const std::shared_ptr<Tls> tls;
};
} // namespace server
