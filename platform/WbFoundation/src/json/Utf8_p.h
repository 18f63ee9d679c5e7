// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

namespace Utf8
{
// Length of the valid UTF-8 at the start of the text.
int GetValidLength(const char* text, int length);

inline bool IsValid(const QByteArray& text)
{
    return GetValidLength(text.constData(), text.size()) == text.size();
}

// Of valid UTF-8. Unlike QString::fromUtf8 it keeps a byte order mark at the start, which is a character like
// any other inside JSON.
QString ToString(const char* text, int length);
} // namespace Utf8
