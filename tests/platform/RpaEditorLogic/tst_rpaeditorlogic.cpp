// SPDX-License-Identifier: Apache-2.0

#include "EditorLogicFixture.h"
#include "TestApp.h"

#include <RpaEditorCore/RpaSnapshotManager.h>

#include <QtTest>

using namespace VersionExamples;

namespace
{
QByteArray HeaderOf(const FaultServer& server, const char* name)
{
    return server.GetRequests().last().headers.value(name);
}
} // namespace

// What goes over the wire, and what an answer does to the manager.
class RpaEditorLogicTest : public QObject
{
    Q_OBJECT

private slots:
    void fillsTheManagerBeforeTheListAnswerIsDelivered();
    void createsAVersion();
    void overwritesAVersion();
    void sendsNamesThatAreNotAscii();
    void deletesAVersion();
    void loadsTheDataOfAVersion();
    void releasesAVersion_data();
    void releasesAVersion();
    void reportsAReleaseThatDidNotTakeEffect();
    void answersWithTheRequestItWasGiven();
    void neverAnswersInsideTheCall();
    void refusesRequestsThatCannotBeSent();
    void answersEverythingAtTearDown();
    void worksAgainAfterTearDown();
};

void RpaEditorLogicTest::fillsTheManagerBeforeTheListAnswerIsDelivered()
{
    EditorLogicFixture fixture;
    int countAtDelivery = -1;
    fixture.answers.reaction = [&](const auto&) {
        countAtDelivery = fixture.Logic()->GetDevSnapshotManager()->GetCount();
    };
    fixture.server.Enqueue(VersionReplies::List({fixture.Version(v2), fixture.Version(v1)}));

    fixture.List();

    QVERIFY(fixture.answers.WaitFor(1));
    QVERIFY(fixture.answers.LastSucceeded());
    QCOMPARE(fixture.answers.Last().notifyId, 10022);
    QCOMPARE(countAtDelivery, 2);
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetSnapshotId(0), v2);
    QCOMPARE(fixture.server.GetRequests().last().path, QByteArray("/api/v1/apps/app1/versions"));
    QCOMPARE(HeaderOf(fixture.server, "authorization"), QByteArray("Bearer token"));
}

void RpaEditorLogicTest::createsAVersion()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1)});
    bool listedAtDelivery = false;
    fixture.answers.reaction = [&](const auto&) {
        listedAtDelivery = !fixture.Logic()->GetDevSnapshotManager()->GetSnapshot(v2).isNull();
    };
    fixture.server.Enqueue(VersionReplies::Saved(201, fixture.Version(v2, 1, "{\"a\":1}")));
    const auto record = fixture.Record(QString(), QStringLiteral("{\"a\":1}"), QStringLiteral("new"));

    fixture.Save(record);

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY2(fixture.answers.LastSucceeded(), qPrintable(fixture.answers.LastError()));
    QCOMPARE(fixture.answers.Last().notifyId, 10019);
    QVERIFY(listedAtDelivery);
    QCOMPARE(record->GetId(), v2);
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetSnapshotId(0), v2);
    const auto sent = fixture.server.GetRequests().last();
    QCOMPARE(sent.method, QByteArray("POST"));
    QCOMPARE(sent.path, QByteArray("/api/v1/apps/app1/versions"));
    QCOMPARE(sent.body, QByteArray("{\"a\":1}"));
    QCOMPARE(sent.headers.value("version-name"), QByteArray("new"));
    QCOMPARE(sent.headers.value("version-api"), QByteArray("1.0.0"));
    QVERIFY(!sent.headers.value("idempotency-key").isEmpty());
    QVERIFY(sent.headers.value("content-digest").startsWith("sha-256=:"));
    QVERIFY(!sent.headers.contains("if-match"));
}

