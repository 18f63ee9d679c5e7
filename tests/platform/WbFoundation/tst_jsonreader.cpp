// SPDX-License-Identifier: Apache-2.0

#include <WbFoundation/JsonGuard.h>
#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

#include <QJsonDocument>
#include <QtTest>

#include <limits>

class JsonReaderTest : public QObject
{
    Q_OBJECT

private slots:
    void acceptsGoodJson_data();
    void acceptsGoodJson();
    void refusesBadJson_data();
    void refusesBadJson();
    void refusesWhatIsTooLarge_data();
    void refusesWhatIsTooLarge();
    void acceptsExactlyTheLimits();
    void refusesEveryCutOfAGoodText();
    void seesWhatIsSpecialAtEveryPlaceOfAString();
    void readsMembersInAnyOrderAndSkipsTheRest();
    void leavesAResultAloneWhenTheTypeIsWrong();
    void readsWhatTheWriterWrote();
    void givesEveryStringBack_data();
    void givesEveryStringBack();
    void givesEveryNumberBack_data();
    void givesEveryNumberBack();
    void keepsUnknownMembers();
    void findsDuplicatesInLargeObjects();
    void agreesWithQtOnVariants();
};

void JsonReaderTest::acceptsGoodJson_data()
{
    QTest::addColumn<QByteArray>("json");

    QTest::newRow("empty object") << QByteArray("{}");
    QTest::newRow("empty array") << QByteArray(" [ ] ");
    QTest::newRow("a string alone") << QByteArray("\"a\"");
    QTest::newRow("literals") << QByteArray("[true,false,null]");
    QTest::newRow("numbers") << QByteArray("[0,-0,1.5,-2e3,1E-5,9007199254740992,-9007199254740992]");
    QTest::newRow("a number too small to matter") << QByteArray("1e-999");
    QTest::newRow("escapes") << QByteArray(R"(["\"\\\/\b\f\n\r\t\u00e9\ud83d\ude00\u0000"])");
    QTest::newRow("blanks everywhere") << QByteArray(" { \"a\" : [ 1 , 2 ] ,\r\n\t\"b\" : { } } ");
    QTest::newRow("chinese") << QByteArray("{\"名称\":\"主流程\"}");
    QTest::newRow("same name in different objects") << QByteArray(R"({"a":{"a":1},"b":{"a":2}})");
    QTest::newRow("same name after a nested object") << QByteArray(R"([{"a":1},{"a":2}])");
}

void JsonReaderTest::acceptsGoodJson()
{
    QFETCH(QByteArray, json);

    QString reason;

    QVERIFY2(JsonGuard::Check(json, &reason), qUtf8Printable(reason));
}

