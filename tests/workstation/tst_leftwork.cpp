// SPDX-License-Identifier: Apache-2.0

#include "DraftController.h"
#include "EditorPage.h"
#include "FaultServer.h"
#include "LeftWork.h"
#include "ModalDriver.h"
#include "TestApp.h"
#include "TestFolder.h"
#include "ToastWatcher.h"
#include "VersionReplies.h"

#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaServiceClient/VersionServiceSettings.h>
#include <WbBaseUI/UIMain.h>
#include <WbCore/WbGlobalData.h>

#include <QPushButton>
#include <QSemaphore>
#include <QTextEdit>
#include <QtTest>

namespace
{
AppRecord App(const QString& id, const QString& name)
{
    AppRecord app;
    app.id = id;
    app.name = name;
    app.creator = QStringLiteral("author");
    return app;
}

// Two apps of one version each. What changes a version waits for the gate, and fails.
class Service
{
public:
    Service()
    {
        server.SetScript([this](const FaultServer::Request& request) {
            const bool isOfX = request.path.contains("x");
            if (request.method != "GET") {
                gate.tryAcquire(1, 20000);
                return FaultServer::Refusal(500, "broken", QStringLiteral("磁盘已满。"));
            }
            if (request.path.endsWith("/data"))
                return FaultServer::Data(VersionReplies::App(R"("extendInfo":{"manual":"text"})"), 1);
            VersionReplies::Version version;
            version.id = isOfX ? QStringLiteral("vx") : QStringLiteral("vy");
            version.appId = isOfX ? QStringLiteral("x") : QStringLiteral("y");
            version.name = isOfX ? QStringLiteral("甲") : QStringLiteral("乙");
            return VersionReplies::List({version});
        });
    }

    FaultServer server;
    QSemaphore gate;
};
} // namespace

// What an editor left behind is told by the workstation.
class LeftWorkTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void namesTheSaveThatFailedAfterItsEditorWasLeft();
    void saysNothingOfAFailureThatTheEditorShows();
    void saysWhichReleaseHasNoOutcomeYet();
    void saysNothingWhenNothingIsUnderWay();

private:
    void Open(const AppRecord& app);
    void Press(const char* button);
    void Type(const QString& text);

    std::unique_ptr<TestFolder> folder;
    std::unique_ptr<Service> service;
    std::unique_ptr<QWidget> window;
    std::unique_ptr<DraftController> drafts;
    std::unique_ptr<LeftWork> leftWork;
    EditorPage* page = nullptr;
};

void LeftWorkTest::init()
{
    folder = std::make_unique<TestFolder>();
    service = std::make_unique<Service>();
    VersionServiceSettings::Instance()->SetBaseUrl(service->server.GetUrl());
    VersionServiceSettings::Instance()->SetToken("token");
    RpaGlobalDataManager::Instance()->SetApiVersion(QStringLiteral("1.0.0"));
    WbGlobalData::Instance()->SetPin(QStringLiteral("author"));
    window = std::make_unique<QWidget>();
    window->resize(1280, 720);
    UIMain::Instance()->SetMainWidget(window.get());
    page = new EditorPage(window.get());
    page->resize(window->size());
    drafts = std::make_unique<DraftController>(RpaEditorLogic::Instance()->GetSaveLedger(), window.get());
    drafts->Start(folder->path());
    leftWork = std::make_unique<LeftWork>([this](const QString& appId) { return drafts->Keeps(appId); });
    connect(page, &EditorPage::SigLeft, leftWork.get(), &LeftWork::Leave);
    connect(page, &EditorPage::SigClosed, drafts.get(), &DraftController::Close);
    window->show();
}

void LeftWorkTest::cleanup()
{
    page->Discard();
    RpaEditorLogic::Instance()->Forget();
    leftWork.reset();
    drafts.reset();
    UIMain::Instance()->SetMainWidget(nullptr);
    window.reset();
    service.reset();
    folder.reset();
}

void LeftWorkTest::Open(const AppRecord& app)
{
    drafts->Open(app);
    page->Open(app);
    QTRY_VERIFY(page->findChild<QTextEdit*>(QStringLiteral("richTextView")) &&
                page->findChild<QTextEdit*>(QStringLiteral("richTextView"))->toPlainText() ==
                    QStringLiteral("text"));
}

void LeftWorkTest::Press(const char* button)
{
    auto* found = page->findChild<QWidget*>(QLatin1String(button));
    QVERIFY(found);
    QTest::mouseClick(found, Qt::LeftButton);
}

void LeftWorkTest::Type(const QString& text)
{
    Press("pushButtonExtend");
    QTest::keyClicks(page->findChild<QTextEdit*>(QStringLiteral("richTextView")), text);
}

void LeftWorkTest::namesTheSaveThatFailedAfterItsEditorWasLeft()
{
    Open(App(QStringLiteral("x"), QStringLiteral("应用一")));
    Type(QStringLiteral("new "));
    Press("pushButtonSave");
    QVERIFY(page->Leave());
    drafts->Open(App(QStringLiteral("y"), QStringLiteral("应用二")));
    page->Open(App(QStringLiteral("y"), QStringLiteral("应用二")));
    ToastWatcher toasts;

    service->gate.release(1);

    QTRY_COMPARE(toasts.GetCount(), 1);
    QCOMPARE(toasts.GetTexts().first(),
             QStringLiteral("应用“应用一”的版本“甲”没有保存成功：磁盘已满。"
                            "未保存的内容在本机的草稿中，重新打开该应用时可以恢复"));
    QVERIFY(drafts->Keeps(QStringLiteral("x")));
    QVERIFY(!drafts->Keeps(QStringLiteral("y")));
}

void LeftWorkTest::saysNothingOfAFailureThatTheEditorShows()
{
    Open(App(QStringLiteral("x"), QStringLiteral("应用一")));
    Type(QStringLiteral("new "));
    ToastWatcher toasts;
    service->gate.release(1);

    Press("pushButtonSave");

    QTRY_COMPARE(toasts.GetTexts(), QStringList(QStringLiteral("磁盘已满。")));
}

void LeftWorkTest::saysWhichReleaseHasNoOutcomeYet()
{
    Open(App(QStringLiteral("x"), QStringLiteral("应用一")));
    ModalDriver modals;
    modals.Then([](QWidget* box) { QVERIFY(ModalDriver::Press(box, QStringLiteral("是"))); });
    Press("pushButtonBeta");
    ToastWatcher toasts;

    QVERIFY(page->Leave());

    QTRY_COMPARE(toasts.GetTexts(),
                 QStringList(QStringLiteral(
                     "离开应用“应用一”时还没有结果：灰度版本“甲”。重新打开该应用可以看到结果")));
    service->gate.release(1);
}

void LeftWorkTest::saysNothingWhenNothingIsUnderWay()
{
    Open(App(QStringLiteral("x"), QStringLiteral("应用一")));
    ToastWatcher toasts;

    QVERIFY(page->Leave());
    Open(App(QStringLiteral("y"), QStringLiteral("应用二")));

    QCOMPARE(toasts.GetCount(), 0);
}

RPA_TEST_MAIN(LeftWorkTest)
#include "tst_leftwork.moc"
