// SPDX-License-Identifier: Apache-2.0

#include "EditorFixture.h"
#include "FaultServer.h"
#include "ModalDriver.h"
#include "RecordingMonitor.h"
#include "TestApp.h"
#include "TestFolder.h"
#include "ToastWatcher.h"
#include "VersionReplies.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaCore/RpaSuperDir.h>
#include <RpaEditorCore/RpaEditorNotify.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/sessions/GetCurrentSessionRequest.h>

#include <QLabel>
#include <QSignalSpy>
#include <QtTest>

namespace
{
const QString grayAgain = QStringLiteral("灰度版本不能再次灰度。");
const QString onlineToGray = QStringLiteral("线上版本不能灰度。");
const QString onlineAgain = QStringLiteral("线上版本不能再次上线。");
const QString unsaved = QStringLiteral("当前版本未保存，请保存后再操作。");
const QString askGray = QStringLiteral("确定开始灰度吗？");
const QString askPublish = QStringLiteral("确定发布上线吗");
const QString askPublishWithoutChanges =
    QStringLiteral("仅支持上线原灰度版本内容，针对当前灰度版本修改将忽略，确定发布上线吗？");

// What the editor has in front of it when a button is pressed.
enum Selected
{
    DefaultRow,
    Develop,
    Gray,
    Online,
};

QStringList TextsOf(QWidget* box)
{
    QStringList texts;
    const QList<QLabel*> labels = box->findChildren<QLabel*>();
    for (const QLabel* label : labels)
        texts.append(label->text());
    return texts;
}
} // namespace

class GrayAndPublishTest : public EditorFixture
{
    Q_OBJECT

private slots:
    void refusesOrAsks_data()
    {
        QTest::addColumn<int>("selected");
        QTest::addColumn<bool>("isModified");
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isQuestion");

        const QByteArray gray("pushButtonBeta");
        const QByteArray publish("pushButtonPublish");
        QTest::newRow("gray: never saved") << int(DefaultRow) << false << gray << unsaved << false;
        QTest::newRow("gray: never saved, modified") << int(DefaultRow) << true << gray << unsaved << false;
        QTest::newRow("gray: develop") << int(Develop) << false << gray << askGray << true;
        QTest::newRow("gray: develop, modified") << int(Develop) << true << gray << unsaved << false;
        QTest::newRow("gray: gray") << int(Gray) << false << gray << grayAgain << false;
        QTest::newRow("gray: gray, modified") << int(Gray) << true << gray << grayAgain << false;
        QTest::newRow("gray: online") << int(Online) << false << gray << onlineToGray << false;
        QTest::newRow("gray: online, modified") << int(Online) << true << gray << onlineToGray << false;
        QTest::newRow("publish: never saved") << int(DefaultRow) << false << publish << unsaved << false;
        QTest::newRow("publish: never saved, modified")
            << int(DefaultRow) << true << publish << unsaved << false;
        QTest::newRow("publish: develop") << int(Develop) << false << publish << askPublish << true;
        QTest::newRow("publish: develop, modified") << int(Develop) << true << publish << unsaved << false;
        QTest::newRow("publish: gray") << int(Gray) << false << publish << askPublish << true;
        QTest::newRow("publish: gray, modified")
            << int(Gray) << true << publish << askPublishWithoutChanges << true;
        QTest::newRow("publish: online") << int(Online) << false << publish << onlineAgain << false;
        QTest::newRow("publish: online, modified") << int(Online) << true << publish << onlineAgain << false;
    }

