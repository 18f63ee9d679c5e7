// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace server
{
// The text behind percent-encoded UTF-8; nothing when an escape is broken, the bytes are no text, or it holds
// a zero, which databases cannot keep.
std::optional<QString> DecodePercent(const QByteArray& encoded);
} // namespace server
