// SPDX-License-Identifier: Apache-2.0

#include "EditorLogicFixture.h"
#include "TestApp.h"

#include <RpaEditorCore/RpaSnapshotManager.h>

#include <QtTest>

using namespace VersionExamples;

namespace
{
FaultServer::Reply Held(FaultServer::Reply reply)
{
    reply.isHeld = true;
    return reply;
}
} // namespace

// A list that crosses with saves, deletions and another list.
class SavedWorkListsTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsACreatedVersionInAListThatWasReadBefore();
    void keepsADeletedVersionOutOfAListThatWasReadBefore();
    void failsAListThatWasOvertakenByAnotherApp_data();
    void failsAListThatWasOvertakenByAnotherApp();
    void keepsASaveOfAnotherAppOutOfTheList();
};

void SavedWorkListsTest::keepsACreatedVersionInAListThatWasReadBefore()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(Held(VersionReplies::List({fixture.Version(v1, 1)})));
    fixture.server.Enqueue(VersionReplies::Saved(201, fixture.Version(v2, 1, text1.toUtf8())));

    fixture.List();
    QTRY_COMPARE(fixture.server.GetRequestCount(), 2);
    fixture.Save(fixture.Record(QString(), text1));
    QVERIFY(fixture.answers.WaitFor(2));
    fixture.server.AnswerHeld();

    QVERIFY(fixture.answers.WaitFor(3));
    QCOMPARE(fixture.answers.At(1).notifyId, 10019);
    QCOMPARE(fixture.answers.At(2).notifyId, 10022);
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetCount(), 2);
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetSnapshotId(0), v2);
}

void SavedWorkListsTest::keepsADeletedVersionOutOfAListThatWasReadBefore()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1), fixture.Version(v2, 1)});
    fixture.server.Enqueue(Held(VersionReplies::List({fixture.Version(v1, 1), fixture.Version(v2, 1)})));
    fixture.server.Enqueue(VersionReplies::Deleted());

    fixture.List();
    QTRY_COMPARE(fixture.server.GetRequestCount(), 2);
    fixture.Delete(v1);
    QVERIFY(fixture.answers.WaitFor(2));
    fixture.server.AnswerHeld();

    QVERIFY(fixture.answers.WaitFor(3));
    QCOMPARE(fixture.answers.At(2).notifyId, 10022);
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetCount(), 1);
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetSnapshotId(0), v2);
}

void SavedWorkListsTest::failsAListThatWasOvertakenByAnotherApp_data()
{
    QTest::addColumn<int>("firstDelay");
    QTest::addColumn<int>("secondDelay");

    QTest::newRow("the overtaken one comes first") << 0 << 80;
    QTest::newRow("the overtaken one comes last") << 80 << 0;
}

void SavedWorkListsTest::failsAListThatWasOvertakenByAnotherApp()
{
    QFETCH(const int, firstDelay);
    QFETCH(const int, secondDelay);
    EditorLogicFixture fixture;
    QHash<QString, bool> outcomes;
    fixture.answers.reaction = [&](const AnswerRecorder::Answer& answer) {
        const auto* list = qobject_cast<GetSnapshotListRequest*>(answer.request.data());
        outcomes.insert(list->GetAppId(), answer.response->IsSuccess());
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
    QCOMPARE(outcomes,
             (QHash<QString, bool>{{QStringLiteral("app1"), false}, {QStringLiteral("app2"), true}}));
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetSnapshotId(0), v2);
}

void SavedWorkListsTest::keepsASaveOfAnotherAppOutOfTheList()
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

RPA_TEST_MAIN(SavedWorkListsTest)

#include "tst_savedwork_lists.moc"