    void refusesOrAsks()
    {
        QFETCH(int, selected);
        QFETCH(bool, isModified);
        QFETCH(QByteArray, button);
        QFETCH(QString, text);
        QFETCH(bool, isQuestion);
        EditorDriver author;
        Open(author, selected);
        if (isModified)
            author.TypeInstructions(QStringLiteral("edited"));
        FaultServer nothingIsSent;
        world.UseServer(nothingIsSent.GetUrl());
        RecordingMonitor monitor;
        ModalDriver modals;
        modals.Then([&](QWidget* box) {
            QVERIFY2(TextsOf(box).contains(text), qPrintable(TextsOf(box).join(QLatin1Char('|'))));
            QCOMPARE(box->windowTitle(), isQuestion        ? QStringLiteral("请确认")
                                         : text == unsaved ? QStringLiteral("警告")
                                                           : QStringLiteral("提示"));
            QVERIFY(ModalDriver::Press(box, isQuestion ? QStringLiteral("否") : QStringLiteral("确定")));
        });

        author.Press(button);

        QCOMPARE(modals.GetSeenCount(), 1);
        QCOMPARE(monitor.GetEventIds(),
                 QStringList(button == "pushButtonBeta" ? QStringLiteral("OXA_AppDevelop_GrayRelease")
                                                        : QStringLiteral("OXA_AppDevelop_Launch")));
        QCOMPARE(monitor.GetReports().first().pageId, QStringLiteral("OXA_AppDevelop"));
        QVERIFY(monitor.GetReports().first().params.isEmpty());
        QCOMPARE(PathsUntilNow(nothingIsSent), QList<QByteArray>());
    }

