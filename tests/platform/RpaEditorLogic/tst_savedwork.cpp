#include "EditorLogicFixture.h"
#include "TestApp.h"

#include <OxBase/OxBlocker.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/SaveLedger.h>
#include <RpaEditorLogic/VersionServiceSettings.h>

#include <QCryptographicHash>
#include <QSignalSpy>
#include <QtTest>

using namespace std::chrono_literals;
using Fault = FaultServer::Fault;

namespace
{
const QString v1 = QStringLiteral("v1");
const QString v2 = QStringLiteral("v2");
const QString text1 = QStringLiteral("{\"n\":1}");
const QString text2 = QStringLiteral("{\"n\":2}");

QByteArray Sha256(const QString& text)
{
    return QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256).toHex();
}

FaultServer::Reply Late(FaultServer::Reply reply, std::chrono::milliseconds delay = 60ms)
{
    reply.delay = delay;
    return reply;
}

FaultServer::Reply ChangedByAnother()
{
    return FaultServer::Refusal(412, "changed", QStringLiteral("changed"));
}
} // namespace

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
    void refusesAReleaseWhileItsSaveIsInFlight();
    void refusesAReleaseAfterAFailedSave();
    void allowsAReleaseAfterTheVersionWasLoadedAnew();
    void keepsItsBaseWhenAReleaseDidNotTakeEffect();
    void countsAVersionThatIsGoneAlreadyAsDeleted();
    void doesNotCountAForeign404AsDeleted();
    void deletesOnTheSecondTryWhatSomebodyElseChanged();
    void sendsASaveIntoAVersionThatVanished();
    void keepsACreatedVersionInAListThatWasReadBefore();
    void keepsADeletedVersionOutOfAListThatWasReadBefore();
    void answersAnOvertakenListAsTheOneThatIsShown_data();
    void answersAnOvertakenListAsTheOneThatIsShown();
    void keepsASaveOfAnotherAppOutOfTheList();
    void goesOnAfterAnOverwriteWhoseAnswerWasLost();
    void goesOnAfterANewVersionWhoseAnswerWasLost();
    void refusesTheNextSaveWhenALostOneWasNotDone();
    void spacesALoadThatKeepsFailing();
    void spacesALoadThatIsRepeatedThoughItSucceeds();
    void doesNotSpaceAnotherVersion();
    void ledgerFollowsASave();
    void ledgerTellsOfAFailedSave();
    void waitForASaveEndsWithItsAnswer();
    void waitForNothingEndsAtOnce();
    void waitEndsWhenEverythingIsTornDown();
};

void SavedWorkTest::basesASaveOnTheLoadedRevisionThoughTheListMovedOn()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 3)});
    fixture.server.Enqueue(FaultServer::Data("{}", 3));
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
    fixture.server.Enqueue(FaultServer::Data(text1.toUtf8(), 2));

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
    fixture.server.Enqueue(Late(FaultServer::Data("{}", 1)));
    fixture.server.Enqueue(VersionReplies::Saved(200, fixture.Version(v1, 2, text1.toUtf8())));
    const auto record = fixture.Record(v1, text1);

    fixture.Load(v1); // holds the save back
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
    QTest::newRow("a long text") << QStringLiteral("\"%1\"").arg(QString((16 << 20) + 1, QLatin1Char('x')))
                                 << QStringLiteral("文本超过");
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

void SavedWorkTest::refusesAReleaseWhileItsSaveIsInFlight()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1), fixture.Version(v2, 1)});
    fixture.server.Enqueue(Late(VersionReplies::Saved(200, fixture.Version(v1, 2, text1.toUtf8()))));

    fixture.Update(fixture.Record(v1, text1));
    fixture.Release(v1, 2);

    QVERIFY(fixture.answers.WaitFor(3));
    QVERIFY(fixture.answers.At(1).response->IsSuccess());
    QVERIFY(!fixture.answers.At(2).response->IsSuccess());
    QVERIFY(fixture.answers.LastError().contains(QStringLiteral("正在保存")));
    QCOMPARE(fixture.server.GetRequestCount(), 2);
}

