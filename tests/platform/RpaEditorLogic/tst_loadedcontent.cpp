// SPDX-License-Identifier: Apache-2.0

#include "EditorLogicFixture.h"
#include "TestApp.h"

#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/SaveLedger.h>

#include <QtTest>

using namespace VersionExamples;

namespace
{
const QString tooNew = QStringLiteral("当前版本过低，请更新为最新版本");

QString LoadError(EditorLogicFixture& fixture, const QByteArray& content, const QString& listedApi)
{
    VersionReplies::Version version = EditorLogicFixture::Version(v1, 3);
    version.apiVersion = listedApi;
    fixture.GivenVersions({version});
    fixture.server.Enqueue(FaultServer::Data(content, 4));
    fixture.Load(v1);
    if (!fixture.answers.WaitFor(2))
        return QStringLiteral("no answer");
    return fixture.answers.LastSucceeded() ? QString() : fixture.answers.LastError();
}
} // namespace

// What a load brings is judged before it counts as one.
class LoadedContentTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { RpaEditorLogic::Instance()->Forget(); }

    void bringsAnApp();
    void refusesWhatIsNoApp_data();
    void refusesWhatIsNoApp();
    void refusesWhatANewerClientWrote_data();
    void refusesWhatANewerClientWrote();
    void leavesAnAppOfANewerClientToTheEditor();
    void basesNoSaveOnContentThatWasRefused();
};

void LoadedContentTest::bringsAnApp()
{
    EditorLogicFixture fixture;
    const QByteArray app = VersionReplies::App("\"mark\":1");

    QCOMPARE(LoadError(fixture, app, QStringLiteral("1.0.0")), QString());

    const auto* response = qobject_cast<GetDevSnapshotDataResponse*>(fixture.answers.Last().response.data());
    QVERIFY(response);
    QCOMPARE(response->GetAppData(), app);
}

void LoadedContentTest::refusesWhatIsNoApp_data()
{
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("an array") << QByteArray("[1]");
    QTest::newRow("an empty object") << QByteArray("{}");
    QTest::newRow("another program's record") << QByteArray(R"({"name":"x"})");
    QTest::newRow("pages without their part")
        << VersionReplies::App().replace(R"("uiData":{"pages":[]})", R"("uiData":[])");
    QTest::newRow("processes of another kind")
        << VersionReplies::App().replace(R"("processes":[])", R"("processes":{})");
}

void LoadedContentTest::refusesWhatIsNoApp()
{
    QFETCH(QByteArray, content);
    EditorLogicFixture fixture;

    const QString error = LoadError(fixture, content, QStringLiteral("1.0.0"));

    QVERIFY2(error.startsWith(QStringLiteral("该版本的内容无法识别，没有打开")), qUtf8Printable(error));
}

void LoadedContentTest::refusesWhatANewerClientWrote_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("listedApi");

    const QString own = QStringLiteral("1.0.0");
    QTest::newRow("another shape that says so")
        << QByteArray(R"({"version":"2.0.0","screens":[{"id":1}]})") << own;
    QTest::newRow("a part of another kind, and says so")
        << QByteArray(R"({"version":"1.1.0","uiData":[],"processData":{"processes":[]}})") << own;
    QTest::newRow("another shape whose version the list tells")
        << QByteArray(R"({"format":2,"screens":[]})") << QStringLiteral("2.0.0");
    QTest::newRow("an array whose version the list tells") << QByteArray("[{}]") << QStringLiteral("1.0.1");
}

void LoadedContentTest::refusesWhatANewerClientWrote()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, listedApi);
    EditorLogicFixture fixture;

    QCOMPARE(LoadError(fixture, content, listedApi), tooNew);
}

void LoadedContentTest::leavesAnAppOfANewerClientToTheEditor()
{
    EditorLogicFixture fixture;

    QCOMPARE(LoadError(fixture, VersionReplies::App().replace("1.0.0", "1.0.1"), QStringLiteral("1.0.1")),
             QString());
}

void LoadedContentTest::basesNoSaveOnContentThatWasRefused()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 3)});
    fixture.server.Enqueue(FaultServer::Data(VersionReplies::App(), 3));
    fixture.Load(v1);
    QVERIFY(fixture.answers.WaitFor(2));
    const QByteArray known = fixture.Logic()->GetSaveLedger()->GetConfirmedSha256(v1);
    fixture.server.Enqueue(FaultServer::Data("[]", 9));

    fixture.Load(v1);

    QVERIFY(fixture.answers.WaitFor(3));
    QVERIFY(!fixture.answers.LastSucceeded());
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetBaseRevision(v1), 3);
    QCOMPARE(fixture.Logic()->GetSaveLedger()->GetConfirmedSha256(v1), known);
}

RPA_TEST_MAIN(LoadedContentTest)
#include "tst_loadedcontent.moc"
