// SPDX-License-Identifier: Apache-2.0

#include "XlsxWriter_p.h"
#include "ZipWriter_p.h"

#include <QDate>
#include <QIODevice>
#include <QLocale>
#include <QRegularExpression>

namespace
{
constexpr int rowsAtMost = 1048576 - 1; // below the names
constexpr int columnsAtMost = 16384;
constexpr int charactersAtMost = 32767;
constexpr int rowsPerReport = 500;
constexpr int pixelsPerCharacter = 7;

const char* const declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";

const char* const contentTypes =
    "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
    "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
    "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
    "<Override PartName=\"/xl/workbook.xml\" "
    "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml\"/>"
    "<Override PartName=\"/xl/worksheets/sheet1.xml\" "
    "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml\"/>"
    "<Override PartName=\"/xl/styles.xml\" "
    "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml\"/></Types>";

const char* const packageRelations =
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
    "<Relationship Id=\"rId1\" "
    "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument\" "
    "Target=\"xl/workbook.xml\"/></Relationships>";

const char* const bookRelations =
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
    "<Relationship Id=\"rId1\" "
    "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet\" "
    "Target=\"worksheets/sheet1.xml\"/><Relationship Id=\"rId2\" "
    "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/styles\" "
    "Target=\"styles.xml\"/></Relationships>";

const char* const book =
    "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
    "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">"
    "<sheets><sheet name=\"\xE8\xA1\xA8\xE6\xA0\xBC\" sheetId=\"1\" r:id=\"rId1\"/></sheets></workbook>";

// Cell formats by their place: a plain one, a date, a heading.
const char* const styles =
    "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
    "<numFmts count=\"1\"><numFmt numFmtId=\"164\" formatCode=\"yyyy\\-mm\\-dd\"/></numFmts>"
    "<fonts count=\"2\"><font><sz val=\"11\"/></font><font><b/><sz val=\"11\"/></font></fonts>"
    "<fills count=\"2\"><fill><patternFill patternType=\"none\"/></fill>"
    "<fill><patternFill patternType=\"gray125\"/></fill></fills>"
    "<borders count=\"1\"><border><left/><right/><top/><bottom/><diagonal/></border></borders>"
    "<cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/></cellStyleXfs>"
    "<cellXfs count=\"3\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\"/>"
    "<xf numFmtId=\"164\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\" applyNumberFormat=\"1\"/>"
    "<xf numFmtId=\"0\" fontId=\"1\" fillId=\"0\" borderId=\"0\" xfId=\"0\" applyFont=\"1\"/></cellXfs>"
    "</styleSheet>";

const char* const sheetStart =
    "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
    "<sheetViews><sheetView workbookViewId=\"0\">"
    "<pane ySplit=\"1\" topLeftCell=\"A2\" activePane=\"bottomLeft\" "
    "state=\"frozen\"/></sheetView></sheetViews>";

QString TextCell(const QString& text, const QString& style)
{
    return QStringLiteral("<c t=\"inlineStr\"%1><is><t xml:space=\"preserve\">").arg(style) +
           XlsxWriter::Escaped(text) + QStringLiteral("</t></is></c>");
}

QString CellOf(const QVariant& value)
{
    switch (static_cast<QMetaType::Type>(value.userType())) {
    case QMetaType::Double:
        return QStringLiteral("<c><v>") +
               QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest) +
               QStringLiteral("</v></c>");
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("<c t=\"b\"><v>1</v></c>")
                              : QStringLiteral("<c t=\"b\"><v>0</v></c>");
    case QMetaType::QDate: {
        const qint64 days = QDate(1899, 12, 30).daysTo(value.toDate());
        // Days before March 1900 are counted in another way, and those before 1900 not at all.
        if (days > 60)
            return QStringLiteral("<c s=\"1\"><v>%1</v></c>").arg(days);
        return TextCell(value.toDate().toString(Qt::ISODate), QString());
    }
    default:
        return value.toString().isEmpty() ? QStringLiteral("<c/>") : TextCell(value.toString(), QString());
    }
}

