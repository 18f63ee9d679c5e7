// SPDX-License-Identifier: Apache-2.0

#include "Digest.h"

#include <sodium.h>

namespace server
{
QByteArray Sha256(const QByteArray& data)
{
    QByteArray hash(crypto_hash_sha256_BYTES, Qt::Uninitialized);
    crypto_hash_sha256(reinterpret_cast<unsigned char*>(hash.data()),
                       reinterpret_cast<const unsigned char*>(data.constData()),
                       static_cast<unsigned long long>(data.size()));
    return hash;
}
} // namespace server
