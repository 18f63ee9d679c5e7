// SPDX-License-Identifier: Apache-2.0

#include "EditorLogicFixture.h"
#include "TestApp.h"

#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaServiceClient/VersionServiceSettings.h>

#include <QSignalSpy>
#include <QtTest>

using namespace VersionExamples;

// Refusals, answers that are not to be believed, and tries that are repeated.
class RpaEditorLogicFailuresTest : public QObject
{
    Q_OBJECT

private slots:
    void tellsTheReasonOfTheServer_data();
    void tellsTheReasonOfTheServer();
    void showsServerTextsAsOnePlainLine();
    void tellsWhenTheTokenWasRefused();
    void keepsQuietAboutATokenThatIsNoLongerUsed();
    void doesNotBelieveABrokenList_data();
    void doesNotBelieveABrokenList();
    void doesNotBelieveBrokenData_data();
    void doesNotBelieveBrokenData();
    void doesNotBelieveABrokenConfirmation_data();
    void doesNotBelieveABrokenConfirmation();
    void repeatsASaveWithTheSameKeyWhenTheConnectionBreaks();
    void repeatsASaveWhenTheServerIsBusy();
    void givesUpAfterThreeTries();
    void makesAFreshKeyForEachSave();
};

void RpaEditorLogicFailuresTest::tellsTheReasonOfTheServer_data()
{
    QTest::addColumn<FaultServer::Reply>("reply");
    QTest::addColumn<QString>("text");

    const auto row = [](const char* name, int status, const QString& text) {
        QTest::newRow(name) << FaultServer::Json(status, "{}") << text;
    };
    QTest::newRow("the server's own words")
        << FaultServer::Refusal(409, "name-taken", QStringLiteral("名称已存在"))
        << QStringLiteral("名称已存在");
    QTest::newRow("changed by somebody else, whatever the server says")
        << FaultServer::Refusal(412, "changed", QStringLiteral("precondition failed"))
        << QStringLiteral("该版本已被他人修改");
    row("not signed in", 401, QStringLiteral("登录已失效"));
    row("not there", 404, QStringLiteral("不存在"));
    row("conflict", 409, QStringLiteral("冲突"));
    row("too large", 413, QStringLiteral("64MB"));
    row("no revision", 428, QStringLiteral("重新打开该版本"));
    row("too often", 429, QStringLiteral("过于频繁"));
    row("server broken", 500, QStringLiteral("服务器内部错误"));
    row("unknown status", 418, QStringLiteral("418"));
    QTest::newRow("no JSON at all") << FaultServer::Json(500, "<html>") << QStringLiteral("服务器内部错误");
    QTest::newRow("silence") << FaultServer::Failing(Fault::Silence) << QStringLiteral("超时");
}

void RpaEditorLogicFailuresTest::tellsTheReasonOfTheServer()
{
    QFETCH(const FaultServer::Reply, reply);
    QFETCH(const QString, text);
    EditorLogicFixture fixture;
    fixture.server.Enqueue(reply);

    fixture.Load(v1);

    QVERIFY(fixture.answers.WaitFor(1));
    QVERIFY(!fixture.answers.LastSucceeded());
    QVERIFY2(fixture.answers.LastError().contains(text), qPrintable(fixture.answers.LastError()));
}

void RpaEditorLogicFailuresTest::showsServerTextsAsOnePlainLine()
{
    EditorLogicFixture fixture;
    fixture.server.Enqueue(
        FaultServer::Refusal(409, "x", QString(5000, QLatin1Char('a')) + QLatin1String("\n\tb")));
    fixture.server.Enqueue(FaultServer::Refusal(409, "x", QStringLiteral(" one\ntwo\t three ")));

    fixture.Load(v1);
    QVERIFY(fixture.answers.WaitFor(1));
    QCOMPARE(fixture.answers.LastError().size(), 200);
    fixture.Load(v2);
    QVERIFY(fixture.answers.WaitFor(2));

    QCOMPARE(fixture.answers.LastError(), QStringLiteral("one two three"));
}

