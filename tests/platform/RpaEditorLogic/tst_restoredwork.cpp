// SPDX-License-Identifier: Apache-2.0

#include "EditorLogicFixture.h"
#include "TestApp.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaEditorCore/RpaSnapshotManager.h>

#include <QCryptographicHash>
#include <QtTest>

namespace
{
const QString v1 = QStringLiteral("v1");
const QString v2 = QStringLiteral("v2");
const QByteArray loaded = VersionReplies::App();
const QByteArray restored = R"({"version":"0.9.0"})";

RestoredContent Work(const QString& versionId, int baseRevision)
{
    return {versionId, baseRevision, restored, {versionId, baseRevision, QStringLiteral("a.draft")}};
}

QByteArray Sha256(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}
} // namespace

// Unsaved work on its way back into an editor.
class RestoredWorkTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { RpaEditorLogic::Instance()->Forget(); }

    void tellsWhereLoadedContentComesFrom();
    void bringsTheWorkInsteadOfTheContentOnce();
    void listsItsVersionFirst();
    void letsOtherVersionsBe();
    void savesOverItsBaseOnly();
    void goesOnFromASaveOfItsOwn_data();
    void goesOnFromASaveOfItsOwn();
    void recognisesItsOwnSaveThatIsDoneAfterTheLoad();
    void savesIntoNoVersionThatItIsNotBasedOn();
    void savesAgainOnceTheVersionWasLoaded();
    void comesNotAfterItWasWithdrawn();
    void comesWhenALoadFailedBefore();

private:
    // What the observer of a load makes of it, as an editor does.
    static RpaAppDataPtr LoadInto(EditorLogicFixture& fixture, const QString& id, int revision);
};

RpaAppDataPtr RestoredWorkTest::LoadInto(EditorLogicFixture& fixture, const QString& id, int revision)
{
    auto app = RpaAppDataPtr::create();
    fixture.answers.reaction = [app](const AnswerRecorder::Answer& answer) {
        const auto* response = qobject_cast<GetDevSnapshotDataResponse*>(answer.response.data());
        if (!response || !response->IsSuccess())
            return;
        app->InitDefault();
        app->Parse(response->GetAppData());
        app->SetModified(false);
    };
    fixture.server.Enqueue(FaultServer::Data(loaded, revision));
    const int before = fixture.answers.Count();
    fixture.Load(id);
    if (!fixture.answers.WaitFor(before + 1))
        QTest::qFail("the load was not answered", __FILE__, __LINE__);
    fixture.answers.reaction = nullptr;
    return app;
}

void RestoredWorkTest::tellsWhereLoadedContentComesFrom()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 3)});

    const RpaAppDataPtr app = LoadInto(fixture, v1, 3);

    QCOMPARE(app->GetVersion(), QStringLiteral("1.0.0"));
    QCOMPARE(app->GetOrigin().versionId, v1);
    QCOMPARE(app->GetOrigin().baseRevision, 3);
    QVERIFY(!app->GetModified());
}

void RestoredWorkTest::bringsTheWorkInsteadOfTheContentOnce()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 3)});
    fixture.Logic()->Restore(Work(v1, 3));

    const RpaAppDataPtr app = LoadInto(fixture, v1, 3);
    const RpaAppDataPtr next = LoadInto(fixture, v1, 3);

    QCOMPARE(app->GetVersion(), QStringLiteral("0.9.0"));
    QVERIFY(app->GetModified());
    QCOMPARE(app->GetOrigin().draftName, QStringLiteral("a.draft"));
    QCOMPARE(next->GetVersion(), QStringLiteral("1.0.0"));
    QVERIFY(!next->GetModified());
}

void RestoredWorkTest::listsItsVersionFirst()
{
    EditorLogicFixture fixture;
    fixture.Logic()->Restore(Work(v2, 1));

    fixture.GivenVersions({fixture.Version(v1, 1), fixture.Version(v2, 1)});
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetSnapshotId(0), v2);

    LoadInto(fixture, v2, 1);
    fixture.GivenVersions({fixture.Version(v1, 1), fixture.Version(v2, 1)});
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetSnapshotId(0), v1);
}

void RestoredWorkTest::letsOtherVersionsBe()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1), fixture.Version(v2, 1)});
    fixture.Logic()->Restore(Work(v2, 1));

    QCOMPARE(LoadInto(fixture, v1, 1)->GetVersion(), QStringLiteral("1.0.0"));
    QCOMPARE(LoadInto(fixture, v2, 1)->GetVersion(), QStringLiteral("0.9.0"));
}

void RestoredWorkTest::savesOverItsBaseOnly()
{
    // given work that is based on revision 3 of a version that is at revision 5
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 5)});
    fixture.Logic()->Restore(Work(v1, 3));
    LoadInto(fixture, v1, 5);
    fixture.server.Enqueue(FaultServer::Refusal(412, "revision-changed", QStringLiteral("changed")));

    // when
    const int before = fixture.answers.Count();
    fixture.Update(fixture.Record(v1, QString::fromUtf8(restored)));

    // then the server is asked to replace that revision, which it refuses
    QVERIFY(fixture.answers.WaitFor(before + 1));
    QVERIFY(!fixture.answers.LastSucceeded());
    QCOMPARE(fixture.server.GetRequests().last().headers.value("if-match"), QByteArray("\"3\""));
}