void JsonReaderTest::refusesBadJson_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("reason");

    const auto row = [](const char* name, const QByteArray& json, const QString& reason) {
        QTest::newRow(name) << json << reason;
    };
    const QString cut = QStringLiteral("数据不完整");
    const QString noValue = QStringLiteral("此处应为一个值");
    const QString encoding = QStringLiteral("UTF-8");
    row("nothing", "", cut);
    row("blanks only", " \n", cut);
    row("open object", "{", cut);
    row("open array", "[1,", cut);
    row("no value", R"({"a":})", noValue);
    row("comma at the end of an object", R"({"a":1,})", QStringLiteral("成员名称"));
    row("comma at the end of an array", "[1,]", noValue);
    row("comma first", "[,1]", noValue);
    row("no comma", "[1 2]", QStringLiteral("逗号"));
    row("wrong bracket", "[1}", QStringLiteral("逗号"));
    row("no colon", R"({"a" 1})", QStringLiteral("冒号"));
    row("name without quotes", "{a:1}", QStringLiteral("成员名称"));
    row("single quotes", "{'a':1}", QStringLiteral("成员名称"));
    row("second value", "{} {}", QStringLiteral("多余"));
    row("zero byte behind", QByteArray("{}\0", 3), QStringLiteral("多余"));
    row("comment", "/* */{}", noValue);
    row("byte order mark", "\xEF\xBB\xBF{}", noValue);
    row("unknown literal", "[treu]", noValue);
    row("cut literal", "[nul", noValue);
    row("not a number", "[NaN]", noValue);
    row("plus sign", "[+1]", noValue);
    row("leading zero", "[01]", QStringLiteral("逗号"));
    row("no digit behind the point", "[1.]", QStringLiteral("数值格式"));
    row("no digit in the exponent", "[1e+]", QStringLiteral("数值格式"));
    row("minus alone", "[-]", QStringLiteral("数值格式"));
    row("just beyond 2^53", "[9007199254740993]", QStringLiteral("2^53"));
    row("beyond 64 bits", "[99999999999999999999999999]", QStringLiteral("2^53"));
    row("beyond double", "[1e400]", QStringLiteral("2^53"));
    row("large double", "[-1e17]", QStringLiteral("2^53"));
    row("open string", "\"abc", QStringLiteral("没有结束"));
    row("line feed in a string", "\"a\nb\"", QStringLiteral("控制字符"));
    row("zero byte in a string", QByteArray("\"a\0b\"", 5), QStringLiteral("控制字符"));
    row("unknown escape", R"("\x41")", QStringLiteral("转义"));
    row("short unicode escape", R"("\u12")", QStringLiteral("转义"));
    row("lone high surrogate", R"("\ud83d")", QStringLiteral("转义"));
    row("lone low surrogate", R"("\ude00")", QStringLiteral("转义"));
    row("high surrogate and a letter", R"("\ud83dA")", QStringLiteral("转义"));
    row("escape at the very end", "\"\\", QStringLiteral("转义"));
    row("stray continuation byte", "\"\x80\"", encoding);
    row("overlong slash", "\"\xC0\xAF\"", encoding);
    row("overlong in three bytes", "\"\xE0\x80\xAF\"", encoding);
    row("surrogate in UTF-8", "\"\xED\xA0\x80\"", encoding);
    row("beyond U+10FFFF", "\"\xF4\x90\x80\x80\"", encoding);
    row("cut sequence", "\"\xE4\xB8\"", encoding);
    row("bad bytes in a name", "{\"\xFF\":1}", encoding);
    row("name twice", R"({"a":1,"b":2,"a":3})", QStringLiteral("“a”重复"));
    row("name twice, once escaped", R"({"a":1,"\u0061":2})", QStringLiteral("重复"));
    row("name twice deep inside", R"([[{"x":{"k":1,"k":[]}}]])", QStringLiteral("重复"));
}

void JsonReaderTest::refusesBadJson()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, reason);

    QString given;

    QVERIFY(!JsonGuard::Check(json, &given));
    QVERIFY2(given.contains(reason), qUtf8Printable(given));
}

void JsonReaderTest::refusesWhatIsTooLarge_data()
{
    QTest::addColumn<QByteArray>("json");

    const JsonLimits limits;
    QTest::newRow("text") << QByteArray(limits.sizeBytes + 1, ' ');
    QTest::newRow("depth") << QByteArray(limits.depth + 1, '[') + QByteArray(limits.depth + 1, ']');
    QTest::newRow("depth of a million") << QByteArray(1000000, '[');
    QTest::newRow("name") << "{\"" + QByteArray(limits.keyBytes + 1, 'k') + "\":1}";
    QTest::newRow("string") << '"' + QByteArray(limits.stringBytes + 1, 's') + '"';
    QByteArray members = "[";
    for (int i = 0; i <= limits.members; ++i)
        members += i == 0 ? "{\"a\":1}" : ",{\"a\":1}";
    QTest::newRow("members") << members + "]";
    QTest::newRow("elements") << '[' + QByteArray("1,").repeated(limits.elements) + "1]";
}

void JsonReaderTest::refusesWhatIsTooLarge()
{
    QFETCH(QByteArray, json);

    QString reason;

    QVERIFY(!JsonGuard::Check(json, &reason));
    QVERIFY2(reason.contains(QStringLiteral("超过")), qUtf8Printable(reason));
}

void JsonReaderTest::acceptsExactlyTheLimits()
{
    const JsonLimits limits;

    QVERIFY(JsonGuard::Check(QByteArray(limits.depth, '[') + QByteArray(limits.depth, ']')));
    QVERIFY(JsonGuard::Check("{\"" + QByteArray(limits.keyBytes, 'k') + "\":1}"));
    QVERIFY(JsonGuard::Check('"' + QByteArray(limits.stringBytes, 's') + '"'));
    // Escapes count as what they stand for.
    QVERIFY(JsonGuard::Check("{\"" + QByteArray("\\u0041").repeated(limits.keyBytes) + "\":1}"));
    QVERIFY(JsonGuard::Check("{}" + QByteArray(limits.sizeBytes - 2, ' ')));
}

