// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>

// How bytes stand in a JSON string: valid UTF-8 as that text, everything else as "data:;base64,…". A text
// that begins with this prefix by itself takes the second form too, so that every sequence of bytes comes
// back as it was.
namespace JsonBytes
{
QByteArray Encode(const QByteArray& bytes);
QByteArray Decode(const QByteArray& utf8);
} // namespace JsonBytes
