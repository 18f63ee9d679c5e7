// SPDX-License-Identifier: Apache-2.0

#include "EditorLogicFixture.h"
#include "ServerProcess.h"
#include "ServerRelay.h"
#include "SmallApp.h"
#include "TestApp.h"

#include <RpaCore/RpaAppSnapshot.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/VersionServiceSettings.h>
#include <RpaServiceClient/apps/CreateAppRequest.h>
#include <RpaServiceClient/versions/ListVersionsRequest.h>

#include <QtTest>

using namespace VersionExamples;

namespace
{
const QString content1 = SmallApp(1);
const QString content2 = SmallApp(2);
const QString content3 = SmallApp(3);
} // namespace

// One author works alone with a real server that dies at the worst moments. Nobody else is there, so nobody
// else may be blamed.
class SavedWorkLostTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void goesOnAfterASaveThatWasDoneAndWhoseRepeatsMetNobody();
    void goesOnAfterANewVersionThatWasDoneAndWhoseRepeatsMetNobody();
    void remembersALostSaveWhenTheNextOneIsLostToo();
    void remembersALostSaveWhenItCannotBeLookedUpYet();
    void deletesAVersionWhoseLastSaveWasLost();
    void remembersASaveWhoseRepeatWasRefused();

private:
    void MakeApp();
    RpaAppSnapshotPtr Record(const QString& content) const;
    void SaveFirstVersion();
    // The save is done, its answer is lost, and the server stays away.
    void LoseASaveOf(const QString& content);
    bool Answered();
    QVector<VersionServiceVersion> Stored();

    ServerProcess server;
    std::unique_ptr<ServerRelay> relay;
    std::unique_ptr<EditorLogicFixture> fixture;
    QString appId;
    QString versionId;
    int apps = 0;
    int answered = 0;
};

void SavedWorkLostTest::initTestCase()
{
    QVERIFY2(server.Start(), server.ErrorText());
}

void SavedWorkLostTest::init()
{
    relay = std::make_unique<ServerRelay>(server.Port());
    QVERIFY(relay->Listen());
    fixture = std::make_unique<EditorLogicFixture>();
    auto* settings = VersionServiceSettings::Instance();
    settings->SetBaseUrl(QUrl(QStringLiteral("http://127.0.0.1:%1").arg(relay->GetPort())));
    settings->SetToken(server.Token(QStringLiteral("author-1")));
    settings->SetLimits(WbHttpLimits());
    answered = 0;
    MakeApp();
    SaveFirstVersion();
}

void SavedWorkLostTest::cleanup()
{
    fixture.reset();
    relay.reset();
}

void SavedWorkLostTest::MakeApp()
{
    VersionServiceClient client;
    VersionServiceResult<VersionServiceApp> made;
    client.Send(CreateAppRequest{QStringLiteral("应用%1").arg(++apps), 0}, this,
                [&made](const auto& result) { made = result; });
    QTRY_VERIFY(made.success);
    appId = made.value.id;
}

RpaAppSnapshotPtr SavedWorkLostTest::Record(const QString& content) const
{
    auto record = EditorLogicFixture::Record(versionId, content);
    record->SetAppId(appId);
    return record;
}

bool SavedWorkLostTest::Answered()
{
    return QTest::qWaitFor([this] { return fixture->answers.Count() > answered; }, 30000) && ++answered > 0;
}

void SavedWorkLostTest::SaveFirstVersion()
{
    versionId.clear();
    const auto record = Record(SmallApp(0));
    fixture->Save(record);
    QVERIFY(Answered());
    QVERIFY2(fixture->answers.LastSucceeded(), qPrintable(fixture->answers.LastError()));
    versionId = record->GetId();
}

void SavedWorkLostTest::LoseASaveOf(const QString& content)
{
    relay->DieAtAnswerOf("PUT");
    fixture->Update(Record(content));
    QVERIFY(Answered());
    QVERIFY(!fixture->answers.LastSucceeded());
}

QVector<VersionServiceVersion> SavedWorkLostTest::Stored()
{
    VersionServiceClient client;
    VersionServiceResult<QVector<VersionServiceVersion>> listed;
    client.Send(ListVersionsRequest{appId}, this, [&listed](const auto& result) { listed = result; });
    return QTest::qWaitFor([&listed] { return listed.success; }) ? listed.value
                                                                 : QVector<VersionServiceVersion>();
}

