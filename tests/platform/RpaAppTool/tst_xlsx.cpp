// SPDX-License-Identifier: Apache-2.0

#include "XlsxReader_p.h"
#include "XlsxWriter_p.h"
#include "ZipReader_p.h"
#include "ZipWriter_p.h"

#include <QBuffer>
#include <QDate>
#include <QTest>

namespace
{
using Rows = QVector<QVector<QVariant>>;

const TableFile::Progress noStop = [](int) { return true; };

struct Parts
{
    QByteArray sheet = "<worksheet><sheetData/></worksheet>";
    QByteArray texts = "<sst/>";
    QByteArray styles = "<styleSheet/>";
    QByteArray book = "<workbook><sheets><sheet name='甲' r:id='r1' xmlns:r='R'/></sheets></workbook>";
};

QByteArray Relation(const char* id, const char* type, const char* target)
{
    return QByteArrayLiteral("<Relationship Id='") + id + "' Type='http://x/y/" + type + "' Target='" +
           target + "'/>";
}

// As another program would have written it.
QByteArray Workbook(const Parts& parts)
{
    QBuffer file;
    file.open(QIODevice::ReadWrite);
    ZipWriter zip(file);
    const auto add = [&zip](const char* name, const QByteArray& content) {
        zip.Begin(name);
        zip.Write(content);
    };
    add("_rels/.rels",
        "<Relationships>" + Relation("a", "officeDocument", "/book/main.xml") + "</Relationships>");
    add("book/main.xml", parts.book);
    add("book/_rels/main.xml.rels", "<Relationships>" + Relation("r1", "worksheet", "sheets/one.xml") +
                                        Relation("r2", "styles", "/book/styles.xml") +
                                        Relation("r3", "sharedStrings", "texts.xml") + "</Relationships>");
    add("book/sheets/one.xml", parts.sheet);
    add("book/styles.xml", parts.styles);
    add("book/texts.xml", parts.texts);
    return zip.Finish() ? file.data() : QByteArray();
}

QByteArray SheetOf(const QByteArray& rows)
{
    return "<worksheet><sheetData>" + rows + "</sheetData></worksheet>";
}

TableFile::Content ReadBytes(QByteArray bytes, const TableFile::Progress& progress = noStop)
{
    QBuffer file(&bytes);
    file.open(QIODevice::ReadOnly);
    return XlsxReader::Read(file, progress);
}

RpaTableData::Content SomeTable(const Rows& rows, int columns)
{
    RpaTableData::Content table;
    for (int i = 0; i < columns; ++i) {
        table.columns << RpaTableColumn();
        table.columns.last().name = QStringLiteral("列%1").arg(i + 1);
    }
    table.rows = rows;
    return table;
}

QByteArray Written(const RpaTableData::Content& table)
{
    QBuffer file;
    file.open(QIODevice::ReadWrite);
    return XlsxWriter::Write(file, table, noStop).isEmpty() ? file.data() : QByteArray();
}
} // namespace

class Xlsx : public QObject
{
    Q_OBJECT

private slots:
    void whatIsWrittenIsReadAgain();
    void sharedTextsAreJoinedFromTheirRuns();
    void valuesHaveTheKindsThatTheirFormatsShow();
    void daysMayBeCountedFrom1904();
    void rowsAndCellsLeftOutAreEmpty();
    void theFirstOfSeveralSheetsIsNamed();
    void formatsOfDatesAreKnown_data();
    void formatsOfDatesAreKnown();
    void columnsAreCounted();
    void whatIsNoGoodWorkbookIsRefused_data();
    void whatIsNoGoodWorkbookIsRefused();
    void aCutFileIsRefusedWhereverItIsCut();
    void anEntryGivesNoMoreThanItAnnounces();
    void aTextThatExcelCannotHoldIsRefused();
    void readingAndWritingCanBeEnded();
};