void RestoredWorkTest::goesOnFromASaveOfItsOwn_data()
{
    QTest::addColumn<QString>("madeFrom");
    QTest::addColumn<int>("baseRevision");
    QTest::newRow("of its version") << v1 << 3;
    QTest::newRow("that made its version") << QString() << 0;
}

void RestoredWorkTest::goesOnFromASaveOfItsOwn()
{
    // given work that goes on from what the version holds at revision 4
    QFETCH(const QString, madeFrom);
    QFETCH(const int, baseRevision);
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 4)});
    RestoredContent work = Work(v1, baseRevision);
    work.origin.versionId = madeFrom;
    work.origin.inDoubt = {Sha256("something else"), Sha256(loaded)};
    fixture.Logic()->Restore(work);

    const RpaAppDataPtr app = LoadInto(fixture, v1, 4);
    fixture.server.Enqueue(VersionReplies::Saved(200, fixture.Version(v1, 5, app->ToJson())));
    const int before = fixture.answers.Count();
    fixture.Update(fixture.Record(v1, QString::fromUtf8(app->ToJson())));

    QVERIFY(fixture.answers.WaitFor(before + 1));
    QVERIFY2(fixture.answers.LastSucceeded(), qPrintable(fixture.answers.LastError()));
    QCOMPARE(fixture.server.GetRequests().last().headers.value("if-match"), QByteArray("\"4\""));
    QCOMPARE(app->GetOrigin().versionId, v1);
    QCOMPARE(app->GetOrigin().draftName, QStringLiteral("a.draft"));
    QCOMPARE(app->GetVersion(), QStringLiteral("0.9.0"));
}

void RestoredWorkTest::recognisesItsOwnSaveThatIsDoneAfterTheLoad()
{
    // given work of which a save was on its way when its workstation ended
    const QByteArray sent = VersionReplies::App("\"n\":7");
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 3)});
    RestoredContent work = Work(v1, 3);
    work.origin.inDoubt = {Sha256(sent)};
    fixture.Logic()->Restore(work);
    LoadInto(fixture, v1, 3);

    // when the server does it only now
    fixture.server.Enqueue(FaultServer::Refusal(412, "revision-changed", QStringLiteral("changed")));
    fixture.server.Enqueue(VersionReplies::List({fixture.Version(v1, 4, sent)}));
    fixture.server.Enqueue(VersionReplies::Saved(200, fixture.Version(v1, 5, restored)));
    const int before = fixture.answers.Count();
    fixture.Update(fixture.Record(v1, QString::fromUtf8(restored)));

    QVERIFY(fixture.answers.WaitFor(before + 1));
    QVERIFY2(fixture.answers.LastSucceeded(), qPrintable(fixture.answers.LastError()));
}

void RestoredWorkTest::savesIntoNoVersionThatItIsNotBasedOn()
{
    // given work of a version that is gone, shown as another one
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 5)});
    fixture.Logic()->Restore(Work(v1, 0));
    LoadInto(fixture, v1, 5);
    const int sent = fixture.server.GetRequests().size();

    // when
    const int before = fixture.answers.Count();
    fixture.Update(fixture.Record(v1, QString::fromUtf8(restored)));

    // then it is not even sent
    QVERIFY(fixture.answers.WaitFor(before + 1));
    QVERIFY(!fixture.answers.LastSucceeded());
    QVERIFY(fixture.answers.LastError().contains(QStringLiteral("请另存为新版本")));
    QCOMPARE(fixture.server.GetRequests().size(), sent);
}

void RestoredWorkTest::savesAgainOnceTheVersionWasLoaded()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 5)});
    fixture.Logic()->Restore(Work(v1, 0));
    LoadInto(fixture, v1, 5);
    LoadInto(fixture, v1, 5);
    fixture.server.Enqueue(VersionReplies::Saved(200, fixture.Version(v1, 6, loaded)));

    const int before = fixture.answers.Count();
    fixture.Update(fixture.Record(v1, QString::fromUtf8(loaded)));

    QVERIFY(fixture.answers.WaitFor(before + 1));
    QVERIFY2(fixture.answers.LastSucceeded(), qPrintable(fixture.answers.LastError()));
}

void RestoredWorkTest::comesNotAfterItWasWithdrawn()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 3)});
    fixture.Logic()->Restore(Work(v1, 3));

    fixture.Logic()->ForgetRestored();

    QCOMPARE(LoadInto(fixture, v1, 3)->GetVersion(), QStringLiteral("1.0.0"));
}

void RestoredWorkTest::comesWhenALoadFailedBefore()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 3)});
    fixture.Logic()->Restore(Work(v1, 3));
    fixture.server.Enqueue(FaultServer::Refusal(500, "broken", QStringLiteral("broken")));
    const int before = fixture.answers.Count();
    fixture.Load(v1);
    QVERIFY(fixture.answers.WaitFor(before + 1));
    QVERIFY(!fixture.answers.LastSucceeded());

    QCOMPARE(LoadInto(fixture, v1, 3)->GetVersion(), QStringLiteral("0.9.0"));
}

RPA_TEST_MAIN(RestoredWorkTest)
#include "tst_restoredwork.moc"
