// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

// A string of a JSON text, found and checked in one go; decoded only where it is wanted.
struct JsonString
{
    enum class Error
    {
        None,
        NoEnd,
        ControlCharacter,
        Escape,
        Encoding,
    };

    const char* begin = nullptr; // behind the opening quote
    const char* end = nullptr;   // at the closing quote
    bool hasEscapes = false;
    Error error = Error::None;

    // text points behind the opening quote.
    static JsonString Scan(const char* text, const char* textEnd);

    int GetRawLength() const { return static_cast<int>(end - begin); }

    // Replaces bytes by its UTF-8.
    void GetUtf8(QByteArray& bytes) const;
    QString ToString() const;
};
