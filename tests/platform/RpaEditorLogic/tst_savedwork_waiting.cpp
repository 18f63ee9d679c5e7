#include "EditorLogicFixture.h"
#include "TestApp.h"

#include <OxBase/OxBlocker.h>
#include <RpaEditorLogic/SaveLedger.h>
#include <RpaEditorLogic/VersionServiceSettings.h>

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
} // namespace

// Loads that are spaced, the ledger of saves, and waiting for its end.
class SavedWorkWaitingTest : public QObject
{
    Q_OBJECT

private slots:
    void spacesALoadThatKeepsFailing();
    void spacesALoadThatIsRepeatedThoughItSucceeds();
    void doesNotSpaceAnotherVersion();
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
