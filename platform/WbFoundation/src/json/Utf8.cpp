// SPDX-License-Identifier: Apache-2.0

#include "Utf8_p.h"

#include <cstring>

namespace
{
struct Sequence
{
    int length;
    unsigned char secondMin;
    unsigned char secondMax;
};

// By the first byte, after the Unicode standard's table of well-formed sequences: no overlong forms, no
// surrogates, nothing above U+10FFFF. Length 0: not a first byte.
constexpr Sequence SequenceOf(unsigned char first)
{
    if (first < 0xC2)
        return {0, 0, 0};
    if (first < 0xE0)
        return {2, 0x80, 0xBF};
    if (first < 0xF0)
        return {3, first == 0xE0 ? uchar(0xA0) : uchar(0x80), first == 0xED ? uchar(0x9F) : uchar(0xBF)};
    if (first < 0xF5)
        return {4, first == 0xF0 ? uchar(0x90) : uchar(0x80), first == 0xF4 ? uchar(0x8F) : uchar(0xBF)};
    return {0, 0, 0};
}

bool IsAsciiBlock(const char* text)
{
    quint64 block;
    std::memcpy(&block, text, sizeof block);
    return (block & Q_UINT64_C(0x8080808080808080)) == 0;
}
} // namespace

int Utf8::GetValidLength(const char* text, int length)
{
    int i = 0;
    while (i < length) {
        if (i + 8 <= length && IsAsciiBlock(text + i)) {
            i += 8;
            continue;
        }
        const auto first = static_cast<unsigned char>(text[i]);
        if (first < 0x80) {
            ++i;
            continue;
        }
        const Sequence sequence = SequenceOf(first);
        if (sequence.length == 0 || i + sequence.length > length)
            return i;
        const auto second = static_cast<unsigned char>(text[i + 1]);
        if (second < sequence.secondMin || second > sequence.secondMax)
            return i;
        for (int k = 2; k < sequence.length; ++k)
            if ((static_cast<unsigned char>(text[i + k]) & 0xC0) != 0x80)
                return i;
        i += sequence.length;
    }
    return length;
}

QString Utf8::ToString(const char* text, int length)
{
    const bool marked = length >= 3 && std::memcmp(text, "\xEF\xBB\xBF", 3) == 0;
    QString string = QString::fromUtf8(text, length);
    if (marked)
        string.prepend(QChar(QChar::ByteOrderMark));
    return string;
}
