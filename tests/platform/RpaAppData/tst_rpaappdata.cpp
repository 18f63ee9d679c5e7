// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaAppData/RpaAppRunTimeInfo.h>
#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaHtmlNodeManager.h>
#include <RpaProcessData/RpaPackageInfo.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaUiaNodeManager.h>

#include <QDate>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

namespace
{
RpaParamItem MakeParam(const QString& name, RpaParamType type, const QVariant& value)
{
    RpaParamItem item;
    item.name = name;
    item.label = name + QStringLiteral("：");
    item.type = type;
    item.value = value;
    item.choices = QStringList{QStringLiteral("甲"), QStringLiteral("乙")};
    return item;
}

void FillPage(RpaUIData& page)
{
    RpaParamData* params = page.GetParamData();
    params->InsertItem(-1, MakeParam(QStringLiteral("文本"), RpaParamType::Text, QStringLiteral("a\n\"b\"")));
    params->InsertItem(-1, MakeParam(QStringLiteral("数字"), RpaParamType::Number, 0.1));
    params->InsertItem(-1, MakeParam(QStringLiteral("日期"), RpaParamType::Date, QDate(2024, 2, 29)));
    params->InsertItem(-1, MakeParam(QStringLiteral("选择"), RpaParamType::Choice, QStringLiteral("乙")));
    params->InsertItem(-1, MakeParam(QStringLiteral("开关"), RpaParamType::Switch, true));

    RpaTableData* table = page.GetTableData();
    table->InsertColumn(-1, {QStringLiteral("姓名"), RpaColumnType::Text, QString(), 120, QByteArray()});
    table->InsertColumn(-1, {QStringLiteral("金额"), RpaColumnType::Number, QString(), 0, QByteArray()});
    table->InsertColumn(-1, {QStringLiteral("日期"), RpaColumnType::Date, QString(), 0, QByteArray()});
    table->InsertColumn(-1, {QStringLiteral("完成"), RpaColumnType::Switch, QString(), 0, QByteArray()});
    table->InsertRows(-1, {{QStringLiteral("张三"), 12.5, QDate(2025, 1, 2), true}, {QString(), QVariant()}});
}

void Fill(RpaAppData& app)
{
    app.InitDefault();
    app.SetVersion(QStringLiteral("1.0.0"));
    app.GetAppExtendInfo()->SetAppId(QStringLiteral("app-1"));
    app.GetAppExtendInfo()->SetAppKind(1);
    app.GetAppExtendInfo()->manual = QStringLiteral("<p>说明</p>");
    FillPage(*app.GetUIDataManager()->GetUIData(0));

    RpaStatement child;
    child.command = QStringLiteral("log");
    child.arguments = {{QStringLiteral("text"), QStringLiteral("你好")}};
    child.enabled = false;
    RpaStatement block;
    block.command = QStringLiteral("if");
    block.note = QStringLiteral("判断");
    block.breakpoint = true;
    block.children = {child};
    RpaProcess* process = app.GetProcessDataManager()->GetProcess(0);
    process->Insert(QString(), -1, {block});
    process->SetProgramText(QStringLiteral("print('你好')\n"));

    RpaNode node;
    node.name = QStringLiteral("按钮");
    node.css = QStringLiteral("#ok");
    node.attributes = {{QStringLiteral("class"), QStringLiteral("primary")}};
    app.GetHtmlNodeManager()->AddNode(node);
    app.GetUiaNodeManager()->AddNode(node);

    const auto package = QSharedPointer<PackageItem>::create();
    package->name = QStringLiteral("openpyxl");
    app.GetPackageInfo()->SetListPackageItemPtr({package});
}
} // namespace

class RpaAppDataTest : public QObject
{
    Q_OBJECT

private slots:
    void startsWithOnePageOneToolOneProcess();
    void readsBackWhatItWrote();
    void writesItsMembersInAFixedOrder();
    void keepsWhatANewerClientWrote();
    void keepsValuesOfTypesItDoesNotKnow();
    void neverWritesPasswords();
    void refusesBadTextAndStaysAsItWas_data();
    void refusesBadTextAndStaysAsItWas();
    void readsWhateverFitsOfStrangeData();
    void gathersThePackagesThatTheProcessNeeds();
    void countsEveryEdit();
    void keepsRunTimeInfoOutOfTheText();
    void keepsPartsAcrossParsing();
};

