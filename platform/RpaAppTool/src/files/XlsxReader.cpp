// SPDX-License-Identifier: Apache-2.0

#include "XlsxReader_p.h"
#include "XlsxSheet_p.h"
#include "ZipReader_p.h"

#include <QRegularExpression>
#include <QXmlStreamReader>

namespace
{
constexpr qint64 partBytesAtMost = 256 * 1024 * 1024;
constexpr int columnsAtMost = 16384;

struct Relation
{
    QString type; // the last word of its address
    QString target;
};
using Relations = QMap<QString, Relation>;

QString Resolved(const QString& target, const QString& folder)
{
    return target.startsWith(QLatin1Char('/')) ? target.mid(1) : folder + target;
}

Relations RelationsIn(const ZipReader& zip, const QString& part, const QString& folder)
{
    Relations relations;
    const auto entry = zip.Open(part, partBytesAtMost);
    QXmlStreamReader xml(entry.get());
    while (entry && !xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != QLatin1String("Relationship"))
            continue;
        const QXmlStreamAttributes attributes = xml.attributes();
        relations.insert(attributes.value(QLatin1String("Id")).toString(),
                         {attributes.value(QLatin1String("Type")).toString().section(QLatin1Char('/'), -1),
                          Resolved(attributes.value(QLatin1String("Target")).toString(), folder)});
    }
    return relations;
}

QString TargetOf(const Relations& relations, const QString& type)
{
    for (const Relation& relation : relations)
        if (relation.type == type)
            return relation.target;
    return {};
}

struct Book
{
    QString firstSheet; // its relation
    QString firstName;
    int sheets = 0;
    bool from1904 = false;
};

Book BookIn(const ZipReader& zip, const QString& part)
{
    Book book;
    const auto entry = zip.Open(part, partBytesAtMost);
    QXmlStreamReader xml(entry.get());
    while (entry && !xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QXmlStreamAttributes attributes = xml.attributes();
        if (xml.name() == QLatin1String("workbookPr")) {
            const QStringRef epoch = attributes.value(QLatin1String("date1904"));
            book.from1904 = epoch == QLatin1String("1") || epoch == QLatin1String("true");
        } else if (xml.name() == QLatin1String("sheet") && ++book.sheets == 1) {
            book.firstName = attributes.value(QLatin1String("name")).toString();
            for (const QXmlStreamAttribute& attribute : attributes)
                if (attribute.name() == QLatin1String("id"))
                    book.firstSheet = attribute.value().toString();
        }
    }
    return book;
}

// Which of the cell formats show a date.
QVector<bool> DateStylesIn(const ZipReader& zip, const QString& part)
{
    QVector<bool> styles;
    QMap<int, QString> formats;
    bool isCellFormats = false;
    const auto entry = zip.Open(part, partBytesAtMost);
    QXmlStreamReader xml(entry.get());
    while (entry && !xml.atEnd()) {
        const auto token = xml.readNext();
        if (xml.name() == QLatin1String("cellXfs"))
            isCellFormats = token == QXmlStreamReader::StartElement;
        if (token != QXmlStreamReader::StartElement)
            continue;
        const int format = xml.attributes().value(QLatin1String("numFmtId")).toInt();
        if (xml.name() == QLatin1String("numFmt"))
            formats.insert(format, xml.attributes().value(QLatin1String("formatCode")).toString());
        else if (isCellFormats && xml.name() == QLatin1String("xf"))
            styles << (formats.contains(format) ? XlsxReader::IsDateFormat(formats.value(format))
                                                : XlsxSheet::IsBuiltInDate(format));
    }
    return styles;
}

TableFile::Content Problem(const QString& text)
{
    TableFile::Content content;
    content.problem = text;
    return content;
}

QString DamagedText()
{
    return QStringLiteral("文件已损坏或不是 Excel 工作簿，请在 Excel 中打开并另存后再试");
}
} // namespace

TableFile::Content XlsxReader::Read(QIODevice& file, const TableFile::Progress& progress)
{
    const ZipReader zip(file);
    // How a workbook with a password begins, and one of the former format.
    if (!zip.IsValid())
        return Problem(
            file.seek(0) && file.read(4) == QByteArrayLiteral("\xD0\xCF\x11\xE0")
                ? QStringLiteral("工作簿有密码或是旧的 xls 格式，请在 Excel 中另存为没有密码的 xlsx 文件")
                : DamagedText());
    const QString bookPart = TargetOf(RelationsIn(zip, QStringLiteral("_rels/.rels"), QString()),
                                      QStringLiteral("officeDocument"));
    const QString folder = bookPart.left(bookPart.lastIndexOf(QLatin1Char('/')) + 1);
    const Relations relations = RelationsIn(
        zip, folder + QStringLiteral("_rels/") + bookPart.mid(folder.size()) + QStringLiteral(".rels"),
        folder);
    const Book book = BookIn(zip, bookPart);
    const QString sheetPart = relations.value(book.firstSheet).target;
    if (!zip.Contains(sheetPart))
        return Problem(DamagedText());

    XlsxSheet sheet(DateStylesIn(zip, TargetOf(relations, QStringLiteral("styles"))), book.from1904);
    const QString texts = TargetOf(relations, QStringLiteral("sharedStrings"));
    const auto textEntry = zip.Open(texts, partBytesAtMost);
    const auto sheetEntry = zip.Open(sheetPart, partBytesAtMost);
    if (!sheetEntry || (zip.Contains(texts) && !textEntry))
        return Problem(QStringLiteral("工作簿太大，无法导入"));
    const bool isRead =
        (!textEntry || sheet.ReadTexts(*textEntry, progress)) && sheet.ReadRows(*sheetEntry, progress);
    if (!isRead)
        return Problem(sheet.IsTooLarge() ? QStringLiteral("工作表太大，最多导入 1048576 行、500 万个单元格")
                                          : DamagedText());
    return {sheet.TakeRows(), book.sheets > 1 ? book.firstName : QString(), {}};
}

int XlsxReader::ColumnOf(const QString& reference)
{
    int column = 0;
    int at = 0;
    for (; at < reference.size() && reference.at(at) >= QLatin1Char('A') &&
           reference.at(at) <= QLatin1Char('Z');
         ++at) {
        column = column * 26 + reference.at(at).unicode() - 'A' + 1;
        if (column > columnsAtMost)
            return -1;
    }
    return column - 1;
}

QString XlsxReader::Unescaped(const QString& text)
{
    if (!text.contains(QLatin1String("_x")))
        return text;
    static const QRegularExpression escape(QStringLiteral("_x([0-9A-Fa-f]{4})_"));
    QString plain;
    int from = 0;
    QRegularExpressionMatchIterator matches = escape.globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        plain += text.midRef(from, match.capturedStart() - from);
        plain += QChar(ushort(match.capturedRef(1).toUShort(nullptr, 16)));
        from = match.capturedEnd();
    }
    return plain + text.midRef(from);
}

bool XlsxReader::IsDateFormat(const QString& format)
{
    // Quoted and escaped characters, colours and conditions say nothing of the kind.
    static const QRegularExpression beside(
        QStringLiteral("\"[^\"]*\"|\\\\.|_.|\\*.|\\[(?!(h+|m+|s+)\\])[^\\]]*\\]"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression letters(QStringLiteral("[ymdhs]"),
                                            QRegularExpression::CaseInsensitiveOption);
    QString rest = format.section(QLatin1Char(';'), 0, 0).left(255);
    rest.remove(beside);
    return rest.compare(QLatin1String("general"), Qt::CaseInsensitive) != 0 && rest.contains(letters);
}
