// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringView>

// How large the content of an app may be: one set of figures for whoever reads, keeps, sends or takes over
// content, so that nothing is accepted in one place that another one refuses later. Sizes are those of JSON
// in UTF-8. Any thread.
namespace ContentLimits
{
constexpr int totalBytes = 64 * 1024 * 1024; // all of it as JSON
constexpr int textBytes = 16 * 1024 * 1024;  // one text
constexpr int nameBytes = 256;               // one member name
constexpr int depth = 64;                    // nested objects and arrays
constexpr int members = 1000000;             // of all objects together
constexpr int elements = 10000000;           // of all arrays together

// Length of the text in UTF-8, as JsonWriter writes it: half a surrogate pair becomes a single byte.
inline qint64 BytesOf(QStringView text)
{
    qint64 bytes = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        const bool isPair = c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        i += isPair ? 1 : 0;
        bytes += isPair ? 4 : c.unicode() < 0x80 || c.isSurrogate() ? 1 : c.unicode() < 0x800 ? 2 : 3;
    }
    return bytes;
}

// Whether the text may be part of an app. Only texts beyond a third of the limit are counted.
inline bool Fits(QStringView text, int mostBytes = textBytes)
{
    constexpr int mostBytesPerUnit = 3;
    return text.size() <= mostBytes / mostBytesPerUnit || BytesOf(text) <= mostBytes;
}
} // namespace ContentLimits