void SavedWorkLostTest::goesOnAfterASaveThatWasDoneAndWhoseRepeatsMetNobody()
{
    LoseASaveOf(content1);
    QVERIFY(relay->Listen());

    fixture->Update(Record(content2));

    QVERIFY(Answered());
    QVERIFY2(fixture->answers.LastSucceeded(), qPrintable(fixture->answers.LastError()));
    QCOMPARE(Stored().size(), 1);
    QCOMPARE(Stored().first().revision, 3);
}

void SavedWorkLostTest::goesOnAfterANewVersionThatWasDoneAndWhoseRepeatsMetNobody()
{
    auto second = Record(content1);
    second->SetId(QString());
    second->SetName(QStringLiteral("版本2"));
    relay->DieAtAnswerOf("POST");
    fixture->Save(second);
    QVERIFY(Answered());
    QVERIFY(!fixture->answers.LastSucceeded());
    QVERIFY(relay->Listen());

    second->SetAppData(content2);
    fixture->Save(second);

    QVERIFY(Answered());
    QVERIFY2(fixture->answers.LastSucceeded(), qPrintable(fixture->answers.LastError()));
    QCOMPARE(Stored().size(), 2);
}

void SavedWorkLostTest::remembersALostSaveWhenTheNextOneIsLostToo()
{
    // Given: one save that was done, and one that was sent and not done, neither answered
    LoseASaveOf(content1);
    QVERIFY(relay->Listen());
    relay->DieAtRequestOf("PUT");
    fixture->Update(Record(content2));
    QVERIFY(Answered());
    QVERIFY(!fixture->answers.LastSucceeded());
    QVERIFY(relay->Listen());

    fixture->Update(Record(content3));

    QVERIFY(Answered());
    QVERIFY2(fixture->answers.LastSucceeded(), qPrintable(fixture->answers.LastError()));
    QCOMPARE(Stored().first().revision, 3);
}

void SavedWorkLostTest::remembersALostSaveWhenItCannotBeLookedUpYet()
{
    // Given: the server dies once more, while the library looks up whose the change is
    LoseASaveOf(content1);
    QVERIFY(relay->Listen());
    relay->DieAtAnswerOf("GET");
    fixture->Update(Record(content2));
    QVERIFY(Answered());
    QVERIFY(!fixture->answers.LastSucceeded());
    QVERIFY2(!fixture->answers.LastError().contains(QStringLiteral("他人")),
             qPrintable(fixture->answers.LastError()));
    QVERIFY(relay->Listen());

    fixture->Update(Record(content3));

    QVERIFY(Answered());
    QVERIFY2(fixture->answers.LastSucceeded(), qPrintable(fixture->answers.LastError()));
    QCOMPARE(Stored().first().revision, 3);
}

void SavedWorkLostTest::deletesAVersionWhoseLastSaveWasLost()
{
    LoseASaveOf(content1);
    QVERIFY(relay->Listen());

    fixture->Delete(versionId);

    QVERIFY(Answered());
    QVERIFY2(fixture->answers.LastSucceeded(), qPrintable(fixture->answers.LastError()));
    QVERIFY(Stored().isEmpty());
}

void SavedWorkLostTest::remembersASaveWhoseRepeatWasRefused()
{
    // Given: the first try breaks off, the second is refused for a reason that says nothing about the first
    FaultServer busy;
    auto* settings = VersionServiceSettings::Instance();
    settings->SetBaseUrl(busy.GetUrl());
    settings->SetToken("token");
    busy.Enqueue(VersionReplies::List({fixture->Version(v1, 7)}));
    fixture->List();
    QVERIFY(Answered());
    busy.Enqueue(FaultServer::Failing(Fault::CloseBeforeAnswer));
    busy.Enqueue(FaultServer::Refusal(429, "too-many", QStringLiteral("请求过于频繁")));
    fixture->Update(EditorLogicFixture::Record(v1, content1));
    QVERIFY(Answered());
    QVERIFY(!fixture->answers.LastSucceeded());

    busy.Enqueue(ChangedByAnother());
    busy.Enqueue(VersionReplies::List({fixture->Version(v1, 8, content1.toUtf8())}));
    busy.Enqueue(VersionReplies::Saved(200, fixture->Version(v1, 9, content2.toUtf8())));
    fixture->Update(EditorLogicFixture::Record(v1, content2));

    QVERIFY(Answered());
    QVERIFY2(fixture->answers.LastSucceeded(), qPrintable(fixture->answers.LastError()));
}

RPA_TEST_MAIN(SavedWorkLostTest)
#include "tst_savedwork_lost.moc"
