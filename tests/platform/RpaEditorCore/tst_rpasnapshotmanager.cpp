// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"

#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorCore/RpaEditorNotify.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <WbCore/WbGlobalData.h>

#include <QSignalSpy>
#include <QtTest>

namespace
{
RpaAppSnapshotPtr Version(const QString& id, AppSnapshotState state = AppSnapshotDevelop,
                          const QString& appId = QStringLiteral("app"))
{
    auto snapshot = RpaAppSnapshotPtr::create();
    snapshot->SetId(id);
    snapshot->SetName(QStringLiteral("name of ") + id);
    snapshot->SetAppId(appId);
    snapshot->SetState(state);
    return snapshot;
}

const QString a = QStringLiteral("a");
const QString b = QStringLiteral("b");
const QString c = QStringLiteral("c");
} // namespace

class RpaSnapshotManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void isEmptyAtFirst();
    void keepsTheOrderOfTheServer();
    void findsVersionsByIdAndIndex();
    void leavesOutBrokenAndRepeatedRecords();
    void countsDevelopVersions();
    void putsACreatedVersionInFront();
    void replacesAVersionInItsPlace();
    void forgetsARemovedVersion();
    void ignoresRemovingWhatIsNotThere();
    void stillFindsAVersionThatVanishedFromTheList();
    void stillFindsAVersionOfTheAppThatWasShownBefore();
    void forgetsTheListWhenCleared();
    void putsARecordBackToWhatTheServerConfirmed();
    void keepsNoContentOfConfirmedRecords();
    void basesAWriteOnTheListWhenNothingWasLoaded();
    void basesAWriteOnWhatWasLoadedEvenWhenTheListMovesOn();
    void remembersRevisionsOfVersionsThatAreGone();
    void finds10000VersionsAtOnce();
    void createsACompleteRecord();
    void namesTheNewVersionByTheFirstFreeNumber_data();
    void namesTheNewVersionByTheFirstFreeNumber();
    void createsNothingWithoutAppData();
    void notifierTellsOfAPublishedVersion();
};

void RpaSnapshotManagerTest::isEmptyAtFirst()
{
    RpaSnapshotManager manager;

    QCOMPARE(manager.GetCount(), 0);
    QCOMPARE(manager.GetDevelopCount(), 0);
    QVERIFY(!manager.GetSnapshot(0));
    QVERIFY(!manager.GetSnapshot(-1));
    QVERIFY(!manager.GetSnapshot(QString()));
    QVERIFY(manager.GetSnapshotId(0).isEmpty());
}

void RpaSnapshotManagerTest::keepsTheOrderOfTheServer()
{
    RpaSnapshotManager manager;

    manager.SetSnapshots({Version(c), Version(a), Version(b)});

    QCOMPARE(manager.GetSnapshotId(0), c);
    QCOMPARE(manager.GetSnapshotId(1), a);
    QCOMPARE(manager.GetSnapshotId(2), b);
    QVERIFY(manager.GetSnapshotId(3).isEmpty());
}

void RpaSnapshotManagerTest::findsVersionsByIdAndIndex()
{
    RpaSnapshotManager manager;
    const auto version = Version(b);

    manager.SetSnapshots({Version(a), version});

    QCOMPARE(manager.GetSnapshot(b), version);
    QCOMPARE(manager.GetSnapshot(1), version);
    QVERIFY(!manager.GetSnapshot(c));
}

void RpaSnapshotManagerTest::leavesOutBrokenAndRepeatedRecords()
{
    RpaSnapshotManager manager;

    manager.SetSnapshots({Version(a), {}, Version(QString()), Version(a), Version(b)});

    QCOMPARE(manager.GetCount(), 2);
    QCOMPARE(manager.GetSnapshotId(1), b);
}

void RpaSnapshotManagerTest::countsDevelopVersions()
{
    RpaSnapshotManager manager;
    manager.SetSnapshots({Version(a, AppSnapshotGray), Version(b), Version(c, AppSnapshotOnline)});
    QCOMPARE(manager.GetDevelopCount(), 1);

    manager.AddOrReplace(Version(b, AppSnapshotGray));

    QCOMPARE(manager.GetDevelopCount(), 0);
    QCOMPARE(manager.GetCount(), 3);
}

