// SPDX-License-Identifier: Apache-2.0

#include <RpaProcessData/RpaPlaces.h>

QString RpaPlaces::Fill(const QString& text, const std::function<QString(const QString&)>& valueOf)
{
    QString filled;
    int from = 0;
    for (int start = text.indexOf(QLatin1String("${")); start >= 0;
         start = text.indexOf(QLatin1String("${"), from)) {
        const int end = text.indexOf(QLatin1Char('}'), start);
        if (end < 0)
            break;
        filled += text.midRef(from, start - from);
        filled += valueOf(text.mid(start + 2, end - start - 2));
        from = end + 1;
    }
    return filled + text.midRef(from);
}