void Xlsx::whatIsWrittenIsReadAgain()
{
    const Rows rows{{QStringLiteral(" 王 & <b>\n\"😀\" "), 0.1, QDate(2024, 2, 29), true},
                    {QStringLiteral("_x0041_ \x07\r"), -1e300, QDate(1899, 5, 6), false},
                    {QVariant(), 12345678901.0, QDate(1900, 3, 1)},
                    {QStringLiteral("=1+1")}};

    const TableFile::Content content = ReadBytes(Written(SomeTable(rows, 4)));

    QCOMPARE(content.problem, QString());
    QCOMPARE(content.rows.size(), 5);
    QCOMPARE(content.rows.at(0).at(3), QVariant(QStringLiteral("列4")));
    QCOMPARE(content.rows.at(1),
             (QVector<QVariant>{rows[0][0], rows[0][1], rows[0][2], QStringLiteral("是")}));
    QCOMPARE(content.rows.at(2),
             (QVector<QVariant>{rows[1][0], rows[1][1], QStringLiteral("1899-05-06"), QStringLiteral("否")}));
    QVERIFY(!content.rows.at(3).at(0).isValid());
    QCOMPARE(content.rows.at(3).mid(1), rows.at(2).mid(1));
    QCOMPARE(content.rows.at(4), rows.at(3));
}

void Xlsx::sharedTextsAreJoinedFromTheirRuns()
{
    Parts parts;
    parts.texts = "<sst><si><t>王</t><rPh><t>wang</t></rPh></si>"
                  "<si><r><t xml:space='preserve'>one </t></r><r><t>two_x000A_</t></r></si></sst>";
    parts.sheet = SheetOf("<row><c t='s'><v>1</v></c><c t='s'><v>0</v></c><c t='s'><v>2</v></c></row>");

    QCOMPARE(ReadBytes(Workbook(parts)).rows, (Rows{{QStringLiteral("one two\n"), QStringLiteral("王")}}));
}

void Xlsx::valuesHaveTheKindsThatTheirFormatsShow()
{
    Parts parts;
    parts.styles =
        "<styleSheet><numFmts><numFmt numFmtId='170' formatCode='yyyy&quot;年&quot;m'/></numFmts>"
        "<cellStyleXfs><xf numFmtId='14'/></cellStyleXfs>"
        "<cellXfs><xf numFmtId='0'/><xf numFmtId='14'/><xf numFmtId='170'/></cellXfs></styleSheet>";
    parts.sheet =
        SheetOf("<row><c s='0'><v>45351</v></c><c s='1'><v>45351</v></c><c s='2'><v>45351.75</v></c>"
                "<c s='1'><v>0.5</v></c><c s='1'><v>59</v></c><c s='1'><v>61</v></c></row>"
                "<row><c t='str'><f>A1</f><v>text</v></c><c t='e'><v>#N/A</v></c><c t='b'><v>1</v></c>"
                "<c s='1'><v>-5</v></c><c s='9'><v>7</v></c></row>");

    const Rows rows = ReadBytes(Workbook(parts)).rows;

    QCOMPARE(rows.value(0),
             (QVector<QVariant>{45351.0, QDate(2024, 2, 29), QStringLiteral("2024-02-29 18:00:00"),
                                QStringLiteral("12:00:00"), QDate(1900, 2, 28), QDate(1900, 3, 1)}));
    QCOMPARE(rows.value(1), (QVector<QVariant>{QStringLiteral("text"), QStringLiteral("#N/A"),
                                               QStringLiteral("是"), -5.0, 7.0}));
}

void Xlsx::daysMayBeCountedFrom1904()
{
    Parts parts;
    parts.book.replace("<sheets>", "<workbookPr date1904='1'/><sheets>");
    parts.styles = "<styleSheet><cellXfs><xf numFmtId='14'/></cellXfs></styleSheet>";
    parts.sheet = SheetOf("<row><c s='0'><v>2</v></c></row>");

    QCOMPARE(ReadBytes(Workbook(parts)).rows, (Rows{{QDate(1904, 1, 3)}}));
}

