#include "EditorLogicFixture.h"
#include "TestApp.h"

#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <RpaEditorLogic/VersionServiceSettings.h>

#include <QCryptographicHash>
#include <QSignalSpy>
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
    fixture.server.Enqueue(FaultServer::Data("{\"c\":3}", 9));

    fixture.Load(v1);

    QVERIFY(fixture.answers.WaitFor(1));
    QVERIFY2(fixture.answers.LastSucceeded(), qPrintable(fixture.answers.LastError()));
    QCOMPARE(fixture.answers.Last().notifyId, 10023);
    const auto response = fixture.answers.Last().response.dynamicCast<GetDevSnapshotDataResponse>();
    QVERIFY(response);
    QCOMPARE(response->GetAppData(), QByteArray("{\"c\":3}"));
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

void RpaEditorLogicTest::tellsTheReasonOfTheServer_data()
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

void RpaEditorLogicTest::tellsTheReasonOfTheServer()
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

void RpaEditorLogicTest::showsServerTextsAsOnePlainLine()
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

void RpaEditorLogicTest::tellsWhenTheTokenWasRefused()
{
    EditorLogicFixture fixture;
    QSignalSpy spy(VersionServiceSettings::Instance(), &VersionServiceSettings::SigTokenRejected);
    fixture.server.Enqueue(FaultServer::Refusal(401, "no-session", QStringLiteral("请登录")));

    fixture.List();

    QVERIFY(fixture.answers.WaitFor(1));
    QCOMPARE(spy.count(), 1);
}

void RpaEditorLogicTest::keepsQuietAboutATokenThatIsNoLongerUsed()
{
    EditorLogicFixture fixture;
    QSignalSpy spy(VersionServiceSettings::Instance(), &VersionServiceSettings::SigTokenRejected);
    fixture.server.Enqueue(FaultServer::Refusal(401, "no-session", QStringLiteral("请登录")));

    fixture.List();
    VersionServiceSettings::Instance()->SetToken("another");

    QVERIFY(fixture.answers.WaitFor(1));
    QCOMPARE(spy.count(), 0);
}

void RpaEditorLogicTest::doesNotBelieveABrokenList_data()
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
    QTest::newRow("state is a text") << changed("\"state\":1", "\"state\":\"1\"");
    QTest::newRow("revision 0") << changed("\"revision\":1", "\"revision\":0");
    QTest::newRow("revision with a fraction") << changed("\"revision\":1", "\"revision\":1.5");
    QTest::newRow("id that leads elsewhere") << changed("\"id\":\"v1\"", "\"id\":\"../v1\"");
    QTest::newRow("empty id") << changed("\"id\":\"v1\"", "\"id\":\"\"");
    QTest::newRow("no name") << changed("\"name\"", "\"nome\"");
    QTest::newRow("hash of no length") << changed("\"sha256\":\"", "\"sha256\":\"00");
    QTest::newRow("the same id twice")
        << VersionReplies::List({EditorLogicFixture::Version(v1), EditorLogicFixture::Version(v1)}).body;
    QTest::newRow("cut") << good.left(good.size() / 2);
}

void RpaEditorLogicTest::doesNotBelieveABrokenList()
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

void RpaEditorLogicTest::doesNotBelieveBrokenData_data()
{
    QTest::addColumn<Fault>("fault");

    for (const Fault fault :
         {Fault::WrongDigest, Fault::WrongEtag, Fault::NoEtag, Fault::InvalidJson, Fault::DeepJson,
          Fault::DuplicateKeyJson, Fault::BadChunkHeader, Fault::CutWithoutLength})
        QTest::newRow(FaultServer::NameOf(fault)) << fault;
}

void RpaEditorLogicTest::doesNotBelieveBrokenData()
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

void RpaEditorLogicTest::doesNotBelieveABrokenConfirmation_data()
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

void RpaEditorLogicTest::doesNotBelieveABrokenConfirmation()
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

void RpaEditorLogicTest::repeatsASaveWithTheSameKeyWhenTheConnectionBreaks()
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

void RpaEditorLogicTest::repeatsASaveWhenTheServerIsBusy()
{
    EditorLogicFixture fixture;
    fixture.server.Enqueue(FaultServer::Refusal(503, "busy", QStringLiteral("繁忙")));
    fixture.server.Enqueue(VersionReplies::Saved(201, fixture.Version(v1)));

    fixture.Save(fixture.Record(QString(), QStringLiteral("{}")));

    QVERIFY(fixture.answers.WaitFor(1));
    QVERIFY(fixture.answers.LastSucceeded());
}

void RpaEditorLogicTest::givesUpAfterThreeTries()
{
    EditorLogicFixture fixture;
    fixture.server.SetScript([](const auto&) { return FaultServer::Failing(Fault::CutWithLength); });

    fixture.Save(fixture.Record(QString(), QStringLiteral("{}")));

    QVERIFY(fixture.answers.WaitFor(1));
    QVERIFY(!fixture.answers.LastSucceeded());
    QCOMPARE(fixture.server.GetRequestCount(), 3);
}

void RpaEditorLogicTest::makesAFreshKeyForEachSave()
{
    EditorLogicFixture fixture;

    fixture.Save(fixture.Record(QString(), QStringLiteral("{}")));
    fixture.Save(fixture.Record(QString(), QStringLiteral("{}")));

    QVERIFY(fixture.answers.WaitFor(2));
    const auto requests = fixture.server.GetRequests();
    QVERIFY(requests.at(0).headers.value("idempotency-key") !=
            requests.at(1).headers.value("idempotency-key"));
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
