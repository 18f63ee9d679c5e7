// SPDX-License-Identifier: Apache-2.0

#include "EditorLogicFixture.h"
#include "TestApp.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/SaveLedger.h>
#include <RpaServiceClient/VersionServiceSettings.h>

#include <QtTest>

using namespace VersionExamples;

namespace
{
const QString stillOpening = QStringLiteral("正在打开，没有保存");
const QString notItsContent = QStringLiteral("编辑器中的内容不是版本“name of v2”的内容，没有保存");
} // namespace

// Content is saved only where it belongs: into the version it was loaded from or saved to, or into one that
// the author picked for it.
class ContentOfVersionTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void refusesAnOverwriteWhileTheVersionIsLoading();
    void refusesAnOverwriteWhileTheLoadWaitsForItsTurn();
    void refusesThePickedVersionToo();
    void savesOnceTheLoadWasTakenOver();
    void refusesContentOfAnotherVersion();
    void refusesItAfterTheLoadFailed();
    void overwritesTheVersionThatWasPickedByItsName();
    void takesAPickForOneSave();
    void followsTheContentIntoTheVersionThatItWasSavedTo();
    void followsTheContentIntoTheVersionThatItMade();
    void basesASaveOnWhatItsAppDataWasLoadedFrom();
    void tellsTwoAppDataOfOneVersionApart();
    void letsContentOfNoVersionBeSaved();
    void refusesContentOfAnotherAppAsANewVersion();

private:
    // What an editor makes of a load.
    RpaAppDataPtr Open(const QString& id, int revision);
    // What an editor does to save into a listed version; picked: by its name, in the dialog.
    void SaveInto(const QString& id, const RpaAppData& app, bool picked = false);
    void SaveAsNew(const RpaAppDataPtr& app);
    void AnswerSaves(const QVector<VersionReplies::Version>& saved, const RpaAppData& app, int status = 200);
    QVector<FaultServer::Request> SentSaves() const;

    std::unique_ptr<EditorLogicFixture> fixture;
};

void ContentOfVersionTest::init()
{
    fixture = std::make_unique<EditorLogicFixture>();
    fixture->GivenVersions({fixture->Version(v1, 3), fixture->Version(v2, 7)});
}

void ContentOfVersionTest::cleanup()
{
    fixture.reset();
}

RpaAppDataPtr ContentOfVersionTest::Open(const QString& id, int revision)
{
    auto app = RpaAppDataPtr::create();
    fixture->answers.reaction = [app](const AnswerRecorder::Answer& answer) {
        const auto* response = qobject_cast<GetDevSnapshotDataResponse*>(answer.response.data());
        if (!response || !response->IsSuccess())
            return;
        app->InitDefault();
        app->Parse(response->GetAppData());
        app->GetAppExtendInfo()->SetAppId(QStringLiteral("app1"));
        app->SetModified(false);
    };
    const QByteArray content = VersionReplies::App(R"("of":")" + id.toUtf8() + '"');
    fixture->server.Enqueue(FaultServer::Data(content, revision));
    const int before = fixture->answers.Count();
    fixture->Load(id);
    if (!fixture->answers.WaitFor(before + 1) || !fixture->answers.LastSucceeded())
        QTest::qFail("the version was not loaded", __FILE__, __LINE__);
    fixture->answers.reaction = nullptr;
    return app;
}

void ContentOfVersionTest::SaveInto(const QString& id, const RpaAppData& app, bool picked)
{
    const RpaAppSnapshotPtr record = fixture->Logic()->GetDevSnapshotManager()->GetSnapshot(id);
    record->SetAppData(QString::fromUtf8(app.ToJson()));
    if (picked)
        record->SetName(record->GetName());
    fixture->Update(record);
}

void ContentOfVersionTest::SaveAsNew(const RpaAppDataPtr& app)
{
    fixture->Save(fixture->Logic()->GetDevSnapshotManager()->CreateDefault(app));
}

QVector<FaultServer::Request> ContentOfVersionTest::SentSaves() const
{
    QVector<FaultServer::Request> saves;
    for (const FaultServer::Request& request : fixture->server.GetRequests())
        if (request.method == "PUT" || request.method == "POST")
            saves.append(request);
    return saves;
}

void ContentOfVersionTest::AnswerSaves(const QVector<VersionReplies::Version>& saved, const RpaAppData& app,
                                       int status)
{
    for (VersionReplies::Version version : saved) {
        version.content = app.ToJson();
        fixture->server.Enqueue(VersionReplies::Saved(status, version));
    }
}