void RpaEditorLogicTest::overwritesAVersion()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 4)});
    const auto record = fixture.Logic()->GetDevSnapshotManager()->GetSnapshot(v1);
    record->SetAppData(QStringLiteral("{\"b\":2}"));
    fixture.server.Enqueue(VersionReplies::Saved(200, fixture.Version(v1, 5, "{\"b\":2}")));

    fixture.Update(record);

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY2(fixture.answers.LastSucceeded(), qPrintable(fixture.answers.LastError()));
    QCOMPARE(fixture.answers.Last().notifyId, 10020);
    const auto sent = fixture.server.GetRequests().last();
    QCOMPARE(sent.method, QByteArray("PUT"));
    QCOMPARE(sent.path, QByteArray("/api/v1/versions/v1"));
    QCOMPARE(sent.headers.value("if-match"), QByteArray("\"4\""));
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetBaseRevision(v1), 5);
    QVERIFY(fixture.Logic()->GetDevSnapshotManager()->GetSnapshot(v1)->GetAppData().isEmpty());
}

void RpaEditorLogicTest::sendsNamesThatAreNotAscii()
{
    EditorLogicFixture fixture;
    auto record = fixture.Record(QString(), QStringLiteral("{}"), QStringLiteral("版本 1/2"));
    record->SetDesc(QStringLiteral("第一行\n第二行"));

    fixture.Save(record);

    QVERIFY(fixture.answers.WaitFor(1));
    QCOMPARE(HeaderOf(fixture.server, "version-name"), QByteArray("%E7%89%88%E6%9C%AC%201%2F2"));
    QCOMPARE(QUrl::fromPercentEncoding(HeaderOf(fixture.server, "version-description")), record->GetDesc());
}

void RpaEditorLogicTest::deletesAVersion()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 3), fixture.Version(v2)});
    bool goneAtDelivery = false;
    fixture.answers.reaction = [&](const auto&) {
        goneAtDelivery = fixture.Logic()->GetDevSnapshotManager()->GetSnapshot(v1).isNull();
    };
    fixture.server.Enqueue(VersionReplies::Deleted());

    fixture.Delete(v1);

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY(fixture.answers.LastSucceeded());
    QCOMPARE(fixture.answers.Last().notifyId, 10021);
    QVERIFY(goneAtDelivery);
    QCOMPARE(fixture.server.GetRequests().last().method, QByteArray("DELETE"));
    QCOMPARE(HeaderOf(fixture.server, "if-match"), QByteArray("\"3\""));
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetSnapshotId(0), v2);
}

void RpaEditorLogicTest::loadsTheDataOfAVersion()
{
    EditorLogicFixture fixture;
    fixture.server.Enqueue(FaultServer::Data(VersionReplies::App("\"c\":3"), 9));

    fixture.Load(v1);

    QVERIFY(fixture.answers.WaitFor(1));
    QVERIFY2(fixture.answers.LastSucceeded(), qPrintable(fixture.answers.LastError()));
    QCOMPARE(fixture.answers.Last().notifyId, 10023);
    const auto response = fixture.answers.Last().response.dynamicCast<GetDevSnapshotDataResponse>();
    QVERIFY(response);
    QCOMPARE(response->GetAppData(), VersionReplies::App("\"c\":3"));
    QCOMPARE(fixture.server.GetRequests().last().path, QByteArray("/api/v1/versions/v1/data"));
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetBaseRevision(v1), 9);
}

void RpaEditorLogicTest::releasesAVersion_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("state");

    QTest::newRow("gray") << 1 << 2;
    QTest::newRow("online") << 2 << 3;
}

void RpaEditorLogicTest::releasesAVersion()
{
    QFETCH(const int, type);
    QFETCH(const int, state);
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 2)});
    auto released = fixture.Version(v1, 3);
    released.state = state;
    fixture.server.Enqueue(FaultServer::Data(VersionReplies::App(), 2));
    fixture.server.Enqueue(VersionReplies::Released(1, true, QString(), released));

    fixture.Release(v1, type);

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY2(fixture.answers.LastSucceeded(), qPrintable(fixture.answers.LastError()));
    const auto response = fixture.answers.Last().response.dynamicCast<GrayOrReleaseResponse>();
    QVERIFY(response);
    QCOMPARE(response->GetResult(), 1);
    QVERIFY(response->GetNeedTip());
    QCOMPARE(int(fixture.Logic()->GetDevSnapshotManager()->GetSnapshot(v1)->GetState()), state);
    const auto sent = fixture.server.GetRequests().last();
    QCOMPARE(sent.path, QByteArray("/api/v1/versions/v1/release"));
    QCOMPARE(sent.body, "{\"type\":" + QByteArray::number(type) + "}");
    QCOMPARE(sent.headers.value("if-match"), QByteArray("\"2\""));
}

