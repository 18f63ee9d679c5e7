// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>

#include <QSignalSpy>
#include <QtTest>

class RpaUIDataManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void addsAtTheEndWithOneTool();
    void tellsNames();
    void tellsWhetherANameExists_data();
    void tellsWhetherANameExists();
    void renames();
    void keepsTheActivePageWhenOneGoes_data();
    void keepsTheActivePageWhenOneGoes();
    void keepsTheActivePageWhenTwoAreSwapped();
    void ignoresIndexesOutsideTheList();
    void announcesChanges();
    void readsBackWhatItWrote();
    void givesPagesOfAFileNamesThatDiffer();
    void takesManyNamelessPagesWithoutSearchingForEach();

private:
    QString GetNames() const;

    std::unique_ptr<RpaUIDataManager> pages;
};

void RpaUIDataManagerTest::init()
{
    pages = std::make_unique<RpaUIDataManager>();
    for (const QString& name : {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")})
        pages->AddUIData(name, RpaToolItem());
}

QString RpaUIDataManagerTest::GetNames() const
{
    QStringList names;
    pages->GetAllUIName(names);
    return names.join(QString());
}

void RpaUIDataManagerTest::addsAtTheEndWithOneTool()
{
    RpaToolItem item;
    item.text = QStringLiteral("开始");
    item.processName = QStringLiteral("主流程");

    const RpaUIData* page = pages->AddUIData(QStringLiteral("新"), item);

    QCOMPARE(pages->GetCount(), 4);
    QCOMPARE(pages->GetUIData(3), page);
    QCOMPARE(page->GetToolData()->GetCount(), 1);
    QCOMPARE(page->GetToolData()->GetItem(0).processName, QStringLiteral("主流程"));
    QVERIFY(!page->GetToolData()->GetItem(0).id.isEmpty());
    QCOMPARE(page->GetParamData()->GetCount(), 0);
    QCOMPARE(page->GetTableData()->GetColumnCount(), 0);
    QCOMPARE(pages->GetIndexActive(), 0);
}

void RpaUIDataManagerTest::tellsNames()
{
    QStringList names{QStringLiteral("left over")};

    pages->GetAllUIName(names);

    QCOMPARE(names.join(QString()), QStringLiteral("abc"));
    QCOMPARE(pages->GetUIName(1), QStringLiteral("b"));
}

void RpaUIDataManagerTest::tellsWhetherANameExists_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("except");
    QTest::addColumn<bool>("exists");

    QTest::newRow("another page's") << QStringLiteral("a") << 1 << true;
    QTest::newRow("its own") << QStringLiteral("b") << 1 << false;
    QTest::newRow("nobody's") << QStringLiteral("d") << 1 << false;
    QTest::newRow("other case") << QStringLiteral("A") << 1 << false;
    QTest::newRow("no exception") << QStringLiteral("b") << -1 << true;
}

void RpaUIDataManagerTest::tellsWhetherANameExists()
{
    QFETCH(QString, name);
    QFETCH(int, except);
    QFETCH(bool, exists);

    QCOMPARE(pages->IsExistExceptIndex(name, except), exists);
    if (except < 0)
        QCOMPARE(pages->IsExist(name), exists);
}

void RpaUIDataManagerTest::renames()
{
    QSignalSpy renamed(pages.get(), &RpaUIDataManager::SigUIRenamed);

    pages->UpdateUIData(1, QStringLiteral("x"));
    pages->UpdateUIData(1, QStringLiteral("x"));

    QCOMPARE(GetNames(), QStringLiteral("axc"));
    QCOMPARE(renamed.count(), 1);
}

void RpaUIDataManagerTest::keepsTheActivePageWhenOneGoes_data()
{
    QTest::addColumn<int>("active");
    QTest::addColumn<int>("gone");
    QTest::addColumn<int>("expected");

    QTest::newRow("one before") << 2 << 0 << 1;
    QTest::newRow("one behind") << 0 << 2 << 0;
    QTest::newRow("itself in the middle") << 1 << 1 << 1;
    QTest::newRow("itself at the end") << 2 << 2 << 1;
}

void RpaUIDataManagerTest::keepsTheActivePageWhenOneGoes()
{
    QFETCH(int, active);
    QFETCH(int, gone);
    QFETCH(int, expected);
    pages->SetIndexActive(active);

    pages->DeleteUIData(gone);
    QCOMPARE(pages->GetIndexActive(), expected);

    while (pages->GetCount() > 0)
        pages->DeleteUIData(0);
    QCOMPARE(pages->GetIndexActive(), -1);
}

void RpaUIDataManagerTest::keepsTheActivePageWhenTwoAreSwapped()
{
    pages->SetIndexActive(0);

    pages->SwapUIData(0, 2);

    QCOMPARE(GetNames(), QStringLiteral("cba"));
    QCOMPARE(pages->GetIndexActive(), 2);
    pages->SwapUIData(0, 2);
    QCOMPARE(pages->GetIndexActive(), 0);
    pages->SwapUIData(1, 2);
    QCOMPARE(pages->GetIndexActive(), 0);
}

void RpaUIDataManagerTest::ignoresIndexesOutsideTheList()
{
    QSignalSpy changed(pages.get(), &RpaUIDataManager::SigChanged);

    pages->DeleteUIData(-1);
    pages->DeleteUIData(3);
    pages->UpdateUIData(3, QStringLiteral("x"));
    pages->SwapUIData(0, 3);
    pages->SwapUIData(1, 1);
    pages->SetIndexActive(3);
    pages->SetIndexActive(-2);

    QCOMPARE(changed.count(), 0);
    QCOMPARE(GetNames(), QStringLiteral("abc"));
    QCOMPARE(pages->GetIndexActive(), 0);
    QVERIFY(!pages->GetUIData(3));
    QVERIFY(pages->GetUIName(-1).isEmpty());
    pages->SetIndexActive(-1);
    QCOMPARE(pages->GetIndexActive(), -1);
}

void RpaUIDataManagerTest::announcesChanges()
{
    QSignalSpy changed(pages.get(), &RpaUIDataManager::SigChanged);
    QSignalSpy active(pages.get(), &RpaUIDataManager::SigIndexActiveChanged);

    pages->SetIndexActive(1);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(active.count(), 1);

    pages->GetUIData(0)->GetToolData()->InsertItem(-1, RpaToolItem());
    QCOMPARE(changed.count(), 1);
    pages->GetUIData(0)->GetTableData()->InsertColumn(-1, {QStringLiteral("列"), {}, {}, 0, {}});
    QCOMPARE(changed.count(), 2);
    pages->DeleteUIData(0);
    QCOMPARE(changed.count(), 3);
    QCOMPARE(active.count(), 2);
}

void RpaUIDataManagerTest::readsBackWhatItWrote()
{
    pages->SetIndexActive(2);
    const QByteArray json = pages->ToJson();

    RpaUIDataManager back;
    QVERIFY(back.Parse(json));

    QCOMPARE(back.ToJson(), json);
    QCOMPARE(back.GetIndexActive(), 0);
    QVERIFY(!back.Parse("{\"pages\":[{]}"));
    QCOMPARE(back.ToJson(), json);
}

void RpaUIDataManagerTest::givesPagesOfAFileNamesThatDiffer()
{
    RpaUIDataManager read;
    QVERIFY(read.Parse(R"({"pages":[{"name":"a"},{},{"name":"a"},{"name":" "},{"name":"a"}]})"));

    QStringList names;
    read.GetAllUIName(names);
    QCOMPARE(names, (QStringList{QStringLiteral("a"), QStringLiteral("界面1"), QStringLiteral("a2"),
                                 QStringLiteral("界面2"), QStringLiteral("a3")}));
}

// Searching all others for each of them would take minutes: a file could freeze the editor.
void RpaUIDataManagerTest::takesManyNamelessPagesWithoutSearchingForEach()
{
    constexpr int many = 10000;
    RpaUIDataManager read;
    QVERIFY(read.Parse("{\"pages\":[" + QByteArray("{},").repeated(many - 1) + "{}]}"));
    QCOMPARE(read.GetCount(), many);
    QCOMPARE(read.GetUIName(many - 1), QStringLiteral("界面10000"));
}

QTEST_GUILESS_MAIN(RpaUIDataManagerTest)
#include "tst_rpauidatamanager.moc"
