// SPDX-License-Identifier: Apache-2.0

#include <WbFoundation/JsonReader.h>

#include <QtTest>

#include <limits>

// Which values a reader takes for which, and where it stands when it refuses one.
class JsonValuesTest : public QObject
{
    Q_OBJECT

private slots:
    void readsWholeNumbers_data();
    void readsWholeNumbers();
    void readsNumbers_data();
    void readsNumbers();
    void tellsWhatComesNext();
    void variantsKeepTheirTypes();
    void skipsWhatNobodyReads();
    void whatIsRequiredAndMissingIsAnError();
    void answersNothingAfterAnError();
};

void JsonValuesTest::readsWholeNumbers_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<bool>("isInt");
    QTest::addColumn<bool>("isWide");
    QTest::addColumn<qint64>("value");

    const auto row = [](const char* json, bool isInt, bool isWide, qint64 value) {
        QTest::newRow(json) << QByteArray(json) << isInt << isWide << value;
    };
    row("-7", true, true, -7);
    row("2147483647", true, true, std::numeric_limits<int>::max());
    row("2147483648", false, true, Q_INT64_C(2147483648));
    row("-2147483648", true, true, std::numeric_limits<int>::min());
    row("-2147483649", false, true, Q_INT64_C(-2147483649));
    row("3.0", true, true, 3);
    row("1.5E+3", true, true, 1500);
    row("-0.5", false, false, 0);
    row("\"-12\"", true, true, -12);
    row("\"9223372036854775807\"", false, true, std::numeric_limits<qint64>::max());
    row("\"9223372036854775808\"", false, false, 0);
    row("\"12a\"", false, false, 0);
    row("\"\"", false, false, 0);
    row("true", false, false, 0);
    row("null", false, false, 0);
}

void JsonValuesTest::readsWholeNumbers()
{
    QFETCH(QByteArray, json);
    QFETCH(bool, isInt);
    QFETCH(bool, isWide);
    QFETCH(qint64, value);
    JsonReader narrow(json);
    JsonReader wide(json);
    int number = 99;
    qint64 wideNumber = 98;

    QCOMPARE(narrow.ReadInt(number), isInt);
    QCOMPARE(wide.ReadInt64(wideNumber), isWide);

    QCOMPARE(qint64(number), isInt ? value : 99);
    QCOMPARE(wideNumber, isWide ? value : 98);
    QVERIFY(narrow.Finish()); // it went past the value
    QVERIFY(wide.Finish());
}

void JsonValuesTest::readsNumbers_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<double>("value"); // -1: refused
    const auto row = [](const char* json, double value) { QTest::newRow(json) << QByteArray(json) << value; };
    row("2", 2);
    row("-2.5e-1", -0.25);
    row("4e2", 400);
    row("\"1.25\"", 1.25);
    row("\"one\"", -1);
    row("false", -1);
    row("[1]", -1);
}

void JsonValuesTest::readsNumbers()
{
    QFETCH(QByteArray, json);
    QFETCH(double, value);
    JsonReader reader(json);
    double number = -1;

    QCOMPARE(reader.ReadDouble(number), value != -1);
    QCOMPARE(number, value);
    QVERIFY(reader.Finish());
}

void JsonValuesTest::tellsWhatComesNext()
{
    using Type = JsonReader::Type;
    const QByteArray json = R"([null,false,-1,"",[],{}])";
    JsonReader reader(json);
    QCOMPARE(reader.GetType(), Type::Array);
    QVERIFY(reader.EnterArray());

    for (const Type type : {Type::Null, Type::Bool, Type::Number, Type::String, Type::Array, Type::Object}) {
        QVERIFY(reader.NextElement());
        QCOMPARE(reader.GetType(), type);
    }
    QVERIFY(!reader.NextElement());
    QCOMPARE(reader.GetType(), Type::None);
}

void JsonValuesTest::variantsKeepTheirTypes()
{
    const QByteArray json = "{\"\xEF\xBB\xBF\":1,\"list\":[null,1.0,\"x\"]}";
    JsonReader reader(json);
    QVariant value;
    QVERIFY(reader.ReadVariant(value));

    const QVariantMap map = value.toMap();
    const QVariant whole = map.value(QString(QChar(QChar::ByteOrderMark)));
    QCOMPARE(whole.userType(), int(QMetaType::LongLong));
    const QVariantList list = map.value(QStringLiteral("list")).toList();
    QCOMPARE(list.size(), 3);
    QVERIFY(!list.at(0).isValid());
    QCOMPARE(list.at(1).userType(), int(QMetaType::Double));
    QCOMPARE(list.at(2).userType(), int(QMetaType::QString));
}

void JsonValuesTest::skipsWhatNobodyReads()
{
    const QByteArray json = R"({"a":{"x":[1,{"y":2}],"z":3},"b":[4,[5]],"c":6})";
    JsonReader reader(json);
    int last = 0;
    QByteArray keys;

    QVERIFY(reader.EnterObject());
    while (reader.NextMember()) {
        keys += reader.GetKey();
        if (reader.IsKey("a") && reader.EnterObject())
            while (reader.NextMember())
                keys += reader.GetKey();
        else if (reader.IsKey("c"))
            QVERIFY(reader.ReadInt(last));
    }

    QCOMPARE(keys, QByteArray("axzbc"));
    QCOMPARE(last, 6);
    QVERIFY(reader.Finish());
}

void JsonValuesTest::whatIsRequiredAndMissingIsAnError()
{
    const QByteArray noObject = "[]";
    JsonReader list(noObject);
    QVERIFY(!list.RequireObject(QStringLiteral("no object")));
    QVERIFY(list.HasError());
    QVERIFY(list.GetReason().contains(QStringLiteral("no object")));
    QVERIFY(!list.Finish());

    const QByteArray empty = "{}";
    JsonReader object(empty);
    QVERIFY(object.RequireObject(QStringLiteral("no object")));
    QVERIFY(!object.NextMember());
    QVERIFY(object.Finish());
    QVERIFY(object.GetReason().isEmpty());
}

void JsonValuesTest::answersNothingAfterAnError()
{
    const QByteArray json = R"({"a":1,"b":"two","c":[3]})";
    JsonReader reader(json);
    QVERIFY(reader.EnterObject());
    QVERIFY(reader.NextMember());

    reader.Fail(QStringLiteral("first"));
    reader.Fail(QStringLiteral("second"));

    int number = 9;
    QVariant value(8);
    QByteArray members("kept");
    QVERIFY(!reader.ReadInt(number));
    QVERIFY(!reader.ReadVariant(value));
    reader.KeepMember(members);
    QVERIFY(!reader.EnterArray());
    QVERIFY(!reader.NextMember());
    QVERIFY(!reader.Finish());
    QCOMPARE(number, 9);
    QCOMPARE(members, QByteArray("kept"));
    QVERIFY2(reader.GetReason().endsWith(QStringLiteral("first")), qUtf8Printable(reader.GetReason()));
}

QTEST_GUILESS_MAIN(JsonValuesTest)
#include "tst_jsonvalues.moc"
