// SPDX-License-Identifier: Apache-2.0

#include "EditorLogicFixture.h"
#include "TestApp.h"

#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/SaveLedger.h>

#include <QSignalSpy>
#include <QtTest>

using namespace VersionExamples;

// What keeps the author's work safe when answers fail, are late, or somebody else works on the same version.
class SavedWorkTest : public QObject
{
    Q_OBJECT

private slots:
    void basesASaveOnTheLoadedRevisionThoughTheListMovedOn();
    void basesASaveOnTheSaveBeforeIt();
    void sendsTwoSavesOfOneVersionOneAfterAnother();
    void loadsAVersionOnlyAfterItsSave();
    void tellsWhenSomebodyElseChangedTheVersion();
    void putsTheListedRecordBackWhenTheSaveFails();
    void keepsWhatWasGivenThoughTheRecordChanges();
    void doesNotOverwriteWhatANewerClientSaved();
    void refusesContentThatCouldNotBeLoadedAgain_data();
    void refusesContentThatCouldNotBeLoadedAgain();
    void saysThatAllOfTheContentIsTooMuch();
    void sendsASaveIntoAVersionThatVanished();
    void goesOnAfterAnOverwriteWhoseAnswerWasLost();
    void asksOnlyOnceWhatBecameOfALostOverwrite();
    void goesOnAfterANewVersionWhoseAnswerWasLost();
    void refusesTheNextSaveWhenALostOneWasNotDone();
};

void SavedWorkTest::basesASaveOnTheLoadedRevisionThoughTheListMovedOn()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 3)});
    fixture.server.Enqueue(FaultServer::Data(VersionReplies::App(), 3));
    fixture.Load(v1);
    QVERIFY(fixture.answers.WaitFor(2));
    fixture.GivenVersions({fixture.Version(v1, 4)});

    fixture.Update(fixture.Record(v1, text1));

    QVERIFY(fixture.answers.WaitFor(4));
    QCOMPARE(fixture.server.GetRequests().last().headers.value("if-match"), QByteArray("\"3\""));
}

void SavedWorkTest::basesASaveOnTheSaveBeforeIt()
{
    EditorLogicFixture fixture;
    fixture.server.Enqueue(VersionReplies::Saved(201, fixture.Version(v1, 1, text1.toUtf8())));
    fixture.server.Enqueue(VersionReplies::Saved(200, fixture.Version(v1, 2, text2.toUtf8())));
    fixture.Save(fixture.Record(QString(), text1));
    QVERIFY(fixture.answers.WaitFor(1));

    fixture.Update(fixture.Record(v1, text2));

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY2(fixture.answers.LastSucceeded(), qPrintable(fixture.answers.LastError()));
    QCOMPARE(fixture.server.GetRequests().last().headers.value("if-match"), QByteArray("\"1\""));
}

void SavedWorkTest::sendsTwoSavesOfOneVersionOneAfterAnother()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(Late(VersionReplies::Saved(200, fixture.Version(v1, 2, text1.toUtf8()))));
    fixture.server.Enqueue(VersionReplies::Saved(200, fixture.Version(v1, 3, text2.toUtf8())));

    fixture.Update(fixture.Record(v1, text1));
    fixture.Update(fixture.Record(v1, text2));

    QVERIFY(fixture.answers.WaitFor(3));
    QVERIFY(fixture.answers.At(1).response->IsSuccess());
    QVERIFY(fixture.answers.At(2).response->IsSuccess());
    const auto requests = fixture.server.GetRequests();
    QCOMPARE(requests.at(1).headers.value("if-match"), QByteArray("\"1\""));
    QCOMPARE(requests.at(2).headers.value("if-match"), QByteArray("\"2\""));
    QCOMPARE(requests.at(2).body, text2.toUtf8());
}

void SavedWorkTest::loadsAVersionOnlyAfterItsSave()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(Late(VersionReplies::Saved(200, fixture.Version(v1, 2, text1.toUtf8()))));
    fixture.server.Enqueue(FaultServer::Data(VersionReplies::App(), 2));

    fixture.Update(fixture.Record(v1, text1));
    fixture.Load(v1);

    QVERIFY(fixture.answers.WaitFor(3));
    QCOMPARE(fixture.answers.At(1).notifyId, 10020);
    QCOMPARE(fixture.answers.At(2).notifyId, 10023);
    QVERIFY(fixture.answers.LastSucceeded());
}