QString WidthsOf(const QVector<RpaTableColumn>& columns)
{
    QString widths;
    for (int i = 0; i < columns.size(); ++i) {
        if (columns.at(i).width > 0)
            widths += QStringLiteral("<col min=\"%1\" max=\"%1\" width=\"%2\" customWidth=\"1\"/>")
                          .arg(i + 1)
                          .arg(qMin(250, columns.at(i).width / pixelsPerCharacter));
    }
    return widths.isEmpty() ? widths : QStringLiteral("<cols>%1</cols>").arg(widths);
}

QString ProblemOf(const RpaTableData::Content& table)
{
    if (table.rows.size() > rowsAtMost || table.columns.size() > columnsAtMost)
        return QStringLiteral("表格超过 Excel 的 1048576 行或 16384 列，请导出为 CSV 文件");
    for (int row = 0; row < table.rows.size(); ++row) {
        for (const QVariant& cell : table.rows.at(row)) {
            if (cell.userType() == QMetaType::QString && cell.toString().size() > charactersAtMost)
                return QStringLiteral("第 %1 行有超过 32767 个字的单元格，Excel 放不下，请导出为 CSV 文件")
                    .arg(row + 1);
        }
    }
    return {};
}

void WritePart(ZipWriter& zip, const char* name, const char* content)
{
    zip.Begin(name);
    zip.Write(QByteArray(declaration) + content);
}

bool WriteRows(ZipWriter& zip, const QVector<QVector<QVariant>>& rows, const TableFile::Progress& progress)
{
    QString text;
    for (int row = 0; row < rows.size(); ++row) {
        text += QStringLiteral("<row>");
        for (const QVariant& cell : rows.at(row))
            text += CellOf(cell);
        text += QStringLiteral("</row>");
        if (row % rowsPerReport != 0)
            continue;
        zip.Write(text.toUtf8());
        text.clear();
        if (!progress(int(qint64(row) * 1000 / rows.size())))
            return false;
    }
    zip.Write(text.toUtf8());
    return true;
}
} // namespace

QString XlsxWriter::Write(QIODevice& file, const RpaTableData::Content& table,
                          const TableFile::Progress& progress)
{
    QString problem = ProblemOf(table);
    if (!problem.isEmpty())
        return problem;
    ZipWriter zip(file);
    WritePart(zip, "[Content_Types].xml", contentTypes);
    WritePart(zip, "_rels/.rels", packageRelations);
    WritePart(zip, "xl/workbook.xml", book);
    WritePart(zip, "xl/_rels/workbook.xml.rels", bookRelations);
    WritePart(zip, "xl/styles.xml", styles);
    WritePart(zip, "xl/worksheets/sheet1.xml", sheetStart);
    QString names;
    for (const RpaTableColumn& column : table.columns)
        names += TextCell(column.name, QStringLiteral(" s=\"2\""));
    zip.Write(
        (WidthsOf(table.columns) + QStringLiteral("<sheetData><row>") + names + QStringLiteral("</row>"))
            .toUtf8());
    if (!WriteRows(zip, table.rows, progress))
        return {};
    zip.Write("</sheetData></worksheet>");
    return zip.Finish() ? QString() : QStringLiteral("无法写入文件：%1").arg(file.errorString());
}

QString XlsxWriter::Escaped(const QString& text)
{
    static const QRegularExpression lookAlike(QStringLiteral("_(?=x[0-9A-Fa-f]{4}_)"));
    QString plain = text;
    plain.replace(lookAlike, QStringLiteral("_x005F_"));
    QString escaped;
    escaped.reserve(plain.size());
    for (int i = 0; i < plain.size(); ++i) {
        const QChar c = plain.at(i);
        const bool isPair = c.isHighSurrogate() && i + 1 < plain.size() && plain.at(i + 1).isLowSurrogate();
        const bool isPlain = c == QLatin1Char('\t') || c == QLatin1Char('\n') ||
                             (c.unicode() >= 0x20 && c.unicode() < 0xfffe && !c.isSurrogate());
        if (isPair)
            escaped.append(plain.constData() + i++, 2);
        else if (c == QLatin1Char('&'))
            escaped += QStringLiteral("&amp;");
        else if (c == QLatin1Char('<'))
            escaped += QStringLiteral("&lt;");
        else if (c == QLatin1Char('>'))
            escaped += QStringLiteral("&gt;");
        else if (isPlain)
            escaped += c;
        else
            escaped += QStringLiteral("_x%1_").arg(c.unicode(), 4, 16, QLatin1Char('0'));
    }
    return escaped;
}
