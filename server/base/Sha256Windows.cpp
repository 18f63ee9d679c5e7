// SPDX-License-Identifier: Apache-2.0

// The system's own library, as OpenSSL is not built for Windows.
#include "Digest.h"

#include <windows.h>
#include <bcrypt.h>

namespace server
{
namespace
{
BCRYPT_ALG_HANDLE OpenAlgorithm()
{
    BCRYPT_ALG_HANDLE algorithm = nullptr;
    BCryptOpenAlgorithmProvider(&algorithm, BCRYPT_SHA256_ALGORITHM, nullptr, 0);
    return algorithm;
}
} // namespace

QByteArray Sha256(const QByteArray& data)
{
    static const BCRYPT_ALG_HANDLE algorithm = OpenAlgorithm();
    QByteArray hash(sha256Bytes, Qt::Uninitialized);
    // The system's signature has no const; it only reads.
    auto* const bytes = reinterpret_cast<UCHAR*>(const_cast<char*>(data.constData()));
    if (BCryptHash(algorithm, nullptr, 0, bytes, static_cast<ULONG>(data.size()),
                   reinterpret_cast<UCHAR*>(hash.data()), static_cast<ULONG>(hash.size())) != 0)
        qFatal("Windows gives no SHA-256");
    return hash;
}
} // namespace server
