// SPDX-License-Identifier: Apache-2.0

#include "EditorLogicFixture.h"
#include "TestApp.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>

#include <QtTest>

using namespace VersionExamples;

namespace
{
RpaStatement Log(const QString& text)
{
    RpaStatement statement;
    statement.command = QStringLiteral("log");
    statement.arguments.insert(QStringLiteral("text"), text);
    return statement;
}

// An app with one button and these statements behind it, and a process that no button starts.
QByteArray AppOf(const QVector<RpaStatement>& main, const QVector<RpaStatement>& aside = {}, int kind = 0)
{
    RpaAppData app;
    app.InitDefault();
    app.SetVersion(QStringLiteral("1.0.0"));
    app.GetAppExtendInfo()->SetAppKind(kind);
    app.GetProcessDataManager()->GetProcess(0)->SetStatements(main);
    app.GetProcessDataManager()->AddProcess(QStringLiteral("备用"))->SetStatements(aside);
    return app.ToJson();
}

QByteArray Good()
{
    return AppOf({Log(QStringLiteral("你好"))});
}

QByteArray Bad()
{
    return AppOf({Log(QStringLiteral("你好")), Log(QString())});
}
} // namespace

// What cannot run is not released.
class ReleaseCheckTest : public QObject
{
    Q_OBJECT

private slots:
    void releasesWhatRuns_data() { Types(); }
    void releasesWhatRuns();
    void refusesWhatCannotRun_data();
    void refusesWhatCannotRun();
    void saysWhatWasRefused_data() { Types(); }
    void saysWhatWasRefused();
    void judgesTheReleasedVersionAndNotTheOpenOne_data();
    void judgesTheReleasedVersionAndNotTheOpenOne();
    void leavesContentThatNobodySawToTheServer();
    void releasesNothingThatItCouldNotRead_data();
    void releasesNothingThatItCouldNotRead();
    void answersAtTearDownWhileItReads();
    void releasesAfterTheErrorWasMended();

private:
    static void Types()
    {
        QTest::addColumn<int>("type");
        QTest::newRow("gray") << 1;
        QTest::newRow("online") << 2;
    }
    static int Releases(const EditorLogicFixture& fixture)
    {
        int count = 0;
        for (const auto& request : fixture.server.GetRequests())
            count += request.path.endsWith("/release") ? 1 : 0;
        return count;
    }
};

void ReleaseCheckTest::releasesWhatRuns()
{
    QFETCH(const int, type);
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 3)});
    fixture.server.Enqueue(FaultServer::Data(Good(), 3));
    fixture.server.Enqueue(VersionReplies::Released(1, true, QString(), fixture.Version(v1, 3)));

    fixture.Release(v1, type);

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY2(fixture.answers.LastSucceeded(), qPrintable(fixture.answers.LastError()));
    QCOMPARE(fixture.answers.Count(), 2);
    const auto sent = fixture.server.GetRequests();
    QCOMPARE(sent.at(1).path, QByteArray("/api/v1/versions/v1/data"));
    QCOMPARE(sent.at(2).body, "{\"type\":" + QByteArray::number(type) + "}");
}

void ReleaseCheckTest::refusesWhatCannotRun_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("problem"); // empty: it is released

    RpaStatement unknown = Log(QStringLiteral("x"));
    unknown.command = QStringLiteral("no.such.command");
    RpaStatement disabled = Log(QString());
    disabled.enabled = false;
    RpaStatement call;
    call.command = QStringLiteral("process.run");
    call.arguments.insert(QStringLiteral("process"), QStringLiteral("备用"));

    QTest::newRow("missing argument") << Bad() << QStringLiteral("【主流程】“输出日志”的“内容”没有填写");
    QTest::newRow("unknown command") << AppOf({unknown}) << QStringLiteral("未知的指令“no.such.command”");
    QTest::newRow("undefined variable") << AppOf({Log(QStringLiteral("=缺少"))}) << QStringLiteral("缺少");
    QTest::newRow("in a process that is called")
        << AppOf({call}, {Log(QString())}) << QStringLiteral("【备用】");
    QTest::newRow("in one that nobody starts") << AppOf({}, {Log(QString())}) << QString();
    QTest::newRow("commented out") << AppOf({disabled}) << QString();
    QTest::newRow("of an app in Python") << AppOf({Log(QString())}, {}, 1) << QString();
    QByteArray lost = Good();
    lost.replace(R"("processName":"主流程")", R"("processName":"丢失")");
    QTest::newRow("button without its process") << lost << QStringLiteral("流程“丢失”不存在");
    RpaStatement click;
    click.command = QStringLiteral("browser.click");
    click.arguments.insert(QStringLiteral("element"), QStringLiteral("gone"));
    QTest::newRow("element that is gone") << AppOf({click}) << QStringLiteral("元素已不存在");
}

void ReleaseCheckTest::refusesWhatCannotRun()
{
    QFETCH(const QByteArray, content);
    QFETCH(const QString, problem);
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 3)});
    fixture.server.Enqueue(FaultServer::Data(content, 3));
    fixture.server.Enqueue(VersionReplies::Released(1, true, QString(), fixture.Version(v1, 3)));

    fixture.Release(v1, 2);

    QVERIFY(fixture.answers.WaitFor(2));
    QCOMPARE(fixture.answers.LastSucceeded(), problem.isEmpty());
    QVERIFY2(fixture.answers.LastError().contains(problem), qPrintable(fixture.answers.LastError()));
    QCOMPARE(Releases(fixture), problem.isEmpty() ? 1 : 0);
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetSnapshot(v1)->GetState(), AppSnapshotDevelop);
}

