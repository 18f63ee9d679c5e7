// SPDX-License-Identifier: Apache-2.0

#include "Digest.h"

#include <QList>

namespace server
{
namespace
{
const char digestStart[] = "sha-256=:";
} // namespace

QByteArray ContentDigest(const QByteArray& sha256)
{
    return digestStart + sha256.toBase64() + ':';
}

QByteArray ParseContentDigest(const QByteArray& header)
{
    for (const QByteArray& part : header.split(',')) {
        const QByteArray item = part.trimmed();
        if (!item.startsWith(digestStart) || !item.endsWith(':'))
            continue;
        const int start = static_cast<int>(sizeof digestStart) - 1;
        const auto decoded = QByteArray::fromBase64Encoding(item.mid(start, item.size() - start - 1),
                                                            QByteArray::AbortOnBase64DecodingErrors);
        if (decoded && decoded.decoded.size() == sha256Bytes)
            return decoded.decoded;
    }
    return {};
}
} // namespace server