void ContentOfVersionTest::refusesAnOverwriteWhileTheVersionIsLoading()
{
    const RpaAppDataPtr first = Open(v1, 3);
    fixture->server.Enqueue(Late(FaultServer::Data(VersionReplies::App(), 7)));

    fixture->Load(v2);
    SaveInto(v2, *first);

    QVERIFY(fixture->answers.WaitFor(4));
    QCOMPARE(fixture->answers.Last().notifyId, 10020);
    QVERIFY2(fixture->answers.LastError().contains(stillOpening),
             qUtf8Printable(fixture->answers.LastError()));
    QVERIFY2(fixture->answers.LastError().contains(QStringLiteral("草稿")), "where the edits are");
    QCOMPARE(SentSaves().size(), 0);
    QVERIFY(fixture->Logic()->GetDevSnapshotManager()->GetSnapshot(v2)->GetAppData().isEmpty());
}

void ContentOfVersionTest::refusesAnOverwriteWhileTheLoadWaitsForItsTurn()
{
    const RpaAppDataPtr first = Open(v1, 3);
    fixture->server.Enqueue(FaultServer::Refusal(500, "broken", QStringLiteral("broken")));
    fixture->Load(v2);
    QVERIFY(fixture->answers.WaitFor(3));
    const int sent = fixture->server.GetRequestCount();
    // Longer than the test: the wait must not be over before the save, however slow the machine is.
    VersionServiceSettings::Instance()->SetRepeatSpacing({std::chrono::hours(1), std::chrono::hours(1)});

    fixture->Load(v2); // is held back, as the load before it failed
    SaveInto(v2, *first);

    QVERIFY(fixture->answers.WaitFor(4));
    QCOMPARE(fixture->answers.Last().notifyId, 10020);
    QVERIFY(fixture->answers.LastError().contains(stillOpening));
    QCOMPARE(SentSaves().size(), 0);
    QCOMPARE(fixture->server.GetRequestCount(), sent);
}

void ContentOfVersionTest::refusesThePickedVersionToo()
{
    const RpaAppDataPtr first = Open(v1, 3);
    fixture->server.Enqueue(Late(FaultServer::Data(VersionReplies::App(), 7)));

    fixture->Load(v2);
    SaveInto(v2, *first, true);

    QVERIFY(fixture->answers.WaitFor(4));
    QVERIFY(fixture->answers.LastError().contains(stillOpening));
    QCOMPARE(SentSaves().size(), 0);
}

void ContentOfVersionTest::savesOnceTheLoadWasTakenOver()
{
    const RpaAppDataPtr second = Open(v2, 7);
    AnswerSaves({fixture->Version(v2, 8)}, *second);

    SaveInto(v2, *second);

    QVERIFY(fixture->answers.WaitFor(3));
    QVERIFY2(fixture->answers.LastSucceeded(), qPrintable(fixture->answers.LastError()));
    QCOMPARE(SentSaves().last().headers.value("if-match"), QByteArray("\"7\""));
}

void ContentOfVersionTest::refusesContentOfAnotherVersion()
{
    const RpaAppDataPtr first = Open(v1, 3);
    const RpaAppDataPtr second = Open(v2, 7);

    SaveInto(v2, *first);

    QVERIFY(fixture->answers.WaitFor(4));
    QVERIFY2(fixture->answers.LastError().startsWith(notItsContent),
             qUtf8Printable(fixture->answers.LastError()));
    QCOMPARE(SentSaves().size(), 0);
    QCOMPARE(first->GetOrigin().versionId, v1);
}

void ContentOfVersionTest::refusesItAfterTheLoadFailed()
{
    const RpaAppDataPtr first = Open(v1, 3);
    fixture->server.Enqueue(FaultServer::Refusal(500, "broken", QStringLiteral("broken")));
    fixture->Load(v2);
    QVERIFY(fixture->answers.WaitFor(3));

    SaveInto(v2, *first);

    QVERIFY(fixture->answers.WaitFor(4));
    QVERIFY(fixture->answers.LastError().startsWith(notItsContent));
    QCOMPARE(SentSaves().size(), 0);
}

void ContentOfVersionTest::overwritesTheVersionThatWasPickedByItsName()
{
    const RpaAppDataPtr first = Open(v1, 3);
    AnswerSaves({fixture->Version(v2, 8)}, *first);

    SaveInto(v2, *first, true);

    QVERIFY(fixture->answers.WaitFor(3));
    QVERIFY2(fixture->answers.LastSucceeded(), qPrintable(fixture->answers.LastError()));
    QCOMPARE(SentSaves().last().path, QByteArray("/api/v1/versions/v2"));
    QCOMPARE(SentSaves().last().headers.value("if-match"), QByteArray("\"7\""));
    QCOMPARE(SentSaves().last().body, first->ToJson());
}