void RpaSnapshotManagerTest::putsACreatedVersionInFront()
{
    RpaSnapshotManager manager;
    manager.SetSnapshots({Version(a)});

    manager.AddOrReplace(Version(b));

    QCOMPARE(manager.GetSnapshotId(0), b);
    QCOMPARE(manager.GetSnapshot(a)->GetId(), a);
}

void RpaSnapshotManagerTest::replacesAVersionInItsPlace()
{
    RpaSnapshotManager manager;
    manager.SetSnapshots({Version(a), Version(b)});
    const auto changed = Version(b, AppSnapshotOnline);

    manager.AddOrReplace(changed);

    QCOMPARE(manager.GetSnapshot(1), changed);
    QCOMPARE(manager.GetCount(), 2);
}

void RpaSnapshotManagerTest::forgetsARemovedVersion()
{
    RpaSnapshotManager manager;
    manager.SetSnapshots({Version(a), Version(b), Version(c)});

    manager.Remove(b);

    QCOMPARE(manager.GetCount(), 2);
    QVERIFY(!manager.GetSnapshot(b));
    QCOMPARE(manager.GetSnapshot(c), manager.GetSnapshot(1));
    QVERIFY(manager.WasListed(b));
}

void RpaSnapshotManagerTest::ignoresRemovingWhatIsNotThere()
{
    RpaSnapshotManager manager;
    manager.SetSnapshots({Version(a)});

    manager.Remove(b);
    manager.Remove(QString());

    QCOMPARE(manager.GetCount(), 1);
}

void RpaSnapshotManagerTest::stillFindsAVersionThatVanishedFromTheList()
{
    RpaSnapshotManager manager;
    manager.SetSnapshots({Version(a), Version(b)});

    manager.SetSnapshots({Version(a)});

    QCOMPARE(manager.GetCount(), 1);
    QVERIFY(manager.GetSnapshot(b));
    manager.Remove(b);
    QVERIFY(!manager.GetSnapshot(b));
}

void RpaSnapshotManagerTest::stillFindsAVersionOfTheAppThatWasShownBefore()
{
    RpaSnapshotManager manager;
    manager.SetSnapshots({Version(a)});

    manager.SetSnapshots({Version(b, AppSnapshotDevelop, QStringLiteral("other"))});

    QVERIFY(manager.GetSnapshot(a));
    QCOMPARE(manager.GetCount(), 1);
    QCOMPARE(manager.GetSnapshotId(0), b);
}

void RpaSnapshotManagerTest::forgetsTheListWhenCleared()
{
    RpaSnapshotManager manager;
    manager.SetSnapshots({Version(a)});
    manager.SetSnapshots({Version(b)});

    manager.Clear();

    QCOMPARE(manager.GetCount(), 0);
    QVERIFY(!manager.GetSnapshot(a));
    QVERIFY(!manager.GetSnapshot(b));
    QVERIFY(manager.WasListed(a));
}

void RpaSnapshotManagerTest::putsARecordBackToWhatTheServerConfirmed()
{
    RpaSnapshotManager manager;
    manager.SetSnapshots({Version(a)});
    const auto listed = manager.GetSnapshot(a);
    listed->SetDesc(QStringLiteral("not saved"));
    listed->SetAppData(QStringLiteral("{}"));

    manager.Revert(a);
    manager.Revert(b);

    QCOMPARE(manager.GetSnapshot(a), listed);
    QVERIFY(listed->GetDesc().isEmpty());
    QVERIFY(listed->GetAppData().isEmpty());
}

void RpaSnapshotManagerTest::keepsNoContentOfConfirmedRecords()
{
    RpaSnapshotManager manager;
    const auto version = Version(a);
    version->SetAppData(QStringLiteral("{}"));

    manager.AddOrReplace(version);

    QVERIFY(manager.GetConfirmed(a)->GetAppData().isEmpty());
    QVERIFY(!manager.GetConfirmed(b));
}

void RpaSnapshotManagerTest::basesAWriteOnTheListWhenNothingWasLoaded()
{
    RpaSnapshotManager manager;
    QCOMPARE(manager.GetBaseRevision(a), 0);

    manager.SetListedRevision(a, 7);

    QCOMPARE(manager.GetBaseRevision(a), 7);
    QCOMPARE(manager.GetNewestRevision(a), 7);
}

void RpaSnapshotManagerTest::basesAWriteOnWhatWasLoadedEvenWhenTheListMovesOn()
{
    RpaSnapshotManager manager;
    manager.SetBaseRevision(a, 7);

    manager.SetListedRevision(a, 9);

    QCOMPARE(manager.GetBaseRevision(a), 7);
    QCOMPARE(manager.GetNewestRevision(a), 9);
}

