// SPDX-License-Identifier: Apache-2.0

#include "JsonString_p.h"
#include "Utf8_p.h"

#include <cstring>

namespace
{
// -1 when these are not four hexadecimal digits.
int ReadHex(const char* text, const char* end)
{
    if (end - text < 4)
        return -1;
    int code = 0;
    for (int i = 0; i < 4; ++i) {
        const char c = text[i];
        const char lower = static_cast<char>(c | 0x20);
        if (c >= '0' && c <= '9')
            code = code * 16 + (c - '0');
        else if (lower >= 'a' && lower <= 'f')
            code = code * 16 + (lower - 'a' + 10);
        else
            return -1;
    }
    return code;
}

// The character after a backslash, or 0 when there is no such short escape.
char ShortEscape(char c)
{
    switch (c) {
    case '"':
    case '\\':
    case '/':
        return c;
    case 'b':
        return '\b';
    case 'f':
        return '\f';
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    default:
        return 0;
    }
}

struct Escape
{
    int length = 0; // in the JSON text, the backslash included; 0 when it is none
    uint code = 0;
};

// text points at the backslash. A lone half of a surrogate pair is no character and therefore no escape.
Escape ReadEscape(const char* text, const char* end)
{
    if (end - text < 2)
        return {};
    if (text[1] != 'u') {
        const char c = ShortEscape(text[1]);
        return c ? Escape{2, static_cast<uint>(c)} : Escape{};
    }
    const int high = ReadHex(text + 2, end);
    if (high < 0 || QChar::isLowSurrogate(static_cast<uint>(high)))
        return {};
    if (!QChar::isHighSurrogate(static_cast<uint>(high)))
        return {6, static_cast<uint>(high)};

    const bool pair = end - text >= 8 && text[6] == '\\' && text[7] == 'u';
    const int low = pair ? ReadHex(text + 8, end) : -1;
    if (low < 0 || !QChar::isLowSurrogate(static_cast<uint>(low)))
        return {};
    return {12, QChar::surrogateToUcs4(static_cast<ushort>(high), static_cast<ushort>(low))};
}

void AppendUtf8(QByteArray& bytes, uint code)
{
    if (code < 0x80) {
        bytes.append(static_cast<char>(code));
        return;
    }
    if (code < 0x800) {
        bytes.append(static_cast<char>(0xC0 | (code >> 6)));
    } else {
        if (code < 0x10000) {
            bytes.append(static_cast<char>(0xE0 | (code >> 12)));
        } else {
            bytes.append(static_cast<char>(0xF0 | (code >> 18)));
            bytes.append(static_cast<char>(0x80 | ((code >> 12) & 0x3F)));
        }
        bytes.append(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
    }
    bytes.append(static_cast<char>(0x80 | (code & 0x3F)));
}

bool IsPlain(char c)
{
    return c != '"' && c != '\\' && static_cast<unsigned char>(c) >= 0x20;
}

// Past everything that stands for itself; seen collects the bits of what was passed.
const char* SkipPlain(const char* at, const char* end, quint64& seen)
{
    constexpr quint64 ones = 0x0101010101010101;
    constexpr quint64 tops = 0x8080808080808080;
    // Eight characters at a time: a byte below n, and only such a byte or one above it, gets its top bit from
    // the subtraction of n.
    for (; end - at >= 8; at += 8) {
        quint64 eight;
        std::memcpy(&eight, at, sizeof eight);
        const quint64 quote = eight ^ (ones * '"');
        const quint64 backslash = eight ^ (ones * '\\');
        const quint64 special =
            ((eight - ones * 0x20) & ~eight) | ((quote - ones) & ~quote) | ((backslash - ones) & ~backslash);
        if (special & tops)
            break;
        seen |= eight;
    }
    for (; at < end && IsPlain(*at); ++at)
        seen |= static_cast<unsigned char>(*at);
    return at;
}
} // namespace

JsonString JsonString::Scan(const char* text, const char* textEnd)
{
    JsonString string;
    string.begin = text;
    quint64 seen = 0;
    const char* at = text;
    while ((at = SkipPlain(at, textEnd, seen)) < textEnd && *at != '"') {
        if (*at != '\\') {
            string.error = Error::ControlCharacter;
            return string;
        }
        const Escape escape = ReadEscape(at, textEnd);
        if (escape.length == 0) {
            string.error = Error::Escape;
            return string;
        }
        string.hasEscapes = true;
        at += escape.length;
    }
    const bool ascii = (seen & 0x8080808080808080) == 0;
    string.end = at;
    if (at == textEnd)
        string.error = Error::NoEnd;
    else if (!ascii && Utf8::GetValidLength(text, string.GetRawLength()) != string.GetRawLength())
        string.error = Error::Encoding;
    return string;
}

void JsonString::GetUtf8(QByteArray& bytes) const
{
    bytes.resize(0);
    const char* plain = begin;
    for (const char* at = begin; hasEscapes && at < end;) {
        if (*at != '\\') {
            ++at;
            continue;
        }
        bytes.append(plain, static_cast<int>(at - plain));
        const Escape escape = ReadEscape(at, end);
        AppendUtf8(bytes, escape.code);
        at += escape.length;
        plain = at;
    }
    bytes.append(plain, static_cast<int>(end - plain));
}

QString JsonString::ToString() const
{
    if (!hasEscapes)
        return Utf8::ToString(begin, GetRawLength());
    QByteArray utf8;
    utf8.reserve(GetRawLength());
    GetUtf8(utf8);
    return Utf8::ToString(utf8.constData(), utf8.size());
}