void SavedWorkTest::tellsWhenSomebodyElseChangedTheVersion()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(ChangedByAnother());

    fixture.Update(fixture.Record(v1, text1));

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY(!fixture.answers.LastSucceeded());
    QVERIFY(fixture.answers.LastError().startsWith(QStringLiteral("该版本已被他人修改")));
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetBaseRevision(v1), 1);
}

void SavedWorkTest::putsTheListedRecordBackWhenTheSaveFails()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    const auto listed = fixture.Logic()->GetDevSnapshotManager()->GetSnapshot(v1);
    listed->SetDesc(QStringLiteral("new description"));
    listed->SetAppData(text1);
    fixture.server.Enqueue(ChangedByAnother());

    fixture.Update(listed);

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY(fixture.Logic()->GetDevSnapshotManager()->GetSnapshot(v1)->GetDesc().isEmpty());
}

void SavedWorkTest::keepsWhatWasGivenThoughTheRecordChanges()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(FaultServer::Data(VersionReplies::App(), 1));
    fixture.server.Enqueue(Late(ChangedByAnother()));
    fixture.server.Enqueue(VersionReplies::Saved(200, fixture.Version(v1, 2, text1.toUtf8())));
    const auto record = fixture.Record(v1, text1);

    fixture.Release(v1, 1); // holds the save back
    fixture.Update(record);
    record->SetAppData(text2);

    QVERIFY(fixture.answers.WaitFor(3));
    QCOMPARE(fixture.server.GetRequests().last().body, text1.toUtf8());
}

void SavedWorkTest::refusesContentThatCouldNotBeLoadedAgain_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("reason");
    QTest::newRow("65 levels") << QString(65, QLatin1Char('[')) + QString(65, QLatin1Char(']'))
                               << QStringLiteral("嵌套超过 64 层");
    QTest::newRow("a name twice") << QStringLiteral("{\"a\":1,\"a\":2}") << QStringLiteral("成员“a”重复");
    QTest::newRow("a number that would be rounded")
        << QStringLiteral("{\"a\":9007199254740993}") << QStringLiteral("数值超出 ±2^53");
    QTest::newRow("cut off") << QStringLiteral("{\"a\":") << QStringLiteral("数据不完整");
    QTest::newRow("long instructions") << QStringLiteral("{\"extendInfo\":{\"manual\":\"%1\"}}")
                                              .arg(QString((16 << 20) + 1, QLatin1Char('x')))
                                       << QStringLiteral("使用说明超过 16 MB，没有保存");
}

void SavedWorkTest::refusesContentThatCouldNotBeLoadedAgain()
{
    QFETCH(QString, content);
    QFETCH(QString, reason);
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    const int sent = fixture.server.GetRequests().size();
    QSignalSpy failed(fixture.Logic()->GetSaveLedger(), &SaveLedger::SigSaveFailed);

    fixture.Update(fixture.Record(v1, content));
    fixture.Save(fixture.Record(QString(), content));

    QVERIFY(fixture.answers.WaitFor(3));
    for (const int answer : {1, 2}) {
        QVERIFY(!fixture.answers.At(answer).response->IsSuccess());
        const QString text = fixture.answers.At(answer).response->GetErrorDesc();
        QVERIFY2(text.contains(reason), qPrintable(text));
    }
    QCOMPARE(failed.size(), 2);
    QCOMPARE(fixture.server.GetRequests().size(), sent);
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetBaseRevision(v1), 1);
}

void SavedWorkTest::saysThatAllOfTheContentIsTooMuch()
{
    EditorLogicFixture fixture;

    fixture.Save(
        fixture.Record(QString(), QStringLiteral("[\"%1\"]").arg(QString(64 << 20, QLatin1Char('x')))));

    // So many bytes take a busy machine a while.
    QTRY_COMPARE_WITH_TIMEOUT(fixture.answers.Count(), 1, 60000);
    QCOMPARE(fixture.answers.LastError(), QStringLiteral("应用的全部内容超过 64 MB，没有保存"));
    QCOMPARE(fixture.server.GetRequests().size(), 0);
}

void SavedWorkTest::doesNotOverwriteWhatANewerClientSaved()
{
    EditorLogicFixture fixture;
    auto newer = fixture.Version(v1, 2);
    newer.apiVersion = QStringLiteral("1.10.0");
    RpaGlobalDataManager::Instance()->SetApiVersion(QStringLiteral("1.9.0"));
    fixture.GivenVersions({newer});

    fixture.Update(fixture.Record(v1, text1));

    QVERIFY(fixture.answers.WaitFor(2));
    QCOMPARE(fixture.answers.LastError(), QStringLiteral("当前版本过低，请更新为最新版本"));
    QCOMPARE(fixture.server.GetRequestCount(), 1);
}