void Xlsx::rowsAndCellsLeftOutAreEmpty()
{
    Parts parts;
    parts.sheet =
        SheetOf("<row r='2'><c r='C2'><v>3</v></c></row><row r='4'/><row r='9'><c r='A9' s='0'/></row>");

    QCOMPARE(ReadBytes(Workbook(parts)).rows, (Rows{{}, {QVariant(), QVariant(), 3.0}}));
}

void Xlsx::theFirstOfSeveralSheetsIsNamed()
{
    Parts parts;
    QCOMPARE(ReadBytes(Workbook(parts)).sheet, QString());
    parts.book.replace("</sheets>", "<sheet name='乙' r:id='r9' xmlns:r='R'/></sheets>");

    QCOMPARE(ReadBytes(Workbook(parts)).sheet, QStringLiteral("甲"));
}

void Xlsx::formatsOfDatesAreKnown_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<bool>("isDate");
    QTest::newRow("date") << QStringLiteral("yyyy\\-mm\\-dd") << true;
    QTest::newRow("Chinese date") << QStringLiteral("[$-804]yyyy\"年\"m\"月\"") << true;
    QTest::newRow("hours") << QStringLiteral("[h]:mm") << true;
    QTest::newRow("money") << QStringLiteral("#,##0.00\" dm\";[Red]-#,##0.00") << false;
    QTest::newRow("escaped letter") << QStringLiteral("0\\d") << false;
    QTest::newRow("general") << QStringLiteral("General") << false;
}

void Xlsx::formatsOfDatesAreKnown()
{
    QFETCH(QString, format);
    QFETCH(bool, isDate);
    QCOMPARE(XlsxReader::IsDateFormat(format), isDate);
}

void Xlsx::columnsAreCounted()
{
    QCOMPARE(XlsxReader::ColumnOf(QStringLiteral("A1")), 0);
    QCOMPARE(XlsxReader::ColumnOf(QStringLiteral("AB12")), 27);
    QCOMPARE(XlsxReader::ColumnOf(QStringLiteral("XFD1")), 16383);
    QCOMPARE(XlsxReader::ColumnOf(QStringLiteral("XFE1")), -1);
    QCOMPARE(XlsxReader::ColumnOf(QStringLiteral("ZZZZZZZZZZZZZZZ1")), -1);
    QCOMPARE(XlsxReader::ColumnOf(QStringLiteral("1A")), -1);
}

void Xlsx::whatIsNoGoodWorkbookIsRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("words");
    const auto row = [](const char* name, const QByteArray& bytes, const char* words) {
        QTest::newRow(name) << bytes << QString::fromUtf8(words);
    };
    const auto sheet = [](const QByteArray& rows) {
        Parts parts;
        parts.sheet = SheetOf(rows);
        return Workbook(parts);
    };
    Parts entities;
    entities.sheet = "<!DOCTYPE x [<!ENTITY a 'aaaa'>]><worksheet><sheetData/></worksheet>";
    Parts noSheet;
    noSheet.book = "<workbook/>";
    row("nothing", QByteArray(), "已损坏");
    row("text", "name,amount\n", "已损坏");
    row("password", QByteArray("\xD0\xCF\x11\xE0", 4) + QByteArray(600, 'x'), "密码");
    row("no sheet", Workbook(noSheet), "已损坏");
    row("entities", Workbook(entities), "已损坏");
    row("no XML", sheet("<row>"), "已损坏");
    row("rows backwards", sheet("<row r='5'/><row r='5'/>"), "已损坏");
    row("cells backwards", sheet("<row><c r='B1'><v>1</v></c><c r='A1'><v>1</v></c></row>"), "已损坏");
    row("cell without row", sheet("<c><v>1</v></c>"), "已损坏");
    row("too many rows", sheet("<row r='1048577'/>"), "太大");
    QByteArray wide;
    for (int i = 1; i <= 310; ++i)
        wide += "<row><c r='XFD" + QByteArray::number(i) + "'><v>1</v></c></row>";
    row("too many cells", sheet(wide), "太大");
}