    void sendsNothingWhenTheBoxIsClosed_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::newRow("gray") << QByteArray("pushButtonBeta");
        QTest::newRow("publish") << QByteArray("pushButtonPublish");
    }

    void sendsNothingWhenTheBoxIsClosed()
    {
        QFETCH(QByteArray, button);
        EditorDriver author;
        Open(author, Develop);
        FaultServer nothingIsSent;
        world.UseServer(nothingIsSent.GetUrl());
        ModalDriver modals;
        modals.Then([](QWidget* box) { box->close(); });

        author.Press(button);

        QCOMPARE(modals.GetSeenCount(), 1);
        QCOMPARE(PathsUntilNow(nothingIsSent), QList<QByteArray>());
    }

    void releasesWhenTheUserAgrees_data()
    {
        QTest::addColumn<int>("selected");
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("name");
        QTest::newRow("develop to gray")
            << int(Develop) << QByteArray("pushButtonBeta") << 1 << QStringLiteral("【灰度】选中版");
        QTest::newRow("develop to online")
            << int(Develop) << QByteArray("pushButtonPublish") << 2 << QStringLiteral("【线上】选中版");
        QTest::newRow("gray to online")
            << int(Gray) << QByteArray("pushButtonPublish") << 2 << QStringLiteral("【线上】选中版");
    }

    void releasesWhenTheUserAgrees()
    {
        QFETCH(int, selected);
        QFETCH(QByteArray, button);
        QFETCH(int, type);
        QFETCH(QString, name);
        EditorDriver author;
        Open(author, selected);
        QSignalSpy published(RpaEditorNotify::Instance(), &RpaEditorNotify::SigPublishFinished);
        RequestStatus statusWhenTold = RequestStatus::Failed;
        connect(RpaEditorNotify::Instance(), &RpaEditorNotify::SigPublishFinished, &published,
                [&] { statusWhenTold = author.GetStatus(); });
        ModalDriver modals;
        modals.Then([](QWidget* box) { QVERIFY(ModalDriver::Press(box, QStringLiteral("是"))); });

        author.Press(button);
        QTRY_COMPARE(published.size(), 1);

        QCOMPARE(published.at(0).at(0).toString(), app.GetAppId());
        QCOMPARE(published.at(0).at(1).toInt(), type);
        QCOMPARE(statusWhenTold, RequestStatus::Loading);
        QTRY_VERIFY(author.GetVersions().contains(name));
        QCOMPARE(world.GetState(app, id), type + 1);
        QTRY_COMPARE(author.GetStatus(), RequestStatus::Succeeded);
    }

    void publishesTheStoredContentOfAChangedGrayVersion()
    {
        EditorDriver author;
        Open(author, Gray);
        author.TypeInstructions(QStringLiteral("edited"));
        QSignalSpy published(RpaEditorNotify::Instance(), &RpaEditorNotify::SigPublishFinished);
        ModalDriver modals;
        modals.Then([](QWidget* box) {
            QVERIFY(TextsOf(box).contains(askPublishWithoutChanges));
            QVERIFY(ModalDriver::Press(box, QStringLiteral("是")));
        });

        author.Press("pushButtonPublish");
        QTRY_COMPARE(published.size(), 1);

        QCOMPARE(published.at(0).at(1).toInt(), 2);
        QCOMPARE(world.GetState(app, id), 3);
        QVERIFY(!world.GetInstructions(id).contains(QStringLiteral("edited")));
        QTRY_COMPARE(author.GetStatus(), RequestStatus::Succeeded);
    }

    void tellsTheWorkstationWhateverTheServerSaysAboutTips_data()
    {
        QTest::addColumn<bool>("needTip");
        QTest::newRow("tip") << true;
        QTest::newRow("no tip") << false;
    }

    void tellsTheWorkstationWhateverTheServerSaysAboutTips()
    {
        QFETCH(bool, needTip);
        EditorDriver author;
        Open(author, Develop);
        VersionReplies::Version version;
        version.id = id;
        version.appId = app.GetAppId();
        version.state = 2;
        FaultServer server;
        server.SetScript([version, needTip](const FaultServer::Request& request) {
            if (request.path.endsWith("/release"))
                return VersionReplies::Released(1, needTip, QString(), version);
            if (request.path.endsWith("/data"))
                return FaultServer::Data(VersionReplies::App(), 1);
            return FaultServer::Refusal(503, "busy", QStringLiteral("服务繁忙"));
        });
        world.UseServer(server.GetUrl());
        QSignalSpy published(RpaEditorNotify::Instance(), &RpaEditorNotify::SigPublishFinished);
        ModalDriver modals;
        modals.Then([](QWidget* box) { QVERIFY(ModalDriver::Press(box, QStringLiteral("是"))); });

        author.Press("pushButtonBeta");
        QTRY_COMPARE(published.size(), 1);

        QCOMPARE(published.at(0).at(2).toBool(), needTip);
        QTRY_COMPARE(author.GetStatus(), RequestStatus::Failed);
    }

    void leavesARefusedReleaseToTheToast()
    {
        EditorDriver author;
        Open(author, Develop);
        FaultServer server;
        server.SetScript([](const FaultServer::Request&) {
            return FaultServer::Refusal(403, "forbidden", QStringLiteral("没有发布权限"));
        });
        world.UseServer(server.GetUrl());
        QSignalSpy published(RpaEditorNotify::Instance(), &RpaEditorNotify::SigPublishFinished);
        ToastWatcher toasts;
        ModalDriver modals;
        modals.Then([](QWidget* box) { QVERIFY(ModalDriver::Press(box, QStringLiteral("是"))); });

        author.Press("pushButtonPublish");
        QTRY_COMPARE(toasts.GetTexts(), QStringList(QStringLiteral("没有发布权限")));

        QCOMPARE(published.size(), 0);
        QCOMPARE(author.GetStatus(), RequestStatus::Succeeded);
    }

    void goesOnWithACopyAfterTheOnlyVersionWasReleased()
    {
        // Given: templates, which would be offered to an app without anything to work on
        const TestFolder templates;
        RpaSuperDir::Instance()->SetTemplateDirs(templates.path(), templates.path());
        id = world.AddVersion(app, QStringLiteral("版本1"), QString(), QStringLiteral("stored"));
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));
        QTRY_COMPARE(author.GetStatus(), RequestStatus::Succeeded);
        ModalDriver onlyTheQuestion;
        onlyTheQuestion.Then([](QWidget* box) { QVERIFY(ModalDriver::Press(box, QStringLiteral("是"))); });

        author.Press("pushButtonBeta");
        QTRY_COMPARE(author.GetVersions(),
                     QStringList({QStringLiteral("版本2"), QStringLiteral("【灰度】版本1")}));
        QTRY_COMPARE(author.GetStatus(), RequestStatus::Succeeded);

        QCOMPARE(author.GetSelectedVersion(), QStringLiteral("【灰度】版本1"));
        QVERIFY(author.PickVersion(QStringLiteral("版本2")));
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本2"));
        QVERIFY(author.GetInstructions().contains(QStringLiteral("stored")));
        QCOMPARE(onlyTheQuestion.GetSeenCount(), 1);
        RpaSuperDir::Instance()->SetTemplateDirs(QString(), QString());
    }

    void releasesNothingThatCannotRun_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::newRow("gray") << QByteArray("pushButtonBeta");
        QTest::newRow("publish") << QByteArray("pushButtonPublish");
    }

    void releasesNothingThatCannotRun()
    {
        QFETCH(QByteArray, button);
        id = world.AddVersion(app, QStringLiteral("坏的"), [](RpaAppData& content) {
            RpaStatement statement;
            statement.command = QStringLiteral("log");
            content.GetProcessDataManager()->GetProcess(0)->SetStatements({statement});
        });
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("坏的"));
        QTRY_COMPARE(author.GetStatus(), RequestStatus::Succeeded);
        QSignalSpy published(RpaEditorNotify::Instance(), &RpaEditorNotify::SigPublishFinished);
        ToastWatcher toasts;
        ModalDriver modals;
        modals.Then([](QWidget* box) { QVERIFY(ModalDriver::Press(box, QStringLiteral("是"))); });

        author.Press(button);
        QTRY_COMPARE(toasts.GetCount(), 1);

        QVERIFY2(toasts.GetTexts().first().contains(QStringLiteral("【主流程】“输出日志”的“内容”没有填写")),
                 qPrintable(toasts.GetTexts().first()));
        QCOMPARE(published.size(), 0);
        QCOMPARE(world.GetState(app, id), 1);
        QCOMPARE(author.GetVersions(), QStringList(QStringLiteral("坏的")));
        QCOMPARE(author.GetStatus(), RequestStatus::Succeeded);
    }

