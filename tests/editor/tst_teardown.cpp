// SPDX-License-Identifier: Apache-2.0

// The host may take the editor away at any moment.
#include "EditorFixture.h"
#include "FaultServer.h"
#include "ModalDriver.h"
#include "TestApp.h"
#include "ToastWatcher.h"
#include "VersionReplies.h"

#include <OxHttp/HttpNotifyManager.h>
#include <OxHttp/HttpObserverBase.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <WbBaseUI/WbPushButton.h>

#include <QtTest>

namespace
{
// Counts the answers that reach the process, whoever asked.
class AnswerCounter : public HttpObserverBase
{
public:
    AnswerCounter()
    {
        HttpNotifyManager::Instance()->AddObserver(
            this, {NotifySaveAppSnapshotInfo, NotifyUpdateAppSnapshotInfo, NotifyDeleteAppSnapshotInfo,
                   NotifyGetSnapshotList, NotifyGetDevSnapshotData, NotifyGrayOrRelease});
    }
    ~AnswerCounter() override { HttpNotifyManager::Instance()->RemoveAllMessage(this); }

    void OnHttpNotify(int, QSharedPointer<IHttpRequest>, QSharedPointer<IHttpResponse>) override { ++count; }

    int count = 0;
};
} // namespace

class TearDownTest : public EditorFixture
{
    Q_OBJECT

private slots:
    void isTakenAwayWhileTheListIsUnderWay()
    {
        world.AddVersion(app, QStringLiteral("版本1"));
        AnswerCounter answers;
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);

        author.Destroy();

