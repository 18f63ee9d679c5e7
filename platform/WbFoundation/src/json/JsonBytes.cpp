// SPDX-License-Identifier: Apache-2.0

#include "JsonBytes_p.h"
#include "Utf8_p.h"

namespace
{
QByteArray Prefix()
{
    return QByteArrayLiteral("data:;base64,");
}
} // namespace

QByteArray JsonBytes::Encode(const QByteArray& bytes)
{
    if (Utf8::IsValid(bytes) && !bytes.startsWith(Prefix()))
        return bytes;
    return Prefix() + bytes.toBase64();
}

QByteArray JsonBytes::Decode(const QByteArray& utf8)
{
    if (!utf8.startsWith(Prefix()))
        return utf8;
    const auto decoded =
        QByteArray::fromBase64Encoding(utf8.mid(Prefix().size()), QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? *decoded : utf8;
}
