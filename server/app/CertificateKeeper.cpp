// SPDX-License-Identifier: Apache-2.0

#include "CertificateKeeper.h"

#include <QFileInfo>

#include <stdexcept>

namespace server
{
CertificateKeeper::CertificateKeeper(const TlsFiles& theFiles, Log& theLog)
    : files(theFiles), log(theLog), read(StampNow()), tls(OpenTls(files))
{
}

void CertificateKeeper::Reload()
{
    read = StampNow();
    try {
        tls->Reload();
        log.Write(LogLevel::Info, "certificate-loaded",
                  [this](JsonText& line) { line.Member("file", files.certificate); });
    } catch (const std::runtime_error& error) {
        log.Write(LogLevel::Error, "certificate-refused", [&error](JsonText& line) {
            line.Member("reason", QString::fromUtf8(error.what()))
                .Member("advice", QStringLiteral("the former certificate stays in use"));
        });
    }
}

void CertificateKeeper::ReloadWhenChanged()
{
    if (StampNow() != read)
        Reload();
}

CertificateKeeper::Stamp CertificateKeeper::StampNow() const
{
    const auto stampOf = [](const QString& fileName) {
        const QFileInfo info(fileName);
        return std::pair(info.lastModified(), info.size());
    };
    return {stampOf(files.certificate), stampOf(files.key)};
}
} // namespace server