void RpaEditorLogicFailuresTest::tellsWhenTheTokenWasRefused()
{
    EditorLogicFixture fixture;
    QSignalSpy spy(VersionServiceSettings::Instance(), &VersionServiceSettings::SigTokenRejected);
    fixture.server.Enqueue(FaultServer::Refusal(401, "no-session", QStringLiteral("请登录")));

    fixture.List();

    QVERIFY(fixture.answers.WaitFor(1));
    QCOMPARE(spy.count(), 1);
}

void RpaEditorLogicFailuresTest::keepsQuietAboutATokenThatIsNoLongerUsed()
{
    EditorLogicFixture fixture;
    QSignalSpy spy(VersionServiceSettings::Instance(), &VersionServiceSettings::SigTokenRejected);
    fixture.server.Enqueue(FaultServer::Refusal(401, "no-session", QStringLiteral("请登录")));

    fixture.List();
    VersionServiceSettings::Instance()->SetToken("another");

    QVERIFY(fixture.answers.WaitFor(1));
    QCOMPARE(spy.count(), 0);
}

void RpaEditorLogicFailuresTest::doesNotBelieveABrokenList_data()
{
    QTest::addColumn<QByteArray>("body");

    const QByteArray good = VersionReplies::List({EditorLogicFixture::Version(v1)}).body;
    const auto changed = [&good](const char* from, const char* to) {
        QByteArray body = good;
        body.replace(from, to);
        return body;
    };
    QTest::newRow("not an object") << QByteArray("[]");
    QTest::newRow("no list") << QByteArray("{}");
    QTest::newRow("list is a text") << QByteArray(R"({"versions":"x"})");
    QTest::newRow("entry is a number") << QByteArray(R"({"versions":[1]})");
    QTest::newRow("state out of range") << changed("\"state\":1", "\"state\":4");
    QTest::newRow("state is a text") << changed(R"("state":1)", R"("state":"1")");
    QTest::newRow("revision 0") << changed("\"revision\":1", "\"revision\":0");
    QTest::newRow("revision with a fraction") << changed("\"revision\":1", "\"revision\":1.5");
    QTest::newRow("id that leads elsewhere") << changed(R"("id":"v1")", R"("id":"../v1")");
    QTest::newRow("empty id") << changed(R"("id":"v1")", R"("id":"")");
    QTest::newRow("no name") << changed("\"name\"", "\"nome\"");
    QTest::newRow("hash of no length") << changed(R"("sha256":")", R"("sha256":"00)");
    QTest::newRow("the same id twice")
        << VersionReplies::List({EditorLogicFixture::Version(v1), EditorLogicFixture::Version(v1)}).body;
    QTest::newRow("cut") << good.left(good.size() / 2);
}

void RpaEditorLogicFailuresTest::doesNotBelieveABrokenList()
{
    QFETCH(const QByteArray, body);
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v2)});
    fixture.server.Enqueue(FaultServer::Json(200, body));

    fixture.List();

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY(!fixture.answers.LastSucceeded());
    QVERIFY(!fixture.answers.LastError().isEmpty());
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetSnapshotId(0), v2);
}

void RpaEditorLogicFailuresTest::doesNotBelieveBrokenData_data()
{
    QTest::addColumn<Fault>("fault");

    for (const Fault fault :
         {Fault::WrongDigest, Fault::WrongEtag, Fault::NoEtag, Fault::InvalidJson, Fault::DeepJson,
          Fault::DuplicateKeyJson, Fault::BadChunkHeader, Fault::CutWithoutLength})
        QTest::newRow(FaultServer::NameOf(fault)) << fault;
}

void RpaEditorLogicFailuresTest::doesNotBelieveBrokenData()
{
    QFETCH(const Fault, fault);
    EditorLogicFixture fixture;
    fixture.server.SetScript([fault](const auto&) { return FaultServer::Failing(fault); });

    fixture.Load(v2);

    QVERIFY(fixture.answers.WaitFor(1));
    QVERIFY(!fixture.answers.LastSucceeded());
    const auto response = fixture.answers.Last().response.dynamicCast<GetDevSnapshotDataResponse>();
    QVERIFY(response);
    QVERIFY(response->GetAppData().isEmpty());
}