void SavedWorkTest::refusesAReleaseAfterAFailedSave()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1), fixture.Version(v2, 1)});
    fixture.server.Enqueue(FaultServer::Refusal(500, "x", QStringLiteral("x")));
    fixture.Update(fixture.Record(v1, text1));
    QVERIFY(fixture.answers.WaitFor(2));

    fixture.Release(v1, 2);
    QVERIFY(fixture.answers.WaitFor(3));
    QVERIFY(fixture.answers.LastError().contains(QStringLiteral("上次保存未成功")));
    fixture.server.Enqueue(VersionReplies::Released(1, false, QString(), fixture.Version(v2, 2)));
    fixture.Release(v2, 2);

    QVERIFY(fixture.answers.WaitFor(4));
    QVERIFY(fixture.answers.LastSucceeded());
}

void SavedWorkTest::allowsAReleaseAfterTheVersionWasLoadedAnew()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(FaultServer::Refusal(500, "x", QStringLiteral("x")));
    fixture.Update(fixture.Record(v1, text1));
    QVERIFY(fixture.answers.WaitFor(2));
    fixture.server.Enqueue(FaultServer::Data("{}", 1));
    fixture.Load(v1);
    QVERIFY(fixture.answers.WaitFor(3));
    fixture.server.Enqueue(VersionReplies::Released(1, false, QString(), fixture.Version(v1, 2)));

    fixture.Release(v1, 2);

    QVERIFY(fixture.answers.WaitFor(4));
    QVERIFY2(fixture.answers.LastSucceeded(), qPrintable(fixture.answers.LastError()));
}

void SavedWorkTest::keepsItsBaseWhenAReleaseDidNotTakeEffect()
{
    // Given: content of revision 1, while somebody else released revision 4
    EditorLogicFixture fixture;
    fixture.server.Enqueue(FaultServer::Data("{}", 1));
    fixture.Load(v1);
    QVERIFY(fixture.answers.WaitFor(1));
    auto online = fixture.Version(v1, 4);
    online.state = 3;
    fixture.server.Enqueue(
        VersionReplies::Released(0, false, QStringLiteral("线上版本不能再次上线。"), online));

    fixture.Release(v1, 2);

    QVERIFY(fixture.answers.WaitFor(2));
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetBaseRevision(v1), 1);
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetSnapshot(v1)->GetState(), AppSnapshotOnline);
}

void SavedWorkTest::countsAVersionThatIsGoneAlreadyAsDeleted()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(FaultServer::Refusal(404, "not-found", QStringLiteral("不存在")));

    fixture.Delete(v1);

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY(fixture.answers.LastSucceeded());
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetCount(), 0);
}

void SavedWorkTest::doesNotCountAForeign404AsDeleted()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(FaultServer::Json(404, "<html>no such page</html>"));

    fixture.Delete(v1);

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY(!fixture.answers.LastSucceeded());
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetCount(), 1);
}

void SavedWorkTest::deletesOnTheSecondTryWhatSomebodyElseChanged()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(ChangedByAnother());
    fixture.server.Enqueue(VersionReplies::List({fixture.Version(v1, 5)}));
    fixture.Delete(v1);
    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY(!fixture.answers.LastSucceeded());
    QTRY_COMPARE(fixture.Logic()->GetDevSnapshotManager()->GetNewestRevision(v1), 5);
    fixture.server.Enqueue(VersionReplies::Deleted());

    fixture.Delete(v1);

    QVERIFY(fixture.answers.WaitFor(3));
    QVERIFY(fixture.answers.LastSucceeded());
    QCOMPARE(fixture.server.GetRequests().last().headers.value("if-match"), QByteArray("\"5\""));
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

void SavedWorkTest::keepsACreatedVersionInAListThatWasReadBefore()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(Late(VersionReplies::List({fixture.Version(v1, 1)}), 150ms));
    fixture.server.Enqueue(VersionReplies::Saved(201, fixture.Version(v2, 1, text1.toUtf8())));

    fixture.List();
    QTRY_COMPARE(fixture.server.GetRequestCount(), 2);
    fixture.Save(fixture.Record(QString(), text1));

    QVERIFY(fixture.answers.WaitFor(3));
    QCOMPARE(fixture.answers.At(1).notifyId, 10019);
    QCOMPARE(fixture.answers.At(2).notifyId, 10022);
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetCount(), 2);
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetSnapshotId(0), v2);
}