void JsonReaderTest::refusesEveryCutOfAGoodText()
{
    const QByteArray json = R"({"a":[true,null,-1.5e3,"\u4e3b\ud83d\ude00流"],"b":{"c":{},"d":[]}})";
    QVERIFY(JsonGuard::Check(json));

    for (int length = 0; length < json.size(); ++length)
        QVERIFY2(!JsonGuard::Check(json.left(length)), qPrintable(QString::number(length)));
}

void JsonReaderTest::seesWhatIsSpecialAtEveryPlaceOfAString()
{
    const QByteArray plain = "abcdefghijklmnopqrstuvwxyz";
    for (int at = 0; at <= plain.size(); ++at) {
        const auto with = [&](const char* special) {
            return '"' + QByteArray(plain).insert(at, special) + '"';
        };
        const QByteArray place = QByteArray::number(at);

        for (const char* good : {"\\n", "\\\"", "\\u4e2d", "\xe4\xb8\xad", "\x7f", "!", "[", " "})
            QVERIFY2(JsonGuard::Check(with(good)), place);
        for (const char* bad : {"\n", "\x01", "\x1f", "\"", "\\x", "\x80", "\xff", "\xe4\xb8"})
            QVERIFY2(!JsonGuard::Check(with(bad)), place);
    }
}

void JsonReaderTest::readsMembersInAnyOrderAndSkipsTheRest()
{
    const QByteArray json = R"({"x":[1,{"y":2}],"count":3,"z":{"name":"no"},"name":"是"})";
    JsonReader reader(json);
    int count = 0;
    QString name;

    QVERIFY(reader.EnterObject());
    while (reader.NextMember())
        if (reader.IsKey("name"))
            QVERIFY(reader.ReadString(name));
        else if (reader.IsKey("count"))
            QVERIFY(reader.ReadInt(count));

    QVERIFY(reader.Finish());
    QCOMPARE(count, 3);
    QCOMPARE(name, QStringLiteral("是"));
}

void JsonReaderTest::leavesAResultAloneWhenTheTypeIsWrong()
{
    const QByteArray json = R"(["text",1.5,{"a":1},3000000000,true])";
    JsonReader reader(json);
    int number = 7;
    QString text = QStringLiteral("kept");
    bool flag = true;

    QVERIFY(reader.EnterArray());
    QVERIFY(reader.NextElement());
    QVERIFY(!reader.ReadInt(number));
    QVERIFY(reader.NextElement());
    QVERIFY(!reader.ReadInt(number));
    QVERIFY(reader.NextElement());
    QVERIFY(!reader.ReadBool(flag));
    QVERIFY(reader.NextElement());
    QVERIFY(!reader.ReadInt(number));
    QVERIFY(reader.NextElement());
    QVERIFY(!reader.ReadString(text));
    QVERIFY(!reader.NextElement());

    QVERIFY(reader.Finish());
    QCOMPARE(number, 7);
    QCOMPARE(flag, true);
    QCOMPARE(text, QStringLiteral("kept"));
}

void JsonReaderTest::readsWhatTheWriterWrote()
{
    JsonWriter writer;
    writer.BeginObject();
    writer.Member("text", QStringLiteral("一\n二"));
    writer.Member("flag", true);
    writer.Member("number", -5);
    writer.Key("list");
    writer.StringList({QStringLiteral("a"), QString()});
    writer.Key("empty");
    writer.BeginArray();
    writer.EndArray();
    writer.Key(QStringLiteral("a \"quoted\" name"));
    writer.Null();
    writer.EndObject();

    const QByteArray json = writer.Take();

    QCOMPARE(json, QByteArray(
                       "{\"text\":\"一\\n二\",\"flag\":true,\"number\":-5,\"list\":[\"a\",\"\"],\"empty\":[],"
                       "\"a \\\"quoted\\\" name\":null}"));
    QVERIFY(JsonGuard::Check(json));
    QVERIFY(writer.Take().isEmpty());
}

