// SPDX-License-Identifier: Apache-2.0

#include "XlsxReader_p.h"
#include "XlsxSheet_p.h"
#include "ZipReader_p.h"

#include <QDate>
#include <QXmlStreamReader>

#include <cmath>

namespace
{
constexpr int rowsAtMost = 1048576;
constexpr int cellsAtMost = 5 * 1000 * 1000;
constexpr int textsAtMost = 5 * 1000 * 1000;
constexpr int partsPerReport = 1000;
constexpr double lastDay = 2958465; // 9999-12-31

// Whether all of the part came as it was packed.
bool Finish(const QXmlStreamReader& xml, ZipEntry& part)
{
    part.readAll();
    return !xml.hasError() && !part.IsBroken();
}

// Nobody who writes workbooks declares entities.
bool IsSound(const QXmlStreamReader& xml)
{
    return !xml.hasError() && xml.tokenType() != QXmlStreamReader::DTD;
}
} // namespace

bool XlsxSheet::ReadTexts(ZipEntry& part, const TableFile::Progress& progress)
{
    QXmlStreamReader xml(&part);
    QString text;
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        if (!IsSound(xml))
            return false;
        if (token == QXmlStreamReader::StartElement && xml.name() == QLatin1String("rPh")) {
            xml.skipCurrentElement(); // how it is pronounced
        } else if (token == QXmlStreamReader::StartElement && xml.name() == QLatin1String("t")) {
            text += xml.readElementText(QXmlStreamReader::SkipChildElements);
        } else if (token == QXmlStreamReader::EndElement && xml.name() == QLatin1String("si")) {
            texts << XlsxReader::Unescaped(text);
            text.clear();
            isTooLarge = texts.size() > textsAtMost;
            if (isTooLarge || (texts.size() % partsPerReport == 0 && !progress(part.GetPermille() / 3)))
                return false;
        }
    }
    return Finish(xml, part);
}

bool XlsxSheet::ReadRows(ZipEntry& part, const TableFile::Progress& progress)
{
    QXmlStreamReader xml(&part);
    QString inlineText;
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        if (!IsSound(xml) || isTooLarge)
            return false;
        const QStringRef name = xml.name();
        if (token == QXmlStreamReader::StartElement) {
            if (name == QLatin1String("row")) {
                if (!BeginRow(xml) ||
                    (rows.size() % partsPerReport == 0 && !progress(300 + part.GetPermille() * 6 / 10)))
                    return false;
            } else if (name == QLatin1String("c")) {
                if (!BeginCell(xml))
                    return false;
                inlineText.clear();
            } else if (name == QLatin1String("v")) {
                Put(ValueOf(xml.readElementText(QXmlStreamReader::SkipChildElements)));
            } else if (name == QLatin1String("rPh")) {
                xml.skipCurrentElement();
            } else if (name == QLatin1String("t")) {
                inlineText += xml.readElementText(QXmlStreamReader::SkipChildElements);
            }
        } else if (token == QXmlStreamReader::EndElement && name == QLatin1String("is")) {
            Put(XlsxReader::Unescaped(inlineText));
        }
    }
    return Finish(xml, part);
}

// Rows without cells may be left out in the file.
bool XlsxSheet::BeginRow(const QXmlStreamReader& xml)
{
    bool isNumbered = false;
    const int number = xml.attributes().value(QLatin1String("r")).toInt(&isNumbered);
    const int count = isNumbered ? number : rows.size() + 1;
    isTooLarge = count > rowsAtMost;
    if (isTooLarge || count <= rows.size())
        return false;
    rows.resize(count);
    cell.column = -1;
    return true;
}

bool XlsxSheet::BeginCell(const QXmlStreamReader& xml)
{
    const QXmlStreamAttributes attributes = xml.attributes();
    const QString reference = attributes.value(QLatin1String("r")).toString();
    const int column = reference.isEmpty() ? cell.column + 1 : XlsxReader::ColumnOf(reference);
    if (rows.isEmpty() || column <= cell.column || column >= 16384)
        return false;
    bool isStyled = false;
    const int style = attributes.value(QLatin1String("s")).toInt(&isStyled);
    cell = {column, attributes.value(QLatin1String("t")).toString(), isStyled ? style : -1};
    return true;
}

void XlsxSheet::Put(const QVariant& value)
{
    if (rows.isEmpty() || cell.column < 0 || !value.isValid() || isTooLarge)
        return;
    QVector<QVariant>& row = rows.last();
    cells += qMax(0, cell.column + 1 - row.size());
    isTooLarge = cells > cellsAtMost;
    if (isTooLarge)
        return;
    if (row.size() <= cell.column)
        row.resize(cell.column + 1);
    row[cell.column] = value;
}

QVariant XlsxSheet::ValueOf(const QString& text) const
{
    bool isNumber = false;
    if (cell.type == QLatin1String("s")) {
        const int place = text.toInt(&isNumber);
        return isNumber && place >= 0 && place < texts.size() ? QVariant(texts.at(place)) : QVariant();
    }
    if (cell.type == QLatin1String("b"))
        return text.trimmed() == QLatin1String("1") ? QStringLiteral("是") : QStringLiteral("否");
    if (!cell.type.isEmpty() && cell.type != QLatin1String("n"))
        return XlsxReader::Unescaped(text);
    const double number = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number))
        return text;
    return dateStyles.value(cell.style) ? MomentOf(number) : QVariant(number);
}

// Days since the end of 1899, with a February of 29 days in 1900 that nobody else knows.
QVariant XlsxSheet::MomentOf(double days) const
{
    constexpr qint64 secondsPerDay = 24 * 60 * 60;
    if (days < 0 || days > lastDay)
        return days;
    const QDate first = from1904 ? QDate(1904, 1, 1) : QDate(1899, 12, days < 60 ? 31 : 30);
    const qint64 seconds = std::llround(days * double(secondsPerDay));
    const QDate date = first.addDays(seconds / secondsPerDay);
    const QTime time = QTime(0, 0).addSecs(int(seconds % secondsPerDay));
    if (time == QTime(0, 0))
        return date;
    if (days < 1)
        return time.toString(Qt::ISODate);
    return QVariant(date.toString(Qt::ISODate) + QLatin1Char(' ') + time.toString(Qt::ISODate));
}

QVector<QVector<QVariant>> XlsxSheet::TakeRows()
{
    // Formats often reach further down than values.
    while (!rows.isEmpty() && rows.last().isEmpty())
        rows.removeLast();
    return std::move(rows);
}

bool XlsxSheet::IsBuiltInDate(int format)
{
    return (format >= 14 && format <= 22) || (format >= 27 && format <= 36) ||
           (format >= 45 && format <= 47) || (format >= 50 && format <= 58);
}