void ReleaseCheckTest::saysWhatWasRefused()
{
    QFETCH(const int, type);
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 3)});
    fixture.server.Enqueue(FaultServer::Data(Bad(), 3));

    fixture.Release(v1, type);

    QVERIFY(fixture.answers.WaitFor(2));
    QCOMPARE(
        fixture.answers.LastError(),
        QStringLiteral("该版本无法运行，没有%1：【主流程】“输出日志”的“内容”没有填写，请在属性中填写“内容”")
            .arg(type == 1 ? QStringLiteral("灰度") : QStringLiteral("上线")));
    const auto response = fixture.answers.Last().response.dynamicCast<GrayOrReleaseResponse>();
    QVERIFY(response);
    QCOMPARE(response->GetResult(), 0);
    QVERIFY(fixture.Logic()->GetActsUnderWay(QStringLiteral("app1")).isEmpty());
}

void ReleaseCheckTest::judgesTheReleasedVersionAndNotTheOpenOne_data()
{
    QTest::addColumn<bool>("openIsGood");
    QTest::newRow("open one runs") << true;
    QTest::newRow("open one does not") << false;
}

void ReleaseCheckTest::judgesTheReleasedVersionAndNotTheOpenOne()
{
    QFETCH(const bool, openIsGood);
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1), fixture.Version(v2, 5)});
    fixture.server.Enqueue(FaultServer::Data(openIsGood ? Good() : Bad(), 1));
    fixture.Load(v1);
    QVERIFY(fixture.answers.WaitFor(2));
    fixture.server.Enqueue(FaultServer::Data(openIsGood ? Bad() : Good(), 5));
    fixture.server.Enqueue(VersionReplies::Released(1, true, QString(), fixture.Version(v2, 5)));

    fixture.Release(v2, 1);

    QVERIFY(fixture.answers.WaitFor(3));
    QCOMPARE(fixture.answers.LastSucceeded(), !openIsGood);
    QCOMPARE(fixture.server.GetRequests().at(2).path, QByteArray("/api/v1/versions/v2/data"));
    QCOMPARE(Releases(fixture), openIsGood ? 0 : 1);
}

void ReleaseCheckTest::leavesContentThatNobodySawToTheServer()
{
    // Given: somebody else saved what cannot run over what the author sees
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(FaultServer::Data(Bad(), 2));
    fixture.server.Enqueue(ChangedByAnother());

    fixture.Release(v1, 1);

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY2(fixture.answers.LastError().contains(QStringLiteral("已被他人修改")),
             qPrintable(fixture.answers.LastError()));
    QCOMPARE(fixture.server.GetRequests().last().headers.value("if-match"), QByteArray("\"1\""));
}

void ReleaseCheckTest::releasesNothingThatItCouldNotRead_data()
{
    QTest::addColumn<FaultServer::Reply>("reply");
    QTest::newRow("gone") << FaultServer::Refusal(404, "not-found", QStringLiteral("不存在"));
    QTest::newRow("not an app") << FaultServer::Data("{\"uiData\":[]}", 1);
    QTest::newRow("of another digest") << FaultServer::Failing(Fault::WrongDigest);
    QTest::newRow("cut") << FaultServer::Failing(Fault::CutWithLength);
    FaultServer::Reply untagged = FaultServer::Data(Good(), 1);
    untagged.fault = Fault::NoEtag;
    QTest::newRow("without a revision") << untagged;
}

void ReleaseCheckTest::releasesNothingThatItCouldNotRead()
{
    QFETCH(const FaultServer::Reply, reply);
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.SetScript([reply](const FaultServer::Request& request) {
        return request.path.endsWith("/data")
                   ? reply
                   : VersionReplies::Released(1, true, QString(), EditorLogicFixture::Version(v1, 1));
    });

    fixture.Release(v1, 1);

    QVERIFY(fixture.answers.WaitFor(2));
    QVERIFY(!fixture.answers.LastSucceeded());
    QVERIFY(!fixture.answers.LastError().isEmpty());
    QCOMPARE(Releases(fixture), 0);
    QCOMPARE(fixture.Logic()->GetDevSnapshotManager()->GetSnapshot(v1)->GetState(), AppSnapshotDevelop);
}

void ReleaseCheckTest::answersAtTearDownWhileItReads()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(FaultServer::Failing(Fault::Silence));
    fixture.Release(v1, 1);
    QTRY_COMPARE(fixture.server.GetRequestCount(), 2);

    fixture.Logic()->Shutdown();

    QCOMPARE(fixture.answers.Count(), 2);
    QVERIFY(!fixture.answers.LastSucceeded());
    QCOMPARE(Releases(fixture), 0);
}

void ReleaseCheckTest::releasesAfterTheErrorWasMended()
{
    EditorLogicFixture fixture;
    fixture.GivenVersions({fixture.Version(v1, 1)});
    fixture.server.Enqueue(FaultServer::Data(Bad(), 1));
    fixture.Release(v1, 1);
    QVERIFY(fixture.answers.WaitFor(2));
    const QByteArray mended = Good();
    fixture.server.Enqueue(VersionReplies::Saved(200, fixture.Version(v1, 2, mended)));
    fixture.server.Enqueue(FaultServer::Data(mended, 2));
    fixture.server.Enqueue(VersionReplies::Released(1, true, QString(), fixture.Version(v1, 2)));

    fixture.Update(fixture.Record(v1, QString::fromUtf8(mended)));
    QVERIFY(fixture.answers.WaitFor(3));
    fixture.Release(v1, 1);

    QVERIFY(fixture.answers.WaitFor(4));
    QVERIFY2(fixture.answers.LastSucceeded(), qPrintable(fixture.answers.LastError()));
}

RPA_TEST_MAIN(ReleaseCheckTest)

#include "tst_releasecheck.moc"