void JsonReaderTest::givesEveryStringBack_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("empty") << QString();
    QTest::newRow("ascii") << QStringLiteral("plain text");
    QTest::newRow("quotes and backslashes") << QStringLiteral("C:\\a \"b\"");
    QString controls;
    for (ushort c = 0; c < 0x20; ++c)
        controls.append(QChar(c));
    QTest::newRow("all control characters") << controls;
    QTest::newRow("chinese behind ascii") << QStringLiteral("abc流程\ndef");
    QTest::newRow("beyond the basic plane") << QString::fromUtf8("😀𠀀");
    QTest::newRow("byte order mark first") << QString(QChar(QChar::ByteOrderMark)) + QStringLiteral("a");
    QTest::newRow("non-characters") << QString(QChar(0xFFFE)) + QChar(0xFFFF) + QChar(0x2028);
    QTest::newRow("a megabyte") << QString(1 << 20, QChar(0x4E3B));
}

void JsonReaderTest::givesEveryStringBack()
{
    QFETCH(QString, text);
    JsonWriter writer;
    writer.String(text);
    const QByteArray json = writer.Take();

    JsonReader reader(json);
    QString back;

    QVERIFY(reader.ReadString(back));
    QVERIFY(reader.Finish());
    QCOMPARE(back, text);
}

void JsonReaderTest::givesEveryNumberBack_data()
{
    QTest::addColumn<double>("number");

    QTest::newRow("zero") << 0.0;
    QTest::newRow("a tenth") << 0.1;
    QTest::newRow("a third") << 1.0 / 3;
    QTest::newRow("smallest") << std::numeric_limits<double>::denorm_min();
    QTest::newRow("2^53") << 9007199254740992.0;
    QTest::newRow("beyond 2^53") << 1.2345678901234567e300;
    QTest::newRow("largest") << std::numeric_limits<double>::max();
    QTest::newRow("infinite") << -std::numeric_limits<double>::infinity();
}

void JsonReaderTest::givesEveryNumberBack()
{
    QFETCH(double, number);
    JsonWriter writer;
    writer.Double(number);
    const QByteArray json = writer.Take();

    JsonReader reader(json);
    double back = -1;

    QVERIFY(reader.ReadDouble(back));
    QVERIFY(reader.Finish());
    QVERIFY(!(back < number) && !(back > number));
}

void JsonReaderTest::keepsUnknownMembers()
{
    const QByteArray json = R"({"future":{"a":[1,2.50]},"name":"x","v\u0032":"\u4e3b"})";
    JsonReader reader(json);
    QByteArray members;
    QString name;
    QVERIFY(reader.EnterObject());
    while (reader.NextMember())
        if (reader.IsKey("name"))
            reader.ReadString(name);
        else
            reader.KeepMember(members);
    QVERIFY(reader.Finish());

    JsonWriter writer;
    writer.BeginObject();
    writer.Member("name", name);
    writer.RawMembers(members);
    writer.EndObject();

    const QByteArray back = writer.Take();
    QVERIFY(JsonGuard::Check(back));
    QCOMPARE(QJsonDocument::fromJson(back), QJsonDocument::fromJson(json));
}

void JsonReaderTest::findsDuplicatesInLargeObjects()
{
    QByteArray json = "{";
    for (int i = 0; i < 5000; ++i)
        json += "\"k" + QByteArray::number(i) + "\":0,";

    QVERIFY(JsonGuard::Check(json + "\"last\":0}"));
    QVERIFY(!JsonGuard::Check(json + "\"k0\":0}"));
    QVERIFY(!JsonGuard::Check(json + "\"k4999\":0}"));
}

void JsonReaderTest::agreesWithQtOnVariants()
{
    const QByteArray json = R"({"a":[1,2.5,"x",true,null,{"b":[]}],"c":"\u4e3b\ud83d\ude00"})";
    JsonReader reader(json);
    QVariant value;

    QVERIFY(reader.ReadVariant(value));
    QVERIFY(reader.Finish());

    QCOMPARE(QJsonDocument::fromVariant(value), QJsonDocument::fromJson(json));
}

QTEST_GUILESS_MAIN(JsonReaderTest)
#include "tst_jsonreader.moc"