void RpaSnapshotManagerTest::remembersRevisionsOfVersionsThatAreGone()
{
    RpaSnapshotManager manager;
    manager.SetSnapshots({Version(a)});
    manager.SetBaseRevision(a, 3);

    manager.Remove(a);
    manager.Clear();

    QCOMPARE(manager.GetBaseRevision(a), 3);
}

void RpaSnapshotManagerTest::finds10000VersionsAtOnce()
{
    RpaSnapshotManager manager;
    QVector<RpaAppSnapshotPtr> versions;
    for (int i = 0; i < 10000; ++i)
        versions.append(Version(QString::number(i)));
    manager.SetSnapshots(versions);
    QElapsedTimer time;
    time.start();

    for (int i = 0; i < 10000; ++i)
        QCOMPARE(manager.GetSnapshot(QString::number(i)), versions.at(i));

    QVERIFY2(time.elapsed() < 1000, "ten thousand look-ups walk through the list");
}

void RpaSnapshotManagerTest::createsACompleteRecord()
{
    RpaGlobalDataManager::Instance()->SetApiVersion(QStringLiteral("1.2.3"));
    WbGlobalData::Instance()->SetPin(QStringLiteral("me"));
    auto appData = RpaAppDataPtr::create();
    appData->InitDefault();
    appData->GetAppExtendInfo()->SetAppId(QStringLiteral("app7"));
    RpaSnapshotManager manager;

    const auto snapshot = manager.CreateDefault(appData);

    QVERIFY(snapshot->GetId().isEmpty());
    QCOMPARE(snapshot->GetName(), QStringLiteral("版本1"));
    QCOMPARE(snapshot->GetDesc(), QStringLiteral("默认开发版本"));
    QCOMPARE(snapshot->GetAppId(), QStringLiteral("app7"));
    QCOMPARE(snapshot->GetState(), AppSnapshotDevelop);
    QCOMPARE(snapshot->GetApiVersion(), QStringLiteral("1.2.3"));
    QCOMPARE(snapshot->GetPin(), QStringLiteral("me"));
    QCOMPARE(appData->GetVersion(), QStringLiteral("1.2.3"));
    QCOMPARE(snapshot->GetAppData().toUtf8(), appData->ToJson());
    QCOMPARE(manager.GetCount(), 0);
}

void RpaSnapshotManagerTest::namesTheNewVersionByTheFirstFreeNumber_data()
{
    QTest::addColumn<QStringList>("taken");
    QTest::addColumn<QString>("name");

    QTest::newRow("nothing taken") << QStringList() << QStringLiteral("版本1");
    QTest::newRow("one taken") << QStringList{QStringLiteral("版本1")} << QStringLiteral("版本2");
    QTest::newRow("a gap") << QStringList{QStringLiteral("版本3"), QStringLiteral("版本1")}
                           << QStringLiteral("版本2");
    QTest::newRow("other names") << QStringList{QStringLiteral("beta")} << QStringLiteral("版本1");
}

void RpaSnapshotManagerTest::namesTheNewVersionByTheFirstFreeNumber()
{
    QFETCH(const QStringList, taken);
    QFETCH(const QString, name);
    RpaSnapshotManager manager;
    for (const QString& other : taken) {
        const auto version = Version(QString::number(taken.indexOf(other)));
        version->SetName(other);
        manager.AddOrReplace(version);
    }

    const auto snapshot = manager.CreateDefault(RpaAppDataPtr::create());

    QCOMPARE(snapshot->GetName(), name);
}

void RpaSnapshotManagerTest::createsNothingWithoutAppData()
{
    QVERIFY(!RpaSnapshotManager().CreateDefault({}));
}

void RpaSnapshotManagerTest::notifierTellsOfAPublishedVersion()
{
    QSignalSpy spy(RpaEditorNotify::Instance(), &RpaEditorNotify::SigPublishFinished);

    emit RpaEditorNotify::Instance()->SigPublishFinished(QStringLiteral("app"), 2, true);

    QCOMPARE(spy.value(0), QVariantList({QStringLiteral("app"), 2, true}));
}

RPA_TEST_MAIN(RpaSnapshotManagerTest)
#include "tst_rpasnapshotmanager.moc"