void RpaAppDataTest::startsWithOnePageOneToolOneProcess()
{
    RpaAppData app;

    app.InitDefault();

    QCOMPARE(app.GetUIDataManager()->GetCount(), 1);
    QCOMPARE(app.GetUIDataManager()->GetUIName(0), QStringLiteral("界面1"));
    QCOMPARE(app.GetUIDataManager()->GetIndexActive(), 0);
    const RpaToolData* tools = app.GetUIDataManager()->GetUIData(0)->GetToolData();
    QCOMPARE(tools->GetCount(), 1);
    QCOMPARE(tools->GetItem(0).text, QStringLiteral("开始"));
    QCOMPARE(tools->GetItem(0).processName, QStringLiteral("主流程"));
    QCOMPARE(app.GetProcessDataManager()->GetProcessNameFirst(), QStringLiteral("主流程"));
    QVERIFY(app.GetPackageInfo()->IsEmpty());
    QVERIFY(!app.GetModified());
}

void RpaAppDataTest::readsBackWhatItWrote()
{
    RpaAppData app;
    Fill(app);
    const QByteArray json = app.ToJson();

    RpaAppData back;
    back.InitDefault();
    QVERIFY(back.Parse(json));

    QCOMPARE(back.ToJson(), json);
    QCOMPARE(back.GetAppExtendInfo()->GetManual(), QStringLiteral("<p>说明</p>"));
    QCOMPARE(back.GetAppExtendInfo()->GetAppKind(), 1);
    const RpaUIData* page = back.GetUIDataManager()->GetUIData(0);
    QCOMPARE(page->GetParamData()->GetItem(2).value, QVariant(QDate(2024, 2, 29)));
    QCOMPARE(page->GetParamData()->GetItems(),
             app.GetUIDataManager()->GetUIData(0)->GetParamData()->GetItems());
    QCOMPARE(page->GetTableData()->GetCell(0, 1), QVariant(12.5));
    QCOMPARE(page->GetTableData()->GetCell(0, 2), QVariant(QDate(2025, 1, 2)));
    QVERIFY(!page->GetTableData()->GetCell(1, 0).isValid());
    QCOMPARE(back.GetProcessDataManager()->GetProcess(0)->GetStatements(),
             app.GetProcessDataManager()->GetProcess(0)->GetStatements());
    QCOMPARE(back.GetHtmlNodeManager()->GetNodes(), app.GetHtmlNodeManager()->GetNodes());
}

void RpaAppDataTest::writesItsMembersInAFixedOrder()
{
    RpaAppData app;
    app.InitDefault();
    const QByteArray json = app.ToJson();

    int last = -1;
    for (const char* name : {"\"version\":", "\"extendInfo\":", "\"uiData\":", "\"processData\":",
                             "\"packageInfo\":", "\"htmlNodes\":", "\"uiaNodes\":"}) {
        const int at = json.indexOf(name);
        QVERIFY2(at > last, name);
        last = at;
    }
}

void RpaAppDataTest::keepsWhatANewerClientWrote()
{
    RpaAppData app;
    Fill(app);
    QByteArray json = app.ToJson();
    // A foreign member in every kind of record, and types that this client does not know.
    const QByteArray foreign = R"({"future":{"深":[1,2.5,{"x":null}]},)";
    json.replace("{\"", foreign + "\"");
    json.replace(R"("type":"text")", R"("type":"dial")");
    json.replace(foreign + "\"class\"", "{\"class\"");
    json.replace(foreign + "\"text\":\"你好\"", "{\"text\":\"你好\"");
    QVERIFY(!QJsonDocument::fromJson(json).isNull());

    RpaAppData older;
    older.InitDefault();
    QVERIFY(older.Parse(json));
    const QByteArray back = older.ToJson();

    QJsonObject expected = QJsonDocument::fromJson(json).object();
    QJsonObject actual = QJsonDocument::fromJson(back).object();
    // The package list belongs to the package service, which reads nothing but names and versions.
    expected.remove(QStringLiteral("packageInfo"));
    actual.remove(QStringLiteral("packageInfo"));
    QCOMPARE(actual, expected);
}

