// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaAppData.h>
#include <WbFoundation/AppOutline.h>

#include <QtTest>

using Kind = AppOutline::Kind;
Q_DECLARE_METATYPE(AppOutline::Kind)

namespace
{
const QByteArray ui = R"("uiData":{"pages":[{"name":"界面1"}]})";
const QByteArray process = R"("processData":{"processes":[{"name":"主流程"}]})";

QByteArray AppWith(const QByteArray& members)
{
    return '{' + ui + ',' + process + (members.isEmpty() ? "" : "," + members) + '}';
}
} // namespace

class AppOutlineTest : public QObject
{
    Q_OBJECT

private slots:
    void knowsWhatTheAppDataWrites();
    void knowsApps_data();
    void knowsApps();
    void refusesWhatIsNoApp_data();
    void refusesWhatIsNoApp();
    void namesTheFirstPartThatIsBroken();
    void tellsTheVersionOfWhatIsNotUnderstood();
    void holdsToTheLimits();
};

void AppOutlineTest::knowsWhatTheAppDataWrites()
{
    RpaAppData app;
    app.InitDefault();
    app.SetVersion(QStringLiteral("1.2.3"));

    const AppOutline outline = AppOutline::Read(app.ToJson());

    QVERIFY2(outline.IsApp(), qUtf8Printable(outline.problem));
    QCOMPARE(outline.version, QStringLiteral("1.2.3"));
    QVERIFY(outline.problem.isEmpty());
}

void AppOutlineTest::knowsApps_data()
{
    QTest::addColumn<QByteArray>("json");

    QTest::newRow("nothing but the parts of every app") << AppWith("");
    QTest::newRow("the other way round") << '{' + process + ',' + ui + '}';
    QTest::newRow("empty lists") << QByteArray(R"({"uiData":{"pages":[]},"processData":{"processes":[]}})");
    QTest::newRow("blanks around it") << " \r\n\t" + AppWith("") + " \n";
    QTest::newRow("every part") << AppWith(R"("version":"1","extendInfo":{},"packageInfo":{"packages":[{}]},)"
                                           R"("htmlNodes":{"nodes":[]},"uiaNodes":{"nodes":[{},{}]})");
    QTest::newRow("members of a newer client")
        << AppWith(R"("future":[1,{"uiData":7}])").replace("\"pages\"", R"("grid":3,"pages")");
}

void AppOutlineTest::knowsApps()
{
    QFETCH(QByteArray, json);

    const AppOutline outline = AppOutline::Read(json);

    QVERIFY2(outline.IsApp(), qUtf8Printable(outline.problem));
}

void AppOutlineTest::refusesWhatIsNoApp_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<Kind>("kind");

    QTest::newRow("nothing") << QByteArray() << Kind::NotJson;
    QTest::newRow("cut") << AppWith("").chopped(1) << Kind::NotJson;
    QTest::newRow("more behind it") << AppWith("") + "{}" << Kind::NotJson;
    QTest::newRow("a part twice") << AppWith(ui) << Kind::NotJson;
    QTest::newRow("a text") << QByteArray("\"uiData\"") << Kind::Foreign;
    QTest::newRow("null") << QByteArray("null") << Kind::Foreign;
    QTest::newRow("an array of apps") << '[' + AppWith("") + ']' << Kind::Foreign;
    QTest::newRow("empty object") << QByteArray("{}") << Kind::Foreign;
    QTest::newRow("strange members only") << QByteArray(R"({"name":"x","list":[1]})") << Kind::Foreign;
    QTest::newRow("an app as a member") << R"({"app":)" + AppWith("") + '}' << Kind::Foreign;
    QTest::newRow("a version only") << QByteArray(R"({"version":"1.0.0"})") << Kind::Foreign;
    QTest::newRow("no pages at all") << '{' + process + '}' << Kind::Foreign;
    QTest::newRow("no processes at all") << '{' + ui + '}' << Kind::Foreign;
    QTest::newRow("names in other letters") << AppWith("").replace("uiData", "UiData") << Kind::Foreign;
    QTest::newRow("pages without their part") << AppWith("").replace(ui, R"("uiData":[])") << Kind::Broken;
    QTest::newRow("a part that is null") << AppWith("").replace(ui, R"("uiData":null)") << Kind::Broken;
    QTest::newRow("a part of other members")
        << AppWith("").replace(ui, R"("uiData":{"screens":[{}]})") << Kind::Broken;
    QTest::newRow("pages by name") << AppWith("").replace(ui, R"("uiData":{"pages":{"a":{}}})")
                                   << Kind::Broken;
    QTest::newRow("a page that is a text")
        << AppWith("").replace(ui, R"("uiData":{"pages":[{},"a",{}]})") << Kind::Broken;
    QTest::newRow("processes as a text")
        << AppWith("").replace(process, R"("processData":"主流程")") << Kind::Broken;
    QTest::newRow("a process that is a number")
        << AppWith("").replace(process, R"("processData":{"processes":[1]})") << Kind::Broken;
    for (const char* member :
         {R"("version":3)", R"("version":null)", R"("extendInfo":[])", R"("packageInfo":[])",
          R"("packageInfo":{})", R"("packageInfo":{"packages":7})", R"("htmlNodes":{"nodes":{}})",
          R"("uiaNodes":"")", R"("uiaNodes":{"nodes":[[]]})"})
        QTest::newRow(member) << AppWith(member) << Kind::Broken;
}

void AppOutlineTest::refusesWhatIsNoApp()
{
    QFETCH(QByteArray, json);
    QFETCH(Kind, kind);

    const AppOutline outline = AppOutline::Read(json);

    QVERIFY(!outline.IsApp());
    QCOMPARE(outline.kind, kind);
    QVERIFY(!outline.problem.isEmpty());
}

void AppOutlineTest::namesTheFirstPartThatIsBroken()
{
    const AppOutline outline = AppOutline::Read(AppWith(R"("htmlNodes":1,"packageInfo":2)"));

    QVERIFY2(outline.problem.contains(QStringLiteral("“htmlNodes”")), qUtf8Printable(outline.problem));
}

void AppOutlineTest::tellsTheVersionOfWhatIsNotUnderstood()
{
    QCOMPARE(AppOutline::Read(R"({"screens":[],"version":"9.0"})").version, QStringLiteral("9.0"));
    QCOMPARE(AppOutline::Read(R"({"version":"8.1","uiData":[]})").version, QStringLiteral("8.1"));
    QCOMPARE(AppOutline::Read(R"({"inner":{"version":"7.0"}})").version, QString());
}

void AppOutlineTest::holdsToTheLimits()
{
    JsonLimits limits;
    limits.depth = 4; // app, part, list, entry

    QVERIFY(AppOutline::Read(AppWith(""), limits).IsApp());

    limits.depth = 3;
    QCOMPARE(AppOutline::Read(AppWith(""), limits).kind, Kind::NotJson);
}

QTEST_GUILESS_MAIN(AppOutlineTest)
#include "tst_appoutline.moc"
