// SPDX-License-Identifier: Apache-2.0

#include "TextPlace_p.h"

TextPlace TextPlace::Of(const QString& text, int offset)
{
    const int end = qBound(0, offset, text.size());
    TextPlace place;
    for (int i = 0; i < end; ++i) {
        if (text.at(i) == QLatin1Char('\n')) {
            ++place.line;
            place.column = 0;
        } else if (!text.at(i).isLowSurrogate()) {
            ++place.column;
        }
    }
    return place;
}

int TextPlace::In(const QString& text) const
{
    int offset = 0;
    for (int at = 1; at < line; ++at) {
        const int end = text.indexOf(QLatin1Char('\n'), offset);
        if (end < 0)
            return text.size();
        offset = end + 1;
    }
    for (int at = 0; at < column && offset < text.size() && text.at(offset) != QLatin1Char('\n'); ++at)
        offset += text.at(offset).isHighSurrogate() && offset + 1 < text.size() ? 2 : 1;
    return offset;
}