void RpaEditorLogicFailuresTest::doesNotBelieveABrokenConfirmation_data()
{
    QTest::addColumn<FaultServer::Reply>("reply");

    auto otherContent = VersionReplies::Saved(200, EditorLogicFixture::Version(v1, 5, "{\"other\":1}"));
    auto otherVersion = VersionReplies::Saved(200, EditorLogicFixture::Version(v2, 5));
    auto oldRevision = VersionReplies::Saved(200, EditorLogicFixture::Version(v1, 4));
    auto wrongEtag = VersionReplies::Saved(200, EditorLogicFixture::Version(v1, 5));
    wrongEtag.fault = Fault::WrongEtag;
    auto noEtag = VersionReplies::Saved(200, EditorLogicFixture::Version(v1, 5));
    noEtag.fault = Fault::NoEtag;
    QTest::newRow("hash of other content") << otherContent;
    QTest::newRow("another version") << otherVersion;
    QTest::newRow("revision did not move") << oldRevision;
    QTest::newRow("wrong etag") << wrongEtag;
    QTest::newRow("no etag") << noEtag;
    QTest::newRow("empty object") << FaultServer::Json(200, "{}");
    QTest::newRow("nothing") << VersionReplies::Deleted();
}

void RpaEditorLogicFailuresTest::doesNotBelieveABrokenConfirmation()
{
    QFETCH(const FaultServer::Reply, reply);
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 4)});
    fixture.server.Enqueue(reply);

    fixture.Update(fixture.Record(v1, QStringLiteral("{}")));

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY(!fixture.answers.LastSucceeded());
    QVERIFY(!fixture.answers.LastError().isEmpty());
}

void RpaEditorLogicFailuresTest::repeatsASaveWithTheSameKeyWhenTheConnectionBreaks()
{
    EditorLogicFixture fixture;
    fixture.server.Enqueue(FaultServer::Failing(Fault::CloseWithinHeader));
    fixture.server.Enqueue(FaultServer::Failing(Fault::CutWithLength));
    fixture.server.Enqueue(VersionReplies::Saved(201, fixture.Version(v1)));
    // The first is no connection problem, so it is used up by a request of its own.
    fixture.Load(v2);
    QVERIFY(fixture.answers.WaitFor(1));

    fixture.Save(fixture.Record(QString(), QStringLiteral("{}")));

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY2(fixture.answers.LastSucceeded(), qPrintable(fixture.answers.LastError()));
    const auto requests = fixture.server.GetRequests();
    QCOMPARE(requests.size(), 3);
    QCOMPARE(requests.at(1).headers.value("idempotency-key"),
             requests.at(2).headers.value("idempotency-key"));
    QCOMPARE(requests.at(1).body, requests.at(2).body);
    QCOMPARE(fixture.answers.Count(), 2);
}

void RpaEditorLogicFailuresTest::repeatsASaveWhenTheServerIsBusy()
{
    EditorLogicFixture fixture;
    fixture.server.Enqueue(FaultServer::Refusal(503, "busy", QStringLiteral("繁忙")));
    fixture.server.Enqueue(VersionReplies::Saved(201, fixture.Version(v1)));

    fixture.Save(fixture.Record(QString(), QStringLiteral("{}")));

    QVERIFY(fixture.answers.WaitFor(1));
    QVERIFY(fixture.answers.LastSucceeded());
}

void RpaEditorLogicFailuresTest::givesUpAfterThreeTries()
{
    EditorLogicFixture fixture;
    fixture.server.SetScript([](const auto&) { return FaultServer::Failing(Fault::CutWithLength); });

    fixture.Save(fixture.Record(QString(), QStringLiteral("{}")));

    QVERIFY(fixture.answers.WaitFor(1));
    QVERIFY(!fixture.answers.LastSucceeded());
    QCOMPARE(fixture.server.GetRequestCount(), 3);
}

void RpaEditorLogicFailuresTest::makesAFreshKeyForEachSave()
{
    EditorLogicFixture fixture;

    fixture.Save(fixture.Record(QString(), QStringLiteral("{}")));
    fixture.Save(fixture.Record(QString(), QStringLiteral("{}")));

    QVERIFY(fixture.answers.WaitFor(2));
    const auto requests = fixture.server.GetRequests();
    QVERIFY(requests.at(0).headers.value("idempotency-key") !=
            requests.at(1).headers.value("idempotency-key"));
}

RPA_TEST_MAIN(RpaEditorLogicFailuresTest)

#include "tst_rpaeditorlogic_failures.moc"
