// SPDX-License-Identifier: Apache-2.0

#include "CsvText_p.h"

#include <QTextCodec>

namespace
{

QString Decode(QByteArray bytes)
{
    if (bytes.startsWith(CsvText::bom))
        bytes.remove(0, CsvText::bom.size());
    QTextCodec::ConverterState state;
    QString text = QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars == 0)
        return text;
    QTextCodec* national = QTextCodec::codecForName("GB18030");
    return national ? national->toUnicode(bytes) : text;
}

QChar Separator(const QString& text)
{
    const QString first = text.left(text.indexOf(QLatin1Char('\n')));
    QChar best = QLatin1Char(',');
    for (const QChar candidate : {QLatin1Char(';'), QLatin1Char('\t')})
        if (first.count(candidate) > first.count(best))
            best = candidate;
    return best;
}

QVector<QStringList> Split(const QString& text, QChar separator)
{
    QVector<QStringList> rows;
    QStringList row;
    QString cell;
    bool quoted = false;
    bool any = false;
    const auto endRow = [&] {
        row << cell;
        rows << row;
        row.clear();
        cell.clear();
        any = false;
    };
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (quoted && c == QLatin1Char('"') && i + 1 < text.size() && text.at(i + 1) == c) {
            cell += c;
            ++i;
        } else if (c == QLatin1Char('"') && (quoted || cell.isEmpty())) {
            quoted = !quoted;
            any = true;
        } else if (!quoted && c == separator) {
            row << cell;
            cell.clear();
            any = true;
        } else if (!quoted && c == QLatin1Char('\n')) {
            endRow();
        } else if (quoted || c != QLatin1Char('\r')) {
            cell += c;
            any = true;
        }
    }
    if (any)
        endRow();
    return rows;
}

QString Quoted(const QString& cell, QChar separator)
{
    const bool needed = cell.contains(separator) || cell.contains(QLatin1Char('"')) ||
                        cell.contains(QLatin1Char('\n')) || cell.contains(QLatin1Char('\r'));
    if (!needed)
        return cell;
    return QLatin1Char('"') + QString(cell).replace(QLatin1Char('"'), QStringLiteral("\"\"")) +
           QLatin1Char('"');
}

QString Harmless(const QString& cell)
{
    bool isNumber = false;
    cell.toDouble(&isNumber);
    const bool looksLikeFormula = !cell.isEmpty() && QStringLiteral("=+-@").contains(cell.at(0));
    return looksLikeFormula && !isNumber ? QLatin1Char('\'') + cell : cell;
}

} // namespace

const QByteArray CsvText::bom("\xEF\xBB\xBF");

QVector<QStringList> CsvText::Read(const QByteArray& bytes)
{
    const QString text = Decode(bytes);
    return Split(text, Separator(text));
}

QByteArray CsvText::Write(const QVector<QStringList>& rows)
{
    return bom + WriteLines(rows);
}

QByteArray CsvText::WriteLines(const QVector<QStringList>& rows)
{
    QString text;
    for (const QStringList& row : rows) {
        for (int i = 0; i < row.size(); ++i) {
            if (i > 0)
                text += QLatin1Char(',');
            text += Quoted(Harmless(row.at(i)), QLatin1Char(','));
        }
        text += QStringLiteral("\r\n");
    }
    return text.toUtf8();
}

QVector<QStringList> CsvText::ReadClipboard(const QString& text)
{
    return Split(text, QLatin1Char('\t'));
}

QString CsvText::WriteClipboard(const QVector<QStringList>& rows)
{
    QStringList lines;
    for (const QStringList& row : rows) {
        QStringList cells;
        for (const QString& cell : row)
            cells << Quoted(cell, QLatin1Char('\t'));
        lines << cells.join(QLatin1Char('\t'));
    }
    return lines.join(QLatin1Char('\n'));
}
