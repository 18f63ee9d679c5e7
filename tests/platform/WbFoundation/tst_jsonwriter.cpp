// SPDX-License-Identifier: Apache-2.0

#include <WbFoundation/JsonGuard.h>
#include <WbFoundation/JsonWriter.h>

#include <QDate>
#include <QPointF>
#include <QUrl>
#include <QtTest>

#include <limits>

// What stands in the text; that readers give it back is tested with them.
class JsonWriterTest : public QObject
{
    Q_OBJECT

private slots:
    void writesValuesOfEveryType_data();
    void writesValuesOfEveryType();
    void writesNumbersThatAReaderMayTakeAsNumbers();
    void writesTextsAsShortAsTheyMayBe_data();
    void writesTextsAsShortAsTheyMayBe();
    void setsCommasBetweenAllThatStandsSideBySide();
    void putsKeptMembersWhereTheyBelong_data();
    void putsKeptMembersWhereTheyBelong();
    void beginsAnewAfterwards();
    void growsWithWhatIsWritten();
};

void JsonWriterTest::writesValuesOfEveryType_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QByteArray>("json");

    const auto row = [](const char* name, const QVariant& value, const QByteArray& json) {
        QTest::newRow(name) << value << json;
    };
    row("nothing", QVariant(), "null");
    row("false", false, "false");
    row("a whole number", -12, "-12");
    row("a short one", QVariant::fromValue(short(-3)), "-3");
    row("without sign", std::numeric_limits<uint>::max(), "4294967295");
    row("short without sign", QVariant::fromValue(ushort(65535)), "65535");
    row("half", 0.5, "0.5");
    row("half of a float", 0.5F, "0.5");
    row("a text", QStringLiteral("文\"本"), "\"文\\\"本\"");
    row("texts", QStringList{QStringLiteral("b"), QStringLiteral("a")}, R"(["b","a"])");
    row("a list in a list", QVariantList{1, QVariantList{true, QVariant()}, 2}, "[1,[true,null],2]");
    row("an object", QVariantMap{{QStringLiteral("b"), 1}, {QStringLiteral("a"), QVariantMap()}},
        R"({"a":{},"b":1})");
    row("an address", QUrl(QStringLiteral("http://h/p")), "\"http://h/p\"");
    row("a day", QDate(2026, 1, 31), "\"2026-01-31\"");
    row("what has no text", QPointF(1, 2), "null");
}

void JsonWriterTest::writesValuesOfEveryType()
{
    QFETCH(QVariant, value);
    JsonWriter writer;

    writer.Variant(value);

    QTEST(writer.Take(), "json");
}

void JsonWriterTest::writesNumbersThatAReaderMayTakeAsNumbers()
{
    constexpr qint64 largest = Q_INT64_C(9007199254740992);
    JsonWriter writer;
    writer.BeginArray();
    writer.Int64(largest);
    writer.Int64(largest + 1);
    writer.Int64(-largest);
    writer.Int64(-largest - 1);
    writer.UInt64(quint64(largest));
    writer.UInt64(quint64(largest) + 1);
    writer.Double(double(largest));
    writer.Double(-2.0 * double(largest));
    writer.Double(std::numeric_limits<double>::quiet_NaN());
    writer.Int(std::numeric_limits<int>::min());
    writer.EndArray();

    const QByteArray json = writer.Take();

    QCOMPARE(json, QByteArray(R"([9007199254740992,"9007199254740993",-9007199254740992,"-9007199254740993",)"
                              R"(9007199254740992,"9007199254740993",9007199254740992,"-18014398509481984",)"
                              R"("nan",-2147483648])"));
    QVERIFY(JsonGuard::Check(json));
}

void JsonWriterTest::writesTextsAsShortAsTheyMayBe_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("json");

    QTest::newRow("short escapes") << QStringLiteral("\"\\\b\f\n\r\t") << QByteArray(R"("\"\\\b\f\n\r\t")");
    QTest::newRow("other control characters")
        << QString(QChar(0x01)) + QChar(0x1F) + QChar(0x7F) << QByteArray("\"\\u0001\\u001f\x7f\"");
    QTest::newRow("a slash stays") << QStringLiteral("a/b") << QByteArray("\"a/b\"");
    QTest::newRow("plain behind an escape") << QStringLiteral("a\nb中c\n") << QByteArray("\"a\\nb中c\\n\"");
    QTest::newRow("half a character") << QString(QChar(0xD83D)) + QLatin1Char('x') << QByteArray("\"?x\"");
}

void JsonWriterTest::writesTextsAsShortAsTheyMayBe()
{
    QFETCH(QString, text);
    JsonWriter writer;

    writer.String(text);

    QTEST(writer.Take(), "json");
}

void JsonWriterTest::setsCommasBetweenAllThatStandsSideBySide()
{
    JsonWriter writer;
    writer.BeginArray();
    writer.BeginObject();
    writer.EndObject();
    writer.BeginObject();
    writer.Key("a");
    writer.BeginArray();
    writer.Utf8("u");
    writer.Raw("[0]");
    writer.Null();
    writer.EndArray();
    writer.Member("b", false);
    writer.Key(QStringLiteral("c"));
    writer.StringList({});
    writer.Member("d", 4);
    writer.EndObject();
    writer.Bool(true);
    writer.EndArray();

    QCOMPARE(writer.Take(), QByteArray(R"([{},{"a":["u",[0],null],"b":false,"c":[],"d":4},true])"));
}

void JsonWriterTest::putsKeptMembersWhereTheyBelong_data()
{
    QTest::addColumn<QByteArray>("kept");
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("none") << QByteArray() << QByteArray(R"({"in":{},"a":1,"z":2})");
    QTest::newRow("two") << QByteArray(R"("k":[],"l":0)")
                         << QByteArray(R"({"in":{"k":[],"l":0},"a":1,"k":[],"l":0,"z":2})");
}

void JsonWriterTest::putsKeptMembersWhereTheyBelong()
{
    QFETCH(QByteArray, kept);
    JsonWriter writer;
    writer.BeginObject();
    writer.Key("in");
    writer.BeginObject();
    writer.RawMembers(kept);
    writer.EndObject();
    writer.Member("a", 1);
    writer.RawMembers(kept);
    writer.Member("z", 2);
    writer.EndObject();

    QTEST(writer.Take(), "json");
}

void JsonWriterTest::beginsAnewAfterwards()
{
    JsonWriter writer;
    writer.String(QStringLiteral("first"));
    QCOMPARE(writer.Take(), QByteArray("\"first\""));

    writer.Int(2);

    QCOMPARE(writer.Take(), QByteArray("2"));
}

void JsonWriterTest::growsWithWhatIsWritten()
{
    JsonWriter writer;
    writer.BeginArray();
    QByteArray expected = "[";
    for (int i = 0; i < 3000; ++i) {
        writer.Int(i);
        writer.String(QString(i % 7, QLatin1Char('x')));
        expected += (i == 0 ? "" : ",") + QByteArray::number(i) + ",\"" + QByteArray(i % 7, 'x') + '"';
    }
    writer.EndArray();

    QCOMPARE(writer.Take(), expected + ']');
}

QTEST_GUILESS_MAIN(JsonWriterTest)
#include "tst_jsonwriter.moc"