void RpaEditorLogicTest::reportsAReleaseThatDidNotTakeEffect()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 2)});
    fixture.server.Enqueue(FaultServer::Data(VersionReplies::App(), 2));
    fixture.server.Enqueue(
        VersionReplies::Released(0, false, QStringLiteral("审核未通过"), fixture.Version(v1, 2)));

    fixture.Release(v1, 2);

    QVERIFY(fixture.answers.WaitFor(2));
    const auto response = fixture.answers.Last().response.dynamicCast<GrayOrReleaseResponse>();
    QVERIFY(response->IsSuccess());
    QCOMPARE(response->GetResult(), 0);
    QCOMPARE(response->GetErrorDesc(), QStringLiteral("审核未通过"));
}

void RpaEditorLogicTest::answersWithTheRequestItWasGiven()
{
    EditorLogicFixture fixture;
    auto request = QSharedPointer<GetDevSnapshotDataRequest>::create();
    request->SetSnapshotId(v1);
    request->SetIdentity(QStringLiteral("{identity}"));

    fixture.Logic()->GetDevSnapshotData(request);

    QVERIFY(fixture.answers.WaitFor(1));
    QCOMPARE(fixture.answers.Last().request, request.staticCast<IHttpRequest>());
    QCOMPARE(fixture.answers.Last().request->GetIdentity(), QStringLiteral("{identity}"));
}

void RpaEditorLogicTest::neverAnswersInsideTheCall()
{
    EditorLogicFixture fixture;

    fixture.Update(fixture.Record(QString(), QString()));
    fixture.Save({});
    fixture.List(QStringLiteral("../../etc"));

    QCOMPARE(fixture.answers.Count(), 0);
    QVERIFY(fixture.answers.WaitFor(3));
}

void RpaEditorLogicTest::refusesRequestsThatCannotBeSent()
{
    EditorLogicFixture fixture;
    const auto evil = QStringLiteral("../apps");

    fixture.Save(fixture.Record(QString(), QStringLiteral("{}")));
    fixture.Save({});
    fixture.Update(fixture.Record(evil, QStringLiteral("{}")));
    fixture.Delete(evil);
    fixture.Load(QString());
    fixture.List(QString());
    fixture.Release(evil, 1);

    QVERIFY(fixture.answers.WaitFor(7));
    for (int i = 0; i < 7; ++i) {
        QVERIFY(!fixture.answers.At(i).response->IsSuccess());
        QVERIFY(!fixture.answers.At(i).response->GetErrorDesc().isEmpty());
    }
    QCOMPARE(fixture.server.GetRequestCount(), 1); // the first, which was right
}

void RpaEditorLogicTest::answersEverythingAtTearDown()
{
    EditorLogicFixture fixture;
    fixture.server.SetScript([](const auto&) { return FaultServer::Failing(Fault::Silence); });
    fixture.List();
    fixture.Load(v1);
    fixture.Update(fixture.Record(v1, QStringLiteral("{}"))); // waits for the load
    fixture.Save(fixture.Record(QString(), QStringLiteral("{}")));
    fixture.Delete(v2);
    fixture.Release(v2, 1); // waits for the deletion
    QTRY_COMPARE(fixture.server.GetRequestCount(), 4);

    fixture.Logic()->Shutdown();

    QCOMPARE(fixture.answers.Count(), 6);
    for (int i = 0; i < 6; ++i)
        QVERIFY(!fixture.answers.At(i).response->IsSuccess());
}

void RpaEditorLogicTest::worksAgainAfterTearDown()
{
    EditorLogicFixture fixture;
    fixture.Logic()->Shutdown();

    fixture.GivenVersions({fixture.Version(v1)});

    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetCount(), 1);
}

RPA_TEST_MAIN(RpaEditorLogicTest)

#include "tst_rpaeditorlogic.moc"
