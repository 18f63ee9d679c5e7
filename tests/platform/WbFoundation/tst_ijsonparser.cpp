// SPDX-License-Identifier: Apache-2.0

#include <WbFoundation/IJsonParser.h>

#include <QJsonDocument>
#include <QVariantMap>
#include <QtTest>

namespace
{
class Record : public IJsonParser
{
    Q_OBJECT
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(bool flag MEMBER flag)
    Q_PROPERTY(Colour colour MEMBER colour)
    Q_PROPERTY(int number MEMBER number)
    Q_PROPERTY(qint64 wide MEMBER wide)
    Q_PROPERTY(quint64 wider MEMBER wider)
    Q_PROPERTY(double real MEMBER real)
    Q_PROPERTY(QByteArray bytes MEMBER bytes)
    Q_PROPERTY(QStringList list MEMBER list)
    Q_PROPERTY(QVariantMap map MEMBER map)
    Q_PROPERTY(QVariantList variants MEMBER variants)
    Q_PROPERTY(QString passing MEMBER passing STORED false)

public:
    enum Colour
    {
        Red,
        Green
    };
    Q_ENUM(Colour)

    explicit Record(QObject* parent = nullptr) : IJsonParser(parent) {}

    QString text;
    bool flag = false;
    Colour colour = Red;
    int number = 0;
    qint64 wide = 0;
    quint64 wider = 0;
    double real = 0;
    QByteArray bytes;
    QStringList list;
    QVariantMap map;
    QVariantList variants;
    QString passing;
};

void Fill(Record& record)
{
    record.text = QStringLiteral("名称 \"a\"");
    record.flag = true;
    record.colour = Record::Green;
    record.number = -7;
    record.wide = std::numeric_limits<qint64>::min();
    record.wider = std::numeric_limits<quint64>::max();
    record.real = 0.1;
    record.bytes = QByteArray("\xFF\x00\x01", 3);
    record.list = QStringList{QStringLiteral("一"), QString()};
    record.map = {{QStringLiteral("k"), QVariantList{1, QStringLiteral("v")}}};
    record.variants = {true, QVariantMap{}};
    record.passing = QStringLiteral("not written");
}
} // namespace

class IJsonParserTest : public QObject
{
    Q_OBJECT

private slots:
    void writesPropertiesInTheOrderOfTheirDeclaration();
    void readsBackWhatItWrote();
    void givesTheSameBytesBack_data();
    void givesTheSameBytesBack();
    void leavesAbsentMembersAlone();
    void passesOverMembersOfAWrongType();
    void changesNothingWhenTheTextIsBad_data();
    void changesNothingWhenTheTextIsBad();
    void copiesValues();
    void copiesOntoItself();
};

void IJsonParserTest::writesPropertiesInTheOrderOfTheirDeclaration()
{
    Record record;

    QCOMPARE(record.ToJson(),
             QByteArray(
                 "{\"text\":\"\",\"flag\":false,\"colour\":0,\"number\":0,\"wide\":0,\"wider\":0,\"real\":0,"
                 "\"bytes\":\"\",\"list\":[],\"map\":{},\"variants\":[]}"));
}

void IJsonParserTest::readsBackWhatItWrote()
{
    Record record;
    Fill(record);
    const QByteArray json = record.ToJson();

    Record back;
    QVERIFY(back.Parse(json));

    QCOMPARE(back.ToJson(), json);
    QCOMPARE(back.wide, record.wide);
    QCOMPARE(back.wider, record.wider);
    QCOMPARE(back.bytes, record.bytes);
    QCOMPARE(back.colour, Record::Green);
    QCOMPARE(back.map, record.map);
    QVERIFY(back.passing.isEmpty());
    QVERIFY(!QJsonDocument::fromJson(json).isNull());
}

void IJsonParserTest::givesTheSameBytesBack_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QByteArray every;
    for (int i = 0; i < 256; ++i)
        every.append(static_cast<char>(i));
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("json text") << QByteArray("{\"名\":\"值\\n\"}");
    QTest::newRow("every byte") << every;
    QTest::newRow("zero byte in text") << QByteArray("a\0b", 3);
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF{}");
    QTest::newRow("cut sequence") << QByteArray("ab\xE4\xB8");
    QTest::newRow("text that looks encoded") << QByteArray("data:;base64,QUJD");
    QTest::newRow("text that looks badly encoded") << QByteArray("data:;base64,***");
}

void IJsonParserTest::givesTheSameBytesBack()
{
    QFETCH(QByteArray, bytes);
    Record record;
    record.bytes = bytes;

    Record back;
    // A text passes through QString on its way through a file or a server.
    QVERIFY(back.Parse(QString::fromUtf8(record.ToJson()).toUtf8()));

    QCOMPARE(back.bytes, bytes);
}

void IJsonParserTest::leavesAbsentMembersAlone()
{
    Record record;
    Fill(record);

    QVERIFY(record.Parse(R"({"number":1,"unknown":[{"x":1}]})"));

    QCOMPARE(record.number, 1);
    QCOMPARE(record.text, QStringLiteral("名称 \"a\""));
}

void IJsonParserTest::passesOverMembersOfAWrongType()
{
    Record record;
    Fill(record);
    const QByteArray before = record.ToJson();

    QVERIFY(record.Parse(R"({"text":1,"flag":"true","number":"x","real":[],"bytes":{},"list":"a","map":[],)"
                         R"("variants":{},"wide":null,"wider":-1})"));

    QCOMPARE(record.ToJson(), before);
}

void IJsonParserTest::changesNothingWhenTheTextIsBad_data()
{
    QTest::addColumn<QByteArray>("json");

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("array") << QByteArray("[]");
    QTest::newRow("string") << QByteArray("\"a\"");
    QTest::newRow("cut behind good members") << QByteArray(R"({"text":"new","map":{"age":5},"variants":[)");
    QTest::newRow("good and more") << QByteArray(R"({"text":"new"} x)");
    QTest::newRow("name twice") << QByteArray(R"({"text":"new","text":"newer"})");
    QTest::newRow("too deep") << "{\"text\":\"new\",\"x\":" + QByteArray(100, '[') + QByteArray(100, ']') +
                                     "}";
}

void IJsonParserTest::changesNothingWhenTheTextIsBad()
{
    QFETCH(QByteArray, json);
    Record record;
    Fill(record);
    const QByteArray before = record.ToJson();

    QVERIFY(!record.Parse(json));

    QCOMPARE(record.ToJson(), before);
}

void IJsonParserTest::copiesValues()
{
    Record source;
    Fill(source);
    Record target;

    static_cast<IJsonParser&>(target) = source;
    source.text = QStringLiteral("changed");

    QCOMPARE(target.text, QStringLiteral("名称 \"a\""));
    QCOMPARE(target.wide, source.wide);
    QCOMPARE(target.map, source.map);
    QVERIFY(target.passing.isEmpty());
}

void IJsonParserTest::copiesOntoItself()
{
    Record record;
    Fill(record);
    const QByteArray before = record.ToJson();
    IJsonParser& same = record;

    same = record;

    QCOMPARE(record.ToJson(), before);
}

QTEST_GUILESS_MAIN(IJsonParserTest)
#include "tst_ijsonparser.moc"