void SavedWorkTest::keepsADeletedVersionOutOfAListThatWasReadBefore()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1), fixture.Version(v2, 1)});
    fixture.server.Enqueue(
        Late(VersionReplies::List({fixture.Version(v1, 1), fixture.Version(v2, 1)}), 150ms));
    fixture.server.Enqueue(VersionReplies::Deleted());

    fixture.List();
    QTRY_COMPARE(fixture.server.GetRequestCount(), 2);
    fixture.Delete(v1);

    QVERIFY(fixture.answers.WaitFor(3));
    QCOMPARE(fixture.answers.At(2).notifyId, 10022);
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetCount(), 1);
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetSnapshotId(0), v2);
}

void SavedWorkTest::answersAnOvertakenListAsTheOneThatIsShown_data()
{
    QTest::addColumn<int>("firstDelay");
    QTest::addColumn<int>("secondDelay");

    QTest::newRow("the overtaken one comes first") << 0 << 80;
    QTest::newRow("the overtaken one comes last") << 80 << 0;
}

void SavedWorkTest::answersAnOvertakenListAsTheOneThatIsShown()
{
    QFETCH(const int, firstDelay);
    QFETCH(const int, secondDelay);
    EditorLogicFixture fixture;
    QStringList shownAtDelivery;
    fixture.answers.reaction = [&](const auto&) {
        shownAtDelivery.append(fixture.Logic()->GetDevSnapshotManager()->GetSnapshotId(0));
    };
    auto other = fixture.Version(v2, 1);
    other.appId = QStringLiteral("app2");
    fixture.server.SetScript([=](const FaultServer::Request& request) {
        return request.path.contains("app2")
                   ? Late(VersionReplies::List({other}), std::chrono::milliseconds(secondDelay))
                   : Late(VersionReplies::List({EditorLogicFixture::Version(v1, 1)}),
                          std::chrono::milliseconds(firstDelay));
    });

    fixture.List(QStringLiteral("app1"));
    fixture.List(QStringLiteral("app2"));

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY(fixture.answers.At(0).response->IsSuccess());
    QVERIFY(fixture.answers.At(1).response->IsSuccess());
    QCOMPARE(shownAtDelivery, QStringList({v2, v2}));
}

void SavedWorkTest::keepsASaveOfAnotherAppOutOfTheList()
{
    EditorLogicFixture fixture;
    auto other = fixture.Version(v2, 1);
    other.appId = QStringLiteral("app2");
    fixture.server.Enqueue(Late(VersionReplies::Saved(201, fixture.Version(v1, 1, text1.toUtf8()))));
    fixture.server.Enqueue(VersionReplies::List({other}));

    fixture.Save(fixture.Record(QString(), text1));
    QTRY_COMPARE(fixture.server.GetRequestCount(), 1);
    fixture.List(QStringLiteral("app2"));

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY(fixture.answers.LastSucceeded());
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetCount(), 1);
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetSnapshotId(0), v2);
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
    fixture.server.Enqueue(VersionReplies::List({fixture.Version(v1, 2, "{\"somebody\":\"else\"}")}));
    fixture.Update(fixture.Record(v1, text2));

    QVERIFY(fixture.answers.WaitFor(3));
    QVERIFY(fixture.answers.LastError().startsWith(QStringLiteral("该版本已被他人修改")));
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetBaseRevision(v1), 1);
}

void SavedWorkTest::spacesALoadThatKeepsFailing()
{
    // Given: an observer that answers each failure with the same load, as the editor does
    EditorLogicFixture fixture;
    VersionServiceSettings::Instance()->SetRepeatSpacing({40ms, 100ms});
    fixture.answers.reaction = [&](const auto&) {
        if (fixture.answers.Count() < 5)
            fixture.Load(v1);
    };
    QElapsedTimer time;
    time.start();

    fixture.Load(v1);

    QVERIFY(fixture.answers.WaitFor(5));
    QVERIFY(time.elapsed() >= 40 + 80 + 100 + 100); // doubled, up to the longest
    QCOMPARE(fixture.server.GetRequestCount(), 5);
}

void SavedWorkTest::spacesALoadThatIsRepeatedThoughItSucceeds()
{
    EditorLogicFixture fixture;
    VersionServiceSettings::Instance()->SetRepeatSpacing({40ms, 100ms});
    fixture.server.SetScript([](const auto&) { return FaultServer::Data("{}", 1); });
    fixture.answers.reaction = [&](const auto&) {
        if (fixture.answers.Count() < 8)
            fixture.Load(v1);
    };
    QElapsedTimer time;
    time.start();

    fixture.Load(v1);

    QVERIFY(fixture.answers.WaitFor(8));
    QVERIFY(time.elapsed() >= 40 + 80 + 100);
}

