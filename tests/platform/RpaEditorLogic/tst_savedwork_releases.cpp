// SPDX-License-Identifier: Apache-2.0

#include "EditorLogicFixture.h"
#include "TestApp.h"

#include <RpaEditorCore/RpaSnapshotManager.h>

#include <QtTest>

using namespace VersionExamples;

// Releasing and deleting only what the author has seen.
class SavedWorkReleasesTest : public QObject
{
    Q_OBJECT

private slots:
    void refusesAReleaseWhileItsSaveIsInFlight();
    void refusesAReleaseAfterAFailedSave();
    void allowsAReleaseOfAVersionThatTakesNoMoreSaves();
    void remembersALostSaveThoughTheVersionTakesNoMore();
    void allowsAReleaseAfterTheVersionWasLoadedAnew();
    void keepsItsBaseWhenAReleaseDidNotTakeEffect();
    void countsAVersionThatIsGoneAlreadyAsDeleted();
    void doesNotCountAForeign404AsDeleted();
    void deletesOnTheSecondTryWhatSomebodyElseChanged();
};

void SavedWorkReleasesTest::refusesAReleaseWhileItsSaveIsInFlight()
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

void SavedWorkReleasesTest::refusesAReleaseAfterAFailedSave()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1), fixture.Version(v2, 1)});
    fixture.server.Enqueue(FaultServer::Refusal(500, "x", QStringLiteral("x")));
    fixture.Update(fixture.Record(v1, text1));
    QVERIFY(fixture.answers.WaitFor(2));

    fixture.Release(v1, 2);
    QVERIFY(fixture.answers.WaitFor(3));
    QVERIFY(fixture.answers.LastError().contains(QStringLiteral("上次保存未成功")));
    fixture.server.Enqueue(FaultServer::Data(VersionReplies::App(), 1));
    fixture.server.Enqueue(VersionReplies::Released(1, false, QString(), fixture.Version(v2, 2)));
    fixture.Release(v2, 2);

    QVERIFY(fixture.answers.WaitFor(4));
    QVERIFY(fixture.answers.LastSucceeded());
}

void SavedWorkReleasesTest::allowsAReleaseOfAVersionThatTakesNoMoreSaves()
{
    EditorLogicFixture fixture;
    auto gray = fixture.Version(v1, 2);
    gray.state = AppSnapshotGray;
    fixture.GivenVersions({gray});
    fixture.server.Enqueue(FaultServer::Refusal(409, "not-develop", QStringLiteral("已灰度")));
    fixture.Update(fixture.Record(v1, text1));
    QVERIFY(fixture.answers.WaitFor(2));
    QCOMPARE(fixture.answers.LastError(), QStringLiteral("已灰度"));
    gray.state = AppSnapshotOnline;
    gray.revision = 3;
    fixture.server.Enqueue(FaultServer::Data(VersionReplies::App(), 2));
    fixture.server.Enqueue(VersionReplies::Released(1, false, QString(), gray));

    fixture.Release(v1, 2);

    QVERIFY(fixture.answers.WaitFor(3));
    QVERIFY2(fixture.answers.LastSucceeded(), qPrintable(fixture.answers.LastError()));
}

void SavedWorkReleasesTest::remembersALostSaveThoughTheVersionTakesNoMore()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(FaultServer::Refusal(500, "x", QStringLiteral("x")));
    fixture.server.Enqueue(FaultServer::Refusal(409, "not-develop", QStringLiteral("已灰度")));
    fixture.Update(fixture.Record(v1, text1));
    fixture.Update(fixture.Record(v1, text2));
    QVERIFY(fixture.answers.WaitFor(3));

    fixture.Release(v1, 2);

    QVERIFY(fixture.answers.WaitFor(4));
    QVERIFY(fixture.answers.LastError().contains(QStringLiteral("上次保存未成功")));
}

void SavedWorkReleasesTest::allowsAReleaseAfterTheVersionWasLoadedAnew()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(FaultServer::Refusal(500, "x", QStringLiteral("x")));
    fixture.Update(fixture.Record(v1, text1));
    QVERIFY(fixture.answers.WaitFor(2));
    fixture.server.Enqueue(FaultServer::Data(VersionReplies::App(), 1));
    fixture.Load(v1);
    QVERIFY(fixture.answers.WaitFor(3));
    fixture.server.Enqueue(FaultServer::Data(VersionReplies::App(), 1));
    fixture.server.Enqueue(VersionReplies::Released(1, false, QString(), fixture.Version(v1, 2)));

    fixture.Release(v1, 2);

    QVERIFY(fixture.answers.WaitFor(4));
    QVERIFY2(fixture.answers.LastSucceeded(), qPrintable(fixture.answers.LastError()));
}

void SavedWorkReleasesTest::keepsItsBaseWhenAReleaseDidNotTakeEffect()
{
    // Given: content of revision 1, while somebody else released revision 4
    EditorLogicFixture fixture;
    fixture.server.Enqueue(FaultServer::Data(VersionReplies::App(), 1));
    fixture.Load(v1);
    QVERIFY(fixture.answers.WaitFor(1));
    auto online = fixture.Version(v1, 4);
    online.state = 3;
    fixture.server.Enqueue(FaultServer::Data(VersionReplies::App(), 4));
    fixture.server.Enqueue(
        VersionReplies::Released(0, false, QStringLiteral("线上版本不能再次上线。"), online));

    fixture.Release(v1, 2);

    QVERIFY(fixture.answers.WaitFor(2));
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetBaseRevision(v1), 1);
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetSnapshot(v1)->GetState(), AppSnapshotOnline);
}

void SavedWorkReleasesTest::countsAVersionThatIsGoneAlreadyAsDeleted()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(FaultServer::Refusal(404, "not-found", QStringLiteral("不存在")));

    fixture.Delete(v1);

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY(fixture.answers.LastSucceeded());
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetCount(), 0);
}

void SavedWorkReleasesTest::doesNotCountAForeign404AsDeleted()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(FaultServer::Json(404, "<html>no such page</html>"));

    fixture.Delete(v1);

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY(!fixture.answers.LastSucceeded());
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetCount(), 1);
}

void SavedWorkReleasesTest::deletesOnTheSecondTryWhatSomebodyElseChanged()
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

RPA_TEST_MAIN(SavedWorkReleasesTest)

#include "tst_savedwork_releases.moc"
