// SPDX-License-Identifier: Apache-2.0

#include <WbFoundation/JsonGuard.h>

#include <QtTest>

// What is let through, to the byte, and where the first error is said to be.
class JsonGuardTest : public QObject
{
    Q_OBJECT

private slots:
    void tellsTheFirstErrorAndItsPlace_data();
    void tellsTheFirstErrorAndItsPlace();
    void countsWhatStandsInTheWholeText_data();
    void countsWhatStandsInTheWholeText();
    void knowsNamesByTheirObject_data();
    void knowsNamesByTheirObject();
    void takesTheEdgesOfUtf8_data();
    void takesTheEdgesOfUtf8();
};

void JsonGuardTest::tellsTheFirstErrorAndItsPlace_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("reason");
    QTest::newRow("at the start") << QByteArray("x") << QStringLiteral("第 1 字节：此处应为一个值");
    QTest::newRow("a missing comma") << QByteArray("[12 3]")
                                     << QStringLiteral("第 5 字节：此处应为逗号或结束括号");
    QTest::newRow("behind the end") << QByteArray("{} ,")
                                    << QStringLiteral("第 4 字节：数据之后还有多余内容");
    QTest::newRow("cut") << QByteArray("[1,") << QStringLiteral("第 4 字节：数据不完整");
    QTest::newRow("bytes, not characters")
        << QByteArray("[\"中\",?]") << QStringLiteral("第 8 字节：此处应为一个值");
    QTest::newRow("the first of two")
        << QByteArray("[01,02") << QStringLiteral("第 3 字节：此处应为逗号或结束括号");
}

void JsonGuardTest::tellsTheFirstErrorAndItsPlace()
{
    QFETCH(QByteArray, json);
    QString reason;

    QVERIFY(!JsonGuard::Check(json, &reason));

    QTEST(reason, "reason");
}

void JsonGuardTest::countsWhatStandsInTheWholeText_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<bool>("fits");
    QTest::newRow("members") << QByteArray(R"([{"a":1,"b":2},{"c":{}}])") << true;
    QTest::newRow("one member more") << QByteArray(R"([{"a":1,"b":2},{"c":{"d":4}}])") << false;
    QTest::newRow("elements") << QByteArray(R"({"a":[1,2],"b":[3,4]})") << true;
    QTest::newRow("one element more") << QByteArray(R"({"a":[1,2],"b":[3,[5]]})") << false;
    QTest::newRow("levels") << QByteArray("[[{}]]") << true;
    QTest::newRow("levels again after others") << QByteArray("[[[]],[{}]]") << true;
    QTest::newRow("one level more") << QByteArray("[[{\"a\":[]}]]") << false;
    QTest::newRow("a name") << QByteArray(R"({"中a":1})") << true;
    QTest::newRow("a longer name") << QByteArray(R"({"中ab":1})") << false;
    QTest::newRow("a text") << QByteArray(R"(["中\u4e2d"])") << true;
    QTest::newRow("a longer text") << QByteArray(R"(["中\u4e2da"])") << false;
    QTest::newRow("bytes") << QByteArray(30, ' ').replace(0, 1, "1") << true;
    QTest::newRow("one byte more") << QByteArray(31, ' ').replace(0, 1, "1") << false;
}

void JsonGuardTest::countsWhatStandsInTheWholeText()
{
    QFETCH(QByteArray, json);
    QFETCH(bool, fits);
    JsonLimits limits;
    limits.sizeBytes = 30;
    limits.depth = 3;
    limits.keyBytes = 4;
    limits.stringBytes = 6;
    limits.members = 3;
    limits.elements = 4;
    QString reason;

    QCOMPARE(JsonGuard::Check(json, &reason, limits), fits);

    QCOMPARE(reason.contains(QStringLiteral("超过")), !fits);
}

void JsonGuardTest::knowsNamesByTheirObject_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<bool>("isGood");
    QByteArray many; // more than are compared one by one
    for (int i = 0; i < 30; ++i)
        many += "\"k" + QByteArray::number(i) + "\":0,";
    QTest::newRow("again behind an object") << QByteArray(R"({"a":1,"b":{"c":1},"a":2})") << false;
    QTest::newRow("behind an object with that name") << QByteArray(R"({"b":{"c":1},"c":2})") << true;
    QTest::newRow("many inside, then that name")
        << QByteArray("{\"in\":{" + many + "\"z\":0},\"k5\":0}") << true;
    QTest::newRow("many around, then that name inside")
        << "{" + many + "\"in\":{\"k5\":0,\"k29\":0}}" << true;
    QTest::newRow("many around, again behind an object")
        << "{" + many + "\"in\":{\"a\":0},\"k29\":0}" << false;
    for (const int place : {22, 23, 24, 25}) {
        const QByteArray name = QByteArray::number(place);
        QTest::newRow("the " + name + "th of many") << "{" + many + "\"k" + name + "\":0}" << false;
    }
    QTest::newRow("the beginning of another") << QByteArray(R"({"ab":1,"a":2,"abc":3,"":4})") << true;
    QTest::newRow("no name, twice") << QByteArray(R"({"":1,"":2})") << false;
}

void JsonGuardTest::knowsNamesByTheirObject()
{
    QFETCH(QByteArray, json);
    QFETCH(bool, isGood);

    QCOMPARE(JsonGuard::Check(json), isGood);
}

void JsonGuardTest::takesTheEdgesOfUtf8_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isGood");
    const auto row = [](const QByteArray& bytes, bool isGood) {
        QTest::newRow(bytes.toHex().constData()) << bytes << isGood;
    };
    for (const char* good : {"\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
                             "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"})
        row(good, true);
    for (const char* bad :
         {"\xC1\xBF", "\xC2\x7F", "\xC2\xC0", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xEE\x80z", "\xF0\x8F\xBF\xBF",
          "\xF1\x80z\x80", "\xF1\x80\x80z", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xF1\x80\x80"})
        row(bad, false);
}

void JsonGuardTest::takesTheEdgesOfUtf8()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, isGood);

    // Before and behind plain text, which is looked at in larger pieces.
    for (const QByteArray& text : {bytes, "12345678" + bytes, bytes + "12345678", "123456" + bytes})
        QCOMPARE(JsonGuard::Check('"' + text + '"'), isGood);
}

QTEST_GUILESS_MAIN(JsonGuardTest)
#include "tst_jsonguard.moc"
