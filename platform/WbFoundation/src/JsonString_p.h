#pragma once

#include <QByteArray>

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

    // Its UTF-8; without escapes it refers to the JSON text and is valid only as long as that is.
    QByteArray GetUtf8() const;
};
