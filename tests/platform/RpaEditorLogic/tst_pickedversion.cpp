// SPDX-License-Identifier: Apache-2.0

#include "EditorLogicFixture.h"
#include "TestApp.h"

#include <RpaEditorCore/RpaEditorNotify.h>
#include <RpaEditorLogic/RpaNotifyId.h>

#include <QtTest>

using namespace VersionExamples;

// Who keeps unsaved work learns that its author went to another version, and is not told so of any other load.
class PickedVersionTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void tellsOfALoadThatIsAskedForByItself();
    void saysNothingOfALoadThatAnAnswerLedTo_data();
    void saysNothingOfALoadThatAnAnswerLedTo();
    void saysNothingWhileAnotherLoadIsUnderWay();

private:
    void WillLoad(int count);

    std::unique_ptr<EditorLogicFixture> fixture;
    std::unique_ptr<QSignalSpy> picked;
};

void PickedVersionTest::init()
{
    fixture = std::make_unique<EditorLogicFixture>();
    fixture->GivenVersions({fixture->Version(v1), fixture->Version(v2)});
    picked = std::make_unique<QSignalSpy>(RpaEditorNotify::Instance(), &RpaEditorNotify::SigVersionPicked);
}

void PickedVersionTest::cleanup()
{
    fixture.reset();
}

void PickedVersionTest::WillLoad(int count)
{
    for (int load = 0; load < count; ++load)
        fixture->server.Enqueue(FaultServer::Data(VersionReplies::App(), 1));
}

void PickedVersionTest::tellsOfALoadThatIsAskedForByItself()
{
    WillLoad(1);

    fixture->Load(v2);

    QCOMPARE(picked->size(), 1);
    QCOMPARE(picked->first().first().toString(), v2);
    QVERIFY(fixture->answers.WaitFor(2));
}

void PickedVersionTest::saysNothingOfALoadThatAnAnswerLedTo_data()
{
    QTest::addColumn<bool>("isDeletion");
    QTest::newRow("a list") << false;
    QTest::newRow("a deletion") << true;
}

void PickedVersionTest::saysNothingOfALoadThatAnAnswerLedTo()
{
    // given an observer that loads when it hears the answer, as an editor does
    QFETCH(const bool, isDeletion);
    fixture->answers.reaction = [this](const AnswerRecorder::Answer& answer) {
        if (answer.notifyId != NotifyGetDevSnapshotData)
            fixture->Load(v2);
    };
    fixture->server.Enqueue(isDeletion ? VersionReplies::Deleted()
                                       : VersionReplies::List({fixture->Version(v2)}));
    WillLoad(1);

    if (isDeletion)
        fixture->Delete(v1);
    else
        fixture->List();

    QVERIFY(fixture->answers.WaitFor(3));
    QVERIFY(fixture->answers.LastSucceeded());
    QCOMPARE(picked->size(), 0);
}

void PickedVersionTest::saysNothingWhileAnotherLoadIsUnderWay()
{
    WillLoad(3);

    fixture->Load(v1);
    fixture->Load(v2);
    QVERIFY(fixture->answers.WaitFor(3));
    QCOMPARE(picked->size(), 1);

    fixture->Load(v2);
    QCOMPARE(picked->size(), 2);
    QVERIFY(fixture->answers.WaitFor(4));
}

RPA_TEST_MAIN(PickedVersionTest)
#include "tst_pickedversion.moc"