void Xlsx::whatIsNoGoodWorkbookIsRefused()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, words);

    const TableFile::Content content = ReadBytes(bytes);

    QVERIFY2(content.problem.contains(words), qPrintable(content.problem));
    QVERIFY(content.rows.isEmpty());
}

void Xlsx::aCutFileIsRefusedWhereverItIsCut()
{
    const QByteArray whole = Written(SomeTable({{QStringLiteral("王"), 1.0}}, 2));
    QVERIFY(ReadBytes(whole).problem.isEmpty());

    for (int length = 0; length < whole.size(); length += 7)
        QVERIFY2(!ReadBytes(whole.left(length)).problem.isEmpty(), qPrintable(QString::number(length)));
    // A changed byte gives a refusal or the same rows, never other ones.
    for (int place = 0; place < whole.size(); ++place) {
        QByteArray changed = whole;
        changed[place] = char(changed.at(place) ^ 0x55);
        const TableFile::Content content = ReadBytes(changed);
        QVERIFY2(!content.problem.isEmpty() || content.rows.size() == 2, qPrintable(QString::number(place)));
    }
}

void Xlsx::anEntryGivesNoMoreThanItAnnounces()
{
    QBuffer file;
    file.open(QIODevice::ReadWrite);
    ZipWriter zip(file);
    zip.Begin("a");
    zip.Write(QByteArray(1000000, 'x'));
    QVERIFY(zip.Finish());
    QByteArray bytes = file.data();
    const int directory = bytes.indexOf("PK\x01\x02");
    bytes.replace(directory + 24, 4, QByteArray("\x10\0\0\0", 4));
    QBuffer lying(&bytes);
    lying.open(QIODevice::ReadOnly);

    const auto entry = ZipReader(lying).Open(QStringLiteral("a"), 1000);

    QVERIFY(entry);
    QVERIFY(entry->readAll().size() <= 17);
    QVERIFY(entry->IsBroken());
    QVERIFY(!ZipReader(file).Open(QStringLiteral("a"), 999999));
    QCOMPARE(ZipReader(file).Open(QStringLiteral("a"), 1000000)->readAll().size(), 1000000);
}

void Xlsx::aTextThatExcelCannotHoldIsRefused()
{
    QBuffer file;
    file.open(QIODevice::ReadWrite);
    const QString most(32767, QLatin1Char('x'));
    const QString problem =
        XlsxWriter::Write(file, SomeTable({{most}, {most + QLatin1Char('y')}}, 1), noStop);

    QVERIFY2(problem.startsWith(QStringLiteral("第 2 行")), qPrintable(problem));
    QCOMPARE(ReadBytes(Written(SomeTable({{most}}, 1))).rows.value(1).value(0).toString(), most);
}

void Xlsx::readingAndWritingCanBeEnded()
{
    const RpaTableData::Content table = SomeTable(Rows(5000, {QStringLiteral("王"), 2.0}), 2);
    const QByteArray bytes = Written(table);
    int asked = 0;
    int last = 0;
    const TableFile::Progress second = [&](int permille) {
        last = permille;
        return ++asked < 2;
    };

    ReadBytes(bytes, second);
    QCOMPARE(asked, 2);
    QVERIFY(last > 0 && last < 1000);

    asked = 0;
    QBuffer file;
    file.open(QIODevice::ReadWrite);
    XlsxWriter::Write(file, table, second);
    QCOMPARE(asked, 2);
    QVERIFY(file.size() < bytes.size());
}

QTEST_GUILESS_MAIN(Xlsx)

#include "tst_xlsx.moc"