void SavedWorkTest::doesNotSpaceAnotherVersion()
{
    EditorLogicFixture fixture;
    VersionServiceSettings::Instance()->SetRepeatSpacing({5000ms, 5000ms});
    fixture.Load(v1);
    QVERIFY(fixture.answers.WaitFor(1));
    QElapsedTimer time;
    time.start();

    fixture.Load(v2);

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY(time.elapsed() < 2000);
}

void SavedWorkTest::ledgerFollowsASave()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    auto* ledger = fixture.Logic()->GetSaveLedger();
    QSignalSpy confirmed(ledger, &SaveLedger::SigSaveConfirmed);
    QSignalSpy idle(ledger, &SaveLedger::SigIdle);
    SaveLedger::Outcome outcomeAtDelivery = SaveLedger::Outcome::Unknown;
    bool inFlightAtDelivery = false;
    fixture.answers.reaction = [&](const auto&) {
        outcomeAtDelivery = ledger->GetOutcome(v1);
        inFlightAtDelivery = ledger->HasSavesInFlight();
    };
    fixture.server.Enqueue(VersionReplies::Saved(200, fixture.Version(v1, 2, text1.toUtf8())));
    QVERIFY(!ledger->HasSavesInFlight());

    fixture.Update(fixture.Record(v1, text1));
    QVERIFY(ledger->HasSavesInFlight());
    QCOMPARE(ledger->GetOutcome(v1), SaveLedger::Outcome::InFlight);

    QVERIFY(fixture.answers.WaitFor(2));
    QCOMPARE(outcomeAtDelivery, SaveLedger::Outcome::Confirmed);
    QVERIFY(inFlightAtDelivery); // whoever waits for the answer must hear it first
    QCOMPARE(ledger->GetConfirmedSha256(v1), Sha256(text1));
    QCOMPARE(confirmed.value(0), QVariantList({QStringLiteral("app1"), v1, 2, Sha256(text1)}));
    QCOMPARE(idle.count(), 1);
    QVERIFY(!ledger->HasSavesInFlight());
}

void SavedWorkTest::ledgerTellsOfAFailedSave()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    auto* ledger = fixture.Logic()->GetSaveLedger();
    QSignalSpy failed(ledger, &SaveLedger::SigSaveFailed);
    fixture.server.Enqueue(ChangedByAnother());

    fixture.Update(fixture.Record(v1, text1));

    QVERIFY(fixture.answers.WaitFor(2));
    QCOMPARE(failed.count(), 1);
    QCOMPARE(failed.value(0).value(1).toString(), v1);
    QCOMPARE(ledger->GetOutcome(v1), SaveLedger::Outcome::Failed);
    QVERIFY(ledger->GetConfirmedSha256(v1).isEmpty());
    QVERIFY(!ledger->HasSavesInFlight());
}

void SavedWorkTest::waitForASaveEndsWithItsAnswer()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(Late(VersionReplies::Saved(200, fixture.Version(v1, 2, text1.toUtf8()))));
    OxBlocker blocker;
    fixture.answers.reaction = [&](const AnswerRecorder::Answer& answer) {
        blocker.ContinueWith(answer.response->IsSuccess());
    };

    fixture.Update(fixture.Record(v1, text1));
    blocker.Block(0);

    QVERIFY(blocker.GetResult().toBool());
}

void SavedWorkTest::waitForNothingEndsAtOnce()
{
    EditorLogicFixture fixture;
    QVERIFY(!fixture.Logic()->GetSaveLedger()->HasSavesInFlight());
    QElapsedTimer time;
    time.start();
    OxBlocker blocker;

    blocker.Block(0);

    QVERIFY(!blocker.GetResult().isValid());
    QVERIFY(time.elapsed() < 2000);
}

void SavedWorkTest::waitEndsWhenEverythingIsTornDown()
{
    EditorLogicFixture fixture;
    fixture.server.SetScript([](const auto&) { return FaultServer::Failing(Fault::Silence); });
    fixture.Update(fixture.Record(v1, text1));
    OxBlocker blocker;
    QTimer::singleShot(30, &blocker, [&fixture] { fixture.Logic()->Shutdown(); });

    blocker.Block(0);

    QVERIFY(!blocker.GetResult().isValid());
    QCOMPARE(fixture.answers.Count(), 1);
}

RPA_TEST_MAIN(SavedWorkTest)
#include "tst_savedwork.moc"
