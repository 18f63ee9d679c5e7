// SPDX-License-Identifier: Apache-2.0

#include "Ids.h"

#include "Clock.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <sodium.h>

namespace server
{
namespace
{
// Milliseconds in the upper 48 bits, a counter below: never the same twice in one process.
std::uint64_t NextOrdinal()
{
    static std::atomic<std::uint64_t> last{0};
    const auto now = static_cast<std::uint64_t>(NowMs()) << 16;
    std::uint64_t previous = last.load();
    std::uint64_t next = 0;
    do {
        next = std::max(now, previous + 1);
    } while (!last.compare_exchange_weak(previous, next));
    return next;
}
} // namespace

QString NewId()
{
    unsigned char random[8];
    randombytes_buf(random, sizeof random);
    const QByteArray tail(reinterpret_cast<const char*>(random), sizeof random);
    return QStringLiteral("%1").arg(static_cast<qulonglong>(NextOrdinal()), 16, 16, QLatin1Char('0')) +
           QString::fromLatin1(tail.toHex());
}

QByteArray NewToken()
{
    unsigned char random[32];
    randombytes_buf(random, sizeof random);
    return QByteArray(reinterpret_cast<const char*>(random), sizeof random).toHex();
}

QString NewInvitationCode()
{
    static const char alphabet[] = "23456789ABCDEFGHJKLMNPQRSTUVWXYZ"; // 32 of them: no bias
    unsigned char random[10];
    randombytes_buf(random, sizeof random);
    QString code;
    for (const unsigned char byte : random)
        code += QLatin1Char(alphabet[byte % 32]);
    return code;
}

bool IsId(const QString& text)
{
    const auto allowed = [](QChar c) {
        const auto u = c.unicode();
        return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9') || u == '_' ||
               u == '-';
    };
    return !text.isEmpty() && text.size() <= 64 && std::all_of(text.begin(), text.end(), allowed);
}
} // namespace server