private:
    // What was asked for before now: a request of the test's own, sent last, tells that the others would have
    // come.
    static QList<QByteArray> PathsUntilNow(const FaultServer& server)
    {
        QList<QByteArray> paths;
        VersionServiceClient client;
        client.Send(GetCurrentSessionRequest{}, nullptr,
                    [](const VersionServiceResult<VersionServiceSession>&) {});
        const auto last = [&] {
            paths.clear();
            for (const FaultServer::Request& request : server.GetRequests())
                paths.append(request.path);
            return paths.removeAll("/api/v1/sessions/current") > 0;
        };
        return QTest::qWaitFor(last, 10000) ? paths : QList<QByteArray>({"the last request never came"});
    }

    // Opens an app with a version "选中版" in the state, or with none at all.
    void Open(EditorDriver& author, int selected)
    {
        if (selected != DefaultRow) {
            world.AddVersion(app, QStringLiteral("开发版"));
            id = world.AddVersion(app, QStringLiteral("选中版"), QString(), QStringLiteral("stored"));
        }
        QString name = QStringLiteral("选中版");
        if (selected == Gray || selected == Online) {
            world.Release(id, selected == Gray ? 1 : 2);
            name.prepend(selected == Gray ? QStringLiteral("【灰度】") : QStringLiteral("【线上】"));
        }
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_VERIFY(!author.GetVersions().isEmpty());
        if (selected != DefaultRow && author.GetSelectedVersion() != name) {
            QVERIFY(author.PickVersion(name));
            QTRY_COMPARE(author.GetSelectedVersion(), name);
        }
        // The instructions tell when the version itself has arrived.
        if (selected != DefaultRow)
            QTRY_VERIFY(author.GetInstructions().contains(QStringLiteral("stored")));
    }

    QString id;
};

RPA_TEST_MAIN(GrayAndPublishTest)
#include "tst_grayandpublish.moc"