        QTRY_COMPARE(answers.count, 1);
    }

    void isTakenAwayWhileAVersionIsLoading()
    {
        VersionReplies::Version version;
        version.appId = app.GetAppId();
        FaultServer server;
        server.SetScript([version](const FaultServer::Request& request) {
            if (request.path.endsWith("/versions"))
                return VersionReplies::List({version});
            FaultServer::Reply late = FaultServer::Data(VersionReplies::App(), 1);
            late.delay = std::chrono::milliseconds(50);
            return late;
        });
        world.UseServer(server.GetUrl());
        AnswerCounter answers;
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(server.GetRequestCount(), 2);

        author.Destroy();

        QTRY_COMPARE(answers.count, 2);
    }

    void isTakenAwayWhileASaveIsUnderWay()
    {
        EditorDriver author;
        OpenEdited(author);
        AnswerCounter answers;
        author.Press("pushButtonSave");

        author.Destroy();

        QTRY_COMPARE(answers.count, 1);
        QVERIFY(world.GetInstructions(id).contains(QStringLiteral("edited")));
    }

    void isTakenAwayWhileItAsksBeforeClosing()
    {
        EditorDriver author;
        OpenEdited(author);
        ModalDriver modals;
        modals.Then([&author](QWidget*) { author.Destroy(); });

        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::Refused);

        QVERIFY(!author.GetEditor());
    }

    void isTakenAwayDuringTheBlockingSave()
    {
        EditorDriver author;
        OpenEdited(author);
        AnswerCounter answers;
        FaultServer silent;
        silent.SetScript(
            [](const FaultServer::Request&) { return FaultServer::Failing(FaultServer::Fault::Silence); });
        world.UseServer(silent.GetUrl());
        QTimer watch;
        connect(&watch, &QTimer::timeout, &watch, [&author, &silent] {
            if (silent.GetRequestCount() > 0)
                author.Destroy();
        });
        watch.start(1);
        ModalDriver modals;
        modals.Then([](QWidget* box) { QVERIFY(ModalDriver::Press(box, QStringLiteral("是"))); });

        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::Refused);

        QVERIFY(!author.GetEditor());
        QTRY_COMPARE_WITH_TIMEOUT(answers.count, 1, 10000);
    }

    void isTakenAwayWhileItAsksBeforeSwitching()
    {
        EditorDriver author;
        OpenEdited(author);
        ModalDriver modals;
        modals.Then([&author](QWidget*) { author.Destroy(); });

        QMetaObject::invokeMethod(author.Find("version_combo"), "SigSelectVersion",
                                  Q_ARG(QVariant, QVariant(QStringLiteral("another"))));

        QVERIFY(!author.GetEditor());
    }

    void isTakenAwayWhileThePressedRowAsks()
    {
        world.AddVersion(app, QStringLiteral("旧版"));
        EditorDriver author;
        OpenEdited(author);
        ModalDriver modals;
        modals.Then([&author](QWidget*) { author.Destroy(); });

        QVERIFY(author.PickVersion(QStringLiteral("旧版")));

        QVERIFY(!author.GetEditor());
    }

    void isTakenAwayWhileThePressedDeleteMarkAsks()
    {
        world.AddVersion(app, QStringLiteral("旧版"));
        EditorDriver author;
        OpenEdited(author);
        ModalDriver modals;
        modals.Then([&author](QWidget*) { author.Destroy(); });

        QVERIFY(author.PressDelete(QStringLiteral("旧版")));

        QVERIFY(!author.GetEditor());
    }

    void isTakenAwayWhileAPressedButtonAsks()
    {
        EditorDriver author;
        OpenEdited(author);
        ModalDriver modals;
        modals.Then([&author](QWidget*) { author.Destroy(); });

        author.Press("pushButtonSaveAs");

        QVERIFY(!author.GetEditor());
    }

    void isTakenAwayDuringTheSaveBeforeSwitching()
    {
        EditorDriver author;
        OpenEdited(author);
        AnswerCounter answers;
        FaultServer silent;
        silent.SetScript(
            [](const FaultServer::Request&) { return FaultServer::Failing(FaultServer::Fault::Silence); });
        world.UseServer(silent.GetUrl());
        QTimer watch;
        connect(&watch, &QTimer::timeout, &watch, [&author, &silent] {
            if (silent.GetRequestCount() > 0)
                author.Destroy();
        });
        watch.start(1);
        ModalDriver modals;
        modals.Then([](QWidget* box) { QVERIFY(ModalDriver::Press(box, QStringLiteral("是"))); });

        QMetaObject::invokeMethod(author.Find("version_combo"), "SigSelectVersion",
                                  Q_ARG(QVariant, QVariant(QStringLiteral("another"))));

        QVERIFY(!author.GetEditor());
        QTRY_COMPARE_WITH_TIMEOUT(answers.count, 1, 10000);
    }

    void isTakenAwayWhileAButtonAsksSomething_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::newRow("save as") << QByteArray("pushButtonSaveAs");
        QTest::newRow("gray release") << QByteArray("pushButtonBeta");
        QTest::newRow("publish") << QByteArray("pushButtonPublish");
        QTest::newRow("template") << QByteArray("pushButtonExportAppData");
    }

    void isTakenAwayWhileAButtonAsksSomething()
    {
        QFETCH(QByteArray, button);
        world.AddVersion(app, QStringLiteral("版本1"));
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));
        ModalDriver modals;
        modals.Then([&author](QWidget*) { author.Destroy(); });

        author.Find<WbPushButton>(button)->click();

        QVERIFY(!author.GetEditor());
    }

    void isTakenAwayWhileItAsksBeforeDeleting()
    {
        world.AddVersion(app, QStringLiteral("旧版"));
        EditorDriver author;
        OpenEdited(author);
        ModalDriver modals;
        modals.Then([&author](QWidget*) { author.Destroy(); });

        QMetaObject::invokeMethod(author.Find("version_combo"), "SigDeleteVersion",
                                  Q_ARG(QVariant, QVariant(id)));

        QVERIFY(!author.GetEditor());
    }

    void answersEveryRequestOnceWhateverTheServerDoes_data()
    {
        QTest::addColumn<FaultServer::Fault>("fault");
        const QVector<FaultServer::Fault> faults = FaultServer::AllFaults();
        for (const FaultServer::Fault fault : faults)
            QTest::newRow(FaultServer::NameOf(fault)) << fault;
    }

    void answersEveryRequestOnceWhateverTheServerDoes()
    {
        QFETCH(FaultServer::Fault, fault);
        EditorDriver author;
        OpenEdited(author);
        FaultServer server;
        server.SetScript([fault](const FaultServer::Request&) { return FaultServer::Failing(fault); });
        world.UseServer(server.GetUrl());
        AnswerCounter answers;
        ToastWatcher toasts;

        author.Press("pushButtonSave");
        QTRY_COMPARE_WITH_TIMEOUT(answers.count, 1, 20000);
        author.Destroy();
        QCoreApplication::processEvents();

        QCOMPARE(answers.count, 1);
        QCOMPARE(toasts.GetCount(), 1);
    }

    void survivesEveryRefusal_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {400, 401, 404, 409, 412, 413, 428, 429, 500, 503})
            QTest::newRow(QByteArray::number(status)) << status;
    }

    void survivesEveryRefusal()
    {
        QFETCH(int, status);
        EditorDriver author;
        OpenEdited(author);
        FaultServer server;
        server.SetScript([status](const FaultServer::Request&) {
            return FaultServer::Refusal(status, "refused", QStringLiteral("服务器拒绝了请求"));
        });
        world.UseServer(server.GetUrl());
        ToastWatcher toasts;
        AnswerCounter answers;

        author.Press("pushButtonSave");
        QTRY_COMPARE(answers.count, 1);

        QCOMPARE(toasts.GetCount(), 1);
        QCOMPARE(toasts.GetToasts().first().type, 2);
        // The author goes on, and saves again when the server is well.
        world.SignIn();
        author.TypeInstructions(QStringLiteral("more"));
        author.Press("pushButtonSave");
        QTRY_COMPARE(answers.count, 2);
        QVERIFY(world.GetInstructions(id).contains(QStringLiteral("more")));
    }

private:
    void OpenEdited(EditorDriver& author)
    {
        id = world.AddVersion(app, QStringLiteral("版本1"));
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));
        author.TypeInstructions(QStringLiteral("edited"));
    }

    QString id;
};

RPA_TEST_MAIN(TearDownTest)
#include "tst_teardown.moc"
