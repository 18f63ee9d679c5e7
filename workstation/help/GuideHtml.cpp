// SPDX-License-Identifier: Apache-2.0

#include "GuideHtml.h"

#include <QRegularExpression>
#include <QStringList>

namespace
{
QString Inline(const QString& text)
{
    static const QRegularExpression code(QStringLiteral("`([^`]+)`"));
    static const QRegularExpression picture(QStringLiteral("!\\[([^\\]]*)\\]\\(([^)]+)\\)"));
    static const QRegularExpression link(QStringLiteral("\\[([^\\]]*)\\]\\(([^)]+)\\)"));
    // Before links: a list of Python's is no link.
    QString html = text.toHtmlEscaped();
    QStringList codes;
    for (auto match = code.match(html); match.hasMatch(); match = code.match(html)) {
        codes << match.captured(1);
        html.replace(match.capturedStart(), match.capturedLength(), QChar(QChar::ObjectReplacementCharacter));
    }
    html.replace(picture, QStringLiteral("<img src=\"\\2\" alt=\"\\1\">"));
    html.replace(link, QStringLiteral("<a href=\"\\2\">\\1</a>"));
    for (const QString& words : qAsConst(codes)) {
        html.replace(html.indexOf(QChar(QChar::ObjectReplacementCharacter)), 1,
                     QStringLiteral("<code>%1</code>").arg(words));
    }
    return html;
}

QString TableRow(const QString& line, bool isHead)
{
    const QString tag = isHead ? QStringLiteral("th") : QStringLiteral("td");
    QString row;
    for (const QString& cell : line.mid(1, line.size() - 2).split(QLatin1Char('|')))
        row += QStringLiteral("<%1 align=\"left\">%2</%1>").arg(tag, Inline(cell.trimmed()));
    return QStringLiteral("<tr>%1</tr>").arg(row);
}

// What a line is part of: a list, a table, or nothing that goes on.
QString BlockOf(const QString& line)
{
    static const QRegularExpression number(QStringLiteral("^\\d+\\. "));
    if (line.startsWith(QLatin1Char('|')))
        return QStringLiteral("table");
    if (line.startsWith(QLatin1String("- ")))
        return QStringLiteral("ul");
    return number.match(line).hasMatch() ? QStringLiteral("ol") : QString();
}

QString Opening(const QString& block)
{
    return block == QLatin1String("table")
               ? QStringLiteral("<table border=\"1\" cellspacing=\"0\" cellpadding=\"6\">")
               : QStringLiteral("<%1>").arg(block);
}

QString Line(const QString& line, const QString& block, bool isFirst)
{
    if (block == QLatin1String("table"))
        return line.startsWith(QLatin1String("|-")) ? QString() : TableRow(line, isFirst);
    if (!block.isEmpty()) {
        // The item's mark looks like its first letter, which is not to be that of a link.
        return QStringLiteral("<li>&#8203;%1</li>").arg(Inline(line.section(QLatin1Char(' '), 1)));
    }
    int level = 0;
    while (level < line.size() && line.at(level) == QLatin1Char('#'))
        ++level;
    const QString tag = level > 0 ? QStringLiteral("h%1").arg(level) : QStringLiteral("p");
    return QStringLiteral("<%1>%2</%1>").arg(tag, Inline(line.mid(level).trimmed()));
}
} // namespace

QString GuideHtml::Of(const QString& markdown)
{
    QString html;
    QString open;
    for (const QString& line : markdown.split(QLatin1Char('\n'))) {
        const QString block = BlockOf(line);
        const bool isFirst = block != open;
        if (isFirst) {
            html += open.isEmpty() ? QString() : QStringLiteral("</%1>").arg(open);
            html += block.isEmpty() ? QString() : Opening(block);
            open = block;
        }
        if (!line.trimmed().isEmpty())
            html += Line(line, block, isFirst);
    }
    return html + (open.isEmpty() ? QString() : QStringLiteral("</%1>").arg(open));
}
