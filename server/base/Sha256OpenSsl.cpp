// SPDX-License-Identifier: Apache-2.0

#include "Digest.h"

#include <openssl/evp.h>

namespace server
{
QByteArray Sha256(const QByteArray& data)
{
    // Looked up once: that takes longer than hashing a token.
    static EVP_MD* const algorithm = EVP_MD_fetch(nullptr, "SHA256", nullptr);
    QByteArray hash(sha256Bytes, Qt::Uninitialized);
    if (EVP_Digest(data.constData(), static_cast<std::size_t>(data.size()),
                   reinterpret_cast<unsigned char*>(hash.data()), nullptr, algorithm, nullptr) != 1)
        qFatal("OpenSSL gives no SHA-256");
    return hash;
}
} // namespace server