void RpaAppDataTest::keepsValuesOfTypesItDoesNotKnow()
{
    const QByteArray params =
        R"([{"name":"p","label":"","type":"range","default":{"low":1,"high":[2,3]},"value":[4.5],"required":false}])";
    const QByteArray table =
        R"({"columns":[{"name":"c","type":"place"}],"rows":[[{"x":1,"y":2}],[null],[9]]})";
    RpaAppData app;

    QVERIFY(app.Parse("{\"uiData\":{\"pages\":[{\"name\":\"a\",\"params\":" + params + ",\"table\":" + table +
                      "}]}}"));

    const QByteArray json = app.ToJson();
    const QJsonObject page = QJsonDocument::fromJson(json)
                                 .object()
                                 .value(QStringLiteral("uiData"))
                                 .toObject()
                                 .value(QStringLiteral("pages"))
                                 .toArray()
                                 .at(0)
                                 .toObject();
    QCOMPARE(QJsonDocument(page.value(QStringLiteral("params")).toArray()), QJsonDocument::fromJson(params));
    QCOMPARE(QJsonDocument(page.value(QStringLiteral("table")).toObject()), QJsonDocument::fromJson(table));
}

void RpaAppDataTest::neverWritesPasswords()
{
    RpaAppData app;
    app.InitDefault();
    RpaParamData* params = app.GetUIDataManager()->GetUIData(0)->GetParamData();
    RpaParamItem secret =
        MakeParam(QStringLiteral("口令"), RpaParamType::Password, QStringLiteral("geheim-1"));
    secret.defaultValue = QStringLiteral("geheim-2");
    params->InsertItem(-1, secret);
    QCOMPARE(params->GetItem(0).value, QVariant(QStringLiteral("geheim-1")));

    const QByteArray json = app.ToJson();

    QVERIFY(json.contains("口令"));
    QVERIFY(!json.contains("geheim"));
}

void RpaAppDataTest::refusesBadTextAndStaysAsItWas_data()
{
    QTest::addColumn<QByteArray>("json");

    RpaAppData app;
    Fill(app);
    const QByteArray good = app.ToJson();
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("not JSON") << QByteArray("<html>");
    QTest::newRow("an array") << QByteArray("[" + good + "]");
    QTest::newRow("cut") << good.left(good.size() - 1);
    QTest::newRow("cut in the middle") << good.left(good.size() / 2);
    QTest::newRow("more behind") << QByteArray(good + "x");
    QTest::newRow("a part twice") << QByteArray(good.left(good.size() - 1) + ",\"uiData\":{}}");
    QTest::newRow("a part of the wrong type") << QByteArray(R"({"version":"9","uiData":[]})");
    QTest::newRow("bad UTF-8") << QByteArray(good).replace("说明", "\xE8\xAF");
    QTest::newRow("too deep") << R"({"version":"9","x":)" + QByteArray(70, '[') + QByteArray(70, ']') + "}";
}

void RpaAppDataTest::refusesBadTextAndStaysAsItWas()
{
    QFETCH(QByteArray, json);
    RpaAppData app;
    app.InitDefault();
    app.SetVersion(QStringLiteral("1.0.0"));
    const QByteArray before = app.ToJson();
    QSignalSpy replaced(&app, &RpaAppData::SigReplaced);

    QVERIFY(!app.Parse(json));

    QCOMPARE(app.ToJson(), before);
    QCOMPARE(replaced.count(), 0);
}

