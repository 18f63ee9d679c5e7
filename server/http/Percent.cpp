// SPDX-License-Identifier: Apache-2.0

#include "Percent.h"

#include <cctype>

namespace server
{
namespace
{
bool AreEscapesWhole(const QByteArray& text)
{
    const auto isHex = [&text](int at) {
        return at < text.size() && std::isxdigit(static_cast<unsigned char>(text.at(at))) != 0;
    };
    for (int at = text.indexOf('%'); at >= 0; at = text.indexOf('%', at + 1))
        if (!isHex(at + 1) || !isHex(at + 2))
            return false;
    return true;
}
} // namespace

std::optional<QString> DecodePercent(const QByteArray& encoded)
{
    if (!AreEscapesWhole(encoded))
        return std::nullopt;
    const QByteArray utf8 = QByteArray::fromPercentEncoding(encoded);
    const QString text = QString::fromUtf8(utf8);
    if (utf8.contains('\0') || text.toUtf8() != utf8)
        return std::nullopt;
    return text.isNull() ? QStringLiteral("") : text;
}
} // namespace server
