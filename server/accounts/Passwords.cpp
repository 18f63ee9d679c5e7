// SPDX-License-Identifier: Apache-2.0

#include "Passwords.h"

#include <new>
#include <sodium.h>

namespace server
{
namespace
{
constexpr unsigned long long passes = 3;
constexpr std::size_t memoryBytes = 64u * 1024 * 1024;
} // namespace

QByteArray HashPassword(const QByteArray& password)
{
    char hash[crypto_pwhash_STRBYTES];
    if (crypto_pwhash_str(hash, password.constData(), static_cast<unsigned long long>(password.size()),
                          passes, memoryBytes) != 0)
        throw std::bad_alloc();
    return QByteArray(hash);
}

bool VerifyPassword(const QByteArray& hash, const QByteArray& password)
{
    // An unknown account must not be told from a wrong password by a quicker answer.
    static const QByteArray nobody = HashPassword(QByteArrayLiteral("nobody has this password"));
    const QByteArray& expected = hash.isEmpty() ? nobody : hash;
    const bool same = crypto_pwhash_str_verify(expected.constData(), password.constData(),
                                               static_cast<unsigned long long>(password.size())) == 0;
    return same && !hash.isEmpty();
}
} // namespace server