void ContentOfVersionTest::takesAPickForOneSave()
{
    const RpaAppDataPtr first = Open(v1, 3);
    fixture->server.Enqueue(ChangedByAnother());
    SaveInto(v2, *first, true);

    SaveInto(v2, *first);

    QVERIFY(fixture->answers.WaitFor(4));
    QVERIFY(fixture->answers.LastError().startsWith(notItsContent));
    QCOMPARE(SentSaves().size(), 1);
}

void ContentOfVersionTest::followsTheContentIntoTheVersionThatItWasSavedTo()
{
    const RpaAppDataPtr first = Open(v1, 3);
    AnswerSaves({fixture->Version(v2, 8), fixture->Version(v2, 9)}, *first);
    SaveInto(v2, *first, true);
    QVERIFY(fixture->answers.WaitFor(3));

    SaveInto(v2, *first);

    QVERIFY(fixture->answers.WaitFor(4));
    QVERIFY2(fixture->answers.LastSucceeded(), qPrintable(fixture->answers.LastError()));
    QCOMPARE(SentSaves().last().headers.value("if-match"), QByteArray("\"8\""));
    SaveInto(v1, *first);
    QVERIFY(fixture->answers.WaitFor(5));
    QVERIFY2(!fixture->answers.LastSucceeded(), "it is the content of the second version now");
}

void ContentOfVersionTest::followsTheContentIntoTheVersionThatItMade()
{
    const RpaAppDataPtr app = Open(v1, 3);
    app->SetVersion(QStringLiteral("1.0.0"));
    AnswerSaves({fixture->Version(QStringLiteral("v9"), 1)}, *app, 201);
    AnswerSaves({fixture->Version(QStringLiteral("v9"), 2)}, *app);
    SaveAsNew(app);
    QVERIFY(fixture->answers.WaitFor(3));
    QVERIFY2(fixture->answers.LastSucceeded(), qPrintable(fixture->answers.LastError()));

    SaveInto(QStringLiteral("v9"), *app);

    QVERIFY(fixture->answers.WaitFor(4));
    QVERIFY2(fixture->answers.LastSucceeded(), qPrintable(fixture->answers.LastError()));
    QCOMPARE(SentSaves().last().headers.value("if-match"), QByteArray("\"1\""));
}

void ContentOfVersionTest::basesASaveOnWhatItsAppDataWasLoadedFrom()
{
    const RpaAppDataPtr app = Open(v1, 3);
    fixture->server.Enqueue(FaultServer::Data(VersionReplies::App(), 5));
    fixture->Load(v1); // nobody takes it over
    QVERIFY(fixture->answers.WaitFor(3));
    fixture->server.Enqueue(ChangedByAnother());

    SaveInto(v1, *app);

    QVERIFY(fixture->answers.WaitFor(4));
    QCOMPARE(SentSaves().last().headers.value("if-match"), QByteArray("\"3\""));
}

void ContentOfVersionTest::tellsTwoAppDataOfOneVersionApart()
{
    const RpaAppDataPtr one = Open(v1, 3);
    const RpaAppDataPtr other = Open(v1, 3);
    AnswerSaves({fixture->Version(v1, 4)}, *one);
    fixture->server.Enqueue(ChangedByAnother());
    SaveInto(v1, *one);
    QVERIFY(fixture->answers.WaitFor(4));
    QVERIFY2(fixture->answers.LastSucceeded(), qPrintable(fixture->answers.LastError()));

    SaveInto(v1, *other);

    QVERIFY(fixture->answers.WaitFor(5));
    QCOMPARE(SentSaves().last().headers.value("if-match"), QByteArray("\"3\""));
    QCOMPARE(one->GetOrigin().baseRevision, 4);
}

void ContentOfVersionTest::letsContentOfNoVersionBeSaved()
{
    RpaAppData app;
    app.InitDefault();
    AnswerSaves({fixture->Version(v1, 4)}, app);

    SaveInto(v1, app);

    QVERIFY(fixture->answers.WaitFor(2));
    QVERIFY2(fixture->answers.LastSucceeded(), qPrintable(fixture->answers.LastError()));
    QCOMPARE(app.GetOrigin().versionId, v1);
    QCOMPARE(app.GetOrigin().baseRevision, 4);
}

void ContentOfVersionTest::refusesContentOfAnotherAppAsANewVersion()
{
    const RpaAppDataPtr app = Open(v1, 3);
    app->GetAppExtendInfo()->SetAppId(QStringLiteral("app2"));

    SaveAsNew(app);

    QVERIFY(fixture->answers.WaitFor(3));
    QVERIFY2(fixture->answers.LastError().contains(QStringLiteral("属于另一个应用，没有保存")),
             qUtf8Printable(fixture->answers.LastError()));
    QCOMPARE(SentSaves().size(), 0);
}

RPA_TEST_MAIN(ContentOfVersionTest)
#include "tst_contentofversion.moc"