void SavedWorkTest::sendsASaveIntoAVersionThatVanished()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1), fixture.Version(v2, 1)});
    fixture.GivenVersions({fixture.Version(v2, 1)});
    const auto record = fixture.Logic()->GetDevSnapshotManager()->GetSnapshot(v1);
    QVERIFY(record);
    record->SetAppData(text1);

    fixture.Update(record);

    QVERIFY(fixture.answers.WaitFor(3));
    QVERIFY(!fixture.answers.LastSucceeded());
    QCOMPARE(fixture.server.GetRequests().last().method, QByteArray("PUT"));
}

void SavedWorkTest::goesOnAfterAnOverwriteWhoseAnswerWasLost()
{
    // Given: a save that the server did, but whose answer never came
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(FaultServer::Failing(Fault::Silence));
    fixture.Update(fixture.Record(v1, text1));
    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY(!fixture.answers.LastSucceeded());

    // When: the author saves again, and the server sees the lost save as somebody else's
    fixture.server.Enqueue(ChangedByAnother());
    fixture.server.Enqueue(VersionReplies::List({fixture.Version(v1, 2, text1.toUtf8())}));
    fixture.server.Enqueue(VersionReplies::Saved(200, fixture.Version(v1, 3, text2.toUtf8())));
    fixture.Update(fixture.Record(v1, text2));

    // Then: the library finds out that it was the author's own
    QVERIFY(fixture.answers.WaitFor(3));
    QVERIFY2(fixture.answers.LastSucceeded(), qPrintable(fixture.answers.LastError()));
    QCOMPARE(fixture.server.GetRequests().last().headers.value("if-match"), QByteArray("\"2\""));
    QCOMPARE(fixture.server.GetRequests().last().body, text2.toUtf8());
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetBaseRevision(v1), 3);
}

void SavedWorkTest::asksOnlyOnceWhatBecameOfALostOverwrite()
{
    // Given: an overwrite whose answer never came
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(FaultServer::Failing(Fault::Silence));
    fixture.Update(fixture.Record(v1, text1));
    QVERIFY(fixture.answers.WaitFor(2));
    const int before = fixture.server.GetRequests().size();

    // When: the server refuses whatever it is asked, in the words of a conflict
    fixture.server.SetScript([](const FaultServer::Request&) { return ChangedByAnother(); });
    fixture.Update(fixture.Record(v1, text2));

    // Then
    QVERIFY(fixture.answers.WaitFor(3));
    QVERIFY(!fixture.answers.LastSucceeded());
    QCOMPARE(fixture.server.GetRequests().size(), before + 2);
}

void SavedWorkTest::goesOnAfterANewVersionWhoseAnswerWasLost()
{
    EditorLogicFixture fixture;
    auto created = fixture.Version(v1, 1, text1.toUtf8());
    created.name = QStringLiteral("版本1");
    fixture.server.Enqueue(FaultServer::Failing(Fault::Silence));
    fixture.Save(fixture.Record(QString(), text1));
    QVERIFY(fixture.answers.WaitFor(1));

    fixture.server.Enqueue(FaultServer::Refusal(409, "name-taken", QStringLiteral("名称已存在")));
    fixture.server.Enqueue(VersionReplies::List({created}));
    fixture.server.Enqueue(VersionReplies::Saved(200, fixture.Version(v1, 2, text2.toUtf8())));
    const auto record = fixture.Record(QString(), text2);
    fixture.Save(record);

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY2(fixture.answers.LastSucceeded(), qPrintable(fixture.answers.LastError()));
    QCOMPARE(record->GetId(), v1);
    QCOMPARE(fixture.server.GetRequests().last().method, QByteArray("PUT"));
}

void SavedWorkTest::refusesTheNextSaveWhenALostOneWasNotDone()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(FaultServer::Failing(Fault::Silence));
    fixture.Update(fixture.Record(v1, text1));
    QVERIFY(fixture.answers.WaitFor(2));

    fixture.server.Enqueue(ChangedByAnother());
    fixture.server.Enqueue(VersionReplies::List({fixture.Version(v1, 2, R"({"somebody":"else"})")}));
    fixture.Update(fixture.Record(v1, text2));

    QVERIFY(fixture.answers.WaitFor(3));
    QVERIFY(fixture.answers.LastError().startsWith(QStringLiteral("该版本已被他人修改")));
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetBaseRevision(v1), 1);
}

RPA_TEST_MAIN(SavedWorkTest)

#include "tst_savedwork.moc"