void RpaAppDataTest::readsWhateverFitsOfStrangeData()
{
    RpaAppData app;
    app.InitDefault();

    QVERIFY(app.Parse(
        R"({"version":3,"extendInfo":[],"uiData":{"pages":[1,{"name":7,"tools":{},"params":[[],{}],)"
        R"("table":{"columns":[{},{"name":"a"},{"name":"a"}],"rows":[[1,2,3,4,5],[],"x"]}},)"
        R"({"name":"同名"},{"name":"同名"}]},"processData":{"processes":[{},{"name":"p"},{"name":"p"},)"
        R"({"name":"q","statements":[{"children":[{"arguments":[]}]},3]}]},"packageInfo":{"packages":7}})"));

    QStringList names;
    app.GetUIDataManager()->GetAllUIName(names);
    QCOMPARE(names, (QStringList{QStringLiteral("界面1"), QStringLiteral("同名"), QStringLiteral("同名2")}));
    const RpaTableData* table = app.GetUIDataManager()->GetUIData(0)->GetTableData();
    QCOMPARE(table->GetColumnCount(), 3);
    QCOMPARE(table->GetRowCount(), 2);
    QCOMPARE(table->GetRow(0).size(), 3);
    QCOMPARE(app.GetProcessDataManager()->GetCount(), 4);
    QCOMPARE(app.GetProcessDataManager()->FindProcess(QStringLiteral("q"))->GetStatementCount(), 2);
    QVERIFY(app.GetVersion().isEmpty());
}

void RpaAppDataTest::gathersThePackagesThatTheProcessNeeds()
{
    RpaAppData app;
    app.InitDefault();
    const auto own = QSharedPointer<PackageItem>::create();
    own->name = QStringLiteral("OpenPyXL");
    own->version = QStringLiteral("2.0");
    app.GetPackageInfo()->SetListPackageItemPtr({own});
    RpaStatement open;
    open.command = QStringLiteral("excel.open");
    RpaProcess* process = app.GetProcessDataManager()->GetProcess(0);

    process->SetStatements({open});
    app.CheckPackageInfo();
    QCOMPARE(app.GetPackageInfo()->GetListPackageItemPtr().size(), 1);
    QCOMPARE(app.GetPackageInfo()->GetListPackageItemPtr().first()->version, QStringLiteral("2.0"));

    own->name = QStringLiteral("requests");
    app.CheckPackageInfo();
    QCOMPARE(app.GetPackageInfo()->GetListPackageItemPtr().size(), 2);
    QCOMPARE(app.GetPackageInfo()->GetListPackageItemPtr().last()->name, QStringLiteral("openpyxl"));
    app.CheckPackageInfo();
    QCOMPARE(app.GetPackageInfo()->GetListPackageItemPtr().size(), 2);
}

void RpaAppDataTest::countsEveryEdit()
{
    RpaAppData app;
    QSignalSpy edited(&app, &RpaAppData::SigEdited);
    QSignalSpy marked(&app, &RpaAppData::SigModifiedChanged);

    app.SetModified(true);
    app.SetModified(true);
    app.SetModified(false);
    app.SetModified(false);

    QCOMPARE(edited.count(), 2);
    QCOMPARE(marked.count(), 2);
    QVERIFY(!app.GetModified());
}

void RpaAppDataTest::keepsRunTimeInfoOutOfTheText()
{
    RpaAppData app;
    app.InitDefault();
    app.GetRunTimeInfo()->SetEnvironment(QStringLiteral("develop-only"));

    QVERIFY(!app.ToJson().contains("develop-only"));
}

void RpaAppDataTest::keepsPartsAcrossParsing()
{
    RpaAppData app;
    app.InitDefault();
    RpaUIDataManager* pages = app.GetUIDataManager();
    ProcessDataManager* processes = app.GetProcessDataManager();
    app.SetModified(true);

    QVERIFY(app.Parse(R"({"extendInfo":{"manual":"m"}})"));

    QCOMPARE(app.GetUIDataManager(), pages);
    QCOMPARE(app.GetProcessDataManager(), processes);
    QCOMPARE(pages->GetCount(), 1);
    QVERIFY(app.GetModified());
}

QTEST_GUILESS_MAIN(RpaAppDataTest)
#include "tst_rpaappdata.moc"
