// SPDX-License-Identifier: Apache-2.0

#include "EditorLogicFixture.h"
#include "TestApp.h"

#include <OxBase/OxBlocker.h>
#include <OxHttp/HttpNotifyManager.h>
#include <RpaEditorLogic/SaveLedger.h>
#include <RpaServiceClient/VersionServiceSettings.h>

#include <QCryptographicHash>
#include <QSignalSpy>
#include <QtTest>

using namespace std::chrono_literals;
using namespace VersionExamples;

namespace
{
QByteArray Sha256(const QString& text)
{
    return QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256).toHex();
}
// Whether the load of the version was answered so often.
bool WaitForData(const AnswerRecorder& answers, const QString& id, int count)
{
    return QTest::qWaitFor([&] {
        int found = 0;
        for (int i = 0; i < answers.Count(); ++i) {
            const auto data = answers.At(i).request.dynamicCast<GetDevSnapshotDataRequest>();
            found += data && data->GetSnapshotId() == id ? 1 : 0;
        }
        return found >= count;
    });
}
} // namespace

// Loads that are spaced, the ledger of saves, and waiting for its end.
class SavedWorkWaitingTest : public QObject
{
    Q_OBJECT

private slots:
    void spacesALoadThatKeepsFailing();
    void spacesALoadThatIsRepeatedThoughItSucceeds();
    void doesNotSpaceAnotherVersion();
    void dropsARepeatWhenWhoeverAskedIsGone_data();
    void dropsARepeatWhenWhoeverAskedIsGone();
    void sendsNoRepeatToAnotherService();
    void ledgerFollowsASave();
    void ledgerTellsOfAFailedSave();
    void waitForASaveEndsWithItsAnswer();
    void waitForNothingEndsAtOnce();
    void waitEndsWhenEverythingIsTornDown();
};

void SavedWorkWaitingTest::spacesALoadThatKeepsFailing()
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

void SavedWorkWaitingTest::spacesALoadThatIsRepeatedThoughItSucceeds()
{
    EditorLogicFixture fixture;
    VersionServiceSettings::Instance()->SetRepeatSpacing({40ms, 100ms});
    fixture.server.SetScript([](const auto&) { return FaultServer::Data(VersionReplies::App(), 1); });
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

void SavedWorkWaitingTest::dropsARepeatWhenWhoeverAskedIsGone_data()
{
    QTest::addColumn<bool>("isList");
    QTest::newRow("list") << true;
    QTest::newRow("data") << false;
}

void SavedWorkWaitingTest::dropsARepeatWhenWhoeverAskedIsGone()
{
    // Given: an editor that asked again for what failed, and was closed while that waited
    QFETCH(bool, isList);
    EditorLogicFixture fixture;
    VersionServiceSettings::Instance()->SetRepeatSpacing({40ms, 40ms});
    fixture.server.SetScript(
        [](const auto&) { return FaultServer::Refusal(500, "broken", QStringLiteral("x")); });
    const auto ask = [&] { isList ? fixture.List(QStringLiteral("app1")) : fixture.Load(v1); };
    ask();
    QVERIFY(fixture.answers.WaitFor(1));
    ask();
    HttpNotifyManager::Instance()->RemoveAllMessage(&fixture.answers);

    // When: the next editor works, and its own repeat has been answered
    AnswerRecorder next;
    fixture.Load(v2);
    QVERIFY(WaitForData(next, v2, 1));
    fixture.Load(v2);
    QVERIFY(WaitForData(next, v2, 2));

    // Then: nobody was asked for what the first one waited for
    QCOMPARE(fixture.server.GetRequestCount(), 3);
}

void SavedWorkWaitingTest::sendsNoRepeatToAnotherService()
{
    EditorLogicFixture fixture;
    VersionServiceSettings::Instance()->SetRepeatSpacing({40ms, 40ms});
    fixture.Load(v1);
    QVERIFY(fixture.answers.WaitFor(1));
    fixture.Load(v1);
    FaultServer other;
    VersionServiceSettings::Instance()->SetBaseUrl(other.GetUrl());

    QVERIFY(fixture.answers.WaitFor(2));

    QVERIFY(!fixture.answers.LastSucceeded());
    QCOMPARE(fixture.server.GetRequestCount(), 1);
    QCOMPARE(other.GetRequestCount(), 0);
}

void SavedWorkWaitingTest::doesNotSpaceAnotherVersion()
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

void SavedWorkWaitingTest::ledgerFollowsASave()
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

void SavedWorkWaitingTest::ledgerTellsOfAFailedSave()
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

void SavedWorkWaitingTest::waitForASaveEndsWithItsAnswer()
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

void SavedWorkWaitingTest::waitForNothingEndsAtOnce()
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

void SavedWorkWaitingTest::waitEndsWhenEverythingIsTornDown()
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

RPA_TEST_MAIN(SavedWorkWaitingTest)

#include "tst_savedwork_waiting.moc"
