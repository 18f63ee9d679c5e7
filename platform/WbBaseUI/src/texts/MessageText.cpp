// SPDX-License-Identifier: Apache-2.0

#include "MessageText_p.h"

namespace
{
constexpr int longestWord = 40;
constexpr QChar ellipsisSign(0x2026);
constexpr QChar breakHere(0x200b);

// Chinese text may be broken anywhere; only letters, digits and signs of Latin text hang together.
bool HangsTogether(QChar c)
{
    return c.unicode() < 0x2000 && !c.isSpace();
}

int EndOfLines(const QString& text, int mostLines)
{
    int lines = 0;
    for (int position = 0; position < text.size(); ++position)
        if (text.at(position) == QLatin1Char('\n') && ++lines == mostLines)
            return position;
    return text.size();
}

QString BreakLongWords(const QString& text)
{
    QString result;
    int run = 0;
    for (const QChar c : text) {
        run = HangsTogether(c) ? run + 1 : 0;
        if (run > longestWord) {
            result += breakHere;
            run = 1;
        }
        result += c;
    }
    return result;
}
} // namespace

QString ShowableMessage(const QString& text, int longest, int mostLines)
{
    int end = qMin(longest, EndOfLines(text, mostLines));
    if (end >= text.size())
        return BreakLongWords(text);
    if (end > 0 && text.at(end - 1).isHighSurrogate())
        --end;
    return BreakLongWords(text.left(end)) + ellipsisSign;
}
