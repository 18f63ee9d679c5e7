// SPDX-License-Identifier: Apache-2.0

// Saving while another version is on its way into the editor.
#include "EditorDriver.h"
#include "EditorWorld.h"
#include "FaultServer.h"
#include "ModalDriver.h"
#include "ServerRelay.h"
#include "TestApp.h"
#include "ToastWatcher.h"
#include "VersionReplies.h"

#include <OxHttp/HttpNotifyManager.h>
#include <OxHttp/HttpObserverBase.h>
#include <RpaAppData/RpaAppData.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>

#include <QComboBox>
#include <QSemaphore>
#include <QtTest>

#include <functional>

namespace
{
// Acts inside the delivery of an answer, after the editor has heard it.
class Afterwards : public HttpObserverBase
{
public:
    Afterwards(int notifyId, std::function<void()> act) : action(std::move(act))
    {
        HttpNotifyManager::Instance()->AddObserver(this, {notifyId});
    }
    ~Afterwards() override { HttpNotifyManager::Instance()->RemoveAllMessage(this); }

    void OnHttpNotify(int, QSharedPointer<IHttpRequest>, QSharedPointer<IHttpResponse>) override { action(); }

private:
    const std::function<void()> action;
};

ModalDriver::Step Press(const QString& button)
{
    return [button](QWidget* box) { QVERIFY(ModalDriver::Press(box, button)); };
}

bool SaysStillOpening(const ToastWatcher& toasts, const QString& version)
{
    const QStringList texts = toasts.GetTexts();
    return texts.size() == 1 &&
           texts.first().contains(QStringLiteral("版本“%1”正在打开，没有保存").arg(version));
}
} // namespace

class SaveDuringSwitchTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { world.Start(); }

    void init()
    {
        world.SignIn();
        relay = std::make_unique<ServerRelay>(world.GetServer().Port());
        QVERIFY(relay->Listen());
        world.UseServer(QUrl(QStringLiteral("http://127.0.0.1:%1").arg(relay->GetPort())));
        app = world.CreateApp();
        firstId = world.AddVersion(app, QStringLiteral("甲"), QString(), QStringLiteral("first"));
        secondId = world.AddVersion(app, QStringLiteral("乙"), QString(), QStringLiteral("second"));
        author = std::make_unique<EditorDriver>();
        author->GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author->GetInstructions(), QStringLiteral("second"));
        QVERIFY(author->PickVersion(QStringLiteral("甲")));
        QTRY_COMPARE(author->GetInstructions(), QStringLiteral("first"));
    }

    void cleanup()
    {
        author.reset();
        relay.reset();
    }

    void leavesThePickedVersionAloneWhileItOpens()
    {
        ToastWatcher toasts;
        relay->HoldAnswers();

        QVERIFY(author->PickVersion(QStringLiteral("乙")));
        author->Press("pushButtonSave");

        relay->ReleaseAnswers();
        QTRY_VERIFY2(SaysStillOpening(toasts, QStringLiteral("乙")),
                     qPrintable(toasts.GetTexts().join(QLatin1Char('|'))));
        QTRY_COMPARE(author->GetInstructions(), QStringLiteral("second"));
        QCOMPARE(world.GetInstructions(secondId), QStringLiteral("second"));
        QCOMPARE(world.GetInstructions(firstId), QStringLiteral("first"));
    }

    void savesIntoThePickedVersionOnceItIsOpen()
    {
        ToastWatcher toasts;
        relay->HoldAnswers();
        QVERIFY(author->PickVersion(QStringLiteral("乙")));
        author->Press("pushButtonSave");
        relay->ReleaseAnswers();
        QTRY_COMPARE(author->GetInstructions(), QStringLiteral("second"));
        QTRY_COMPARE(toasts.GetCount(), 1);
        author->TypeInstructions(QStringLiteral(" more"));

        author->Press("pushButtonSave");

        QTRY_COMPARE(toasts.GetCount(), 2);
        QCOMPARE(toasts.GetTexts().last(), QStringLiteral("保存成功"));
        QCOMPARE(world.GetInstructions(secondId), QStringLiteral("<p>second more</p>"));
    }

    void leavesTheNextVersionAloneWhenTheOpenOneWasDeleted()
    {
        ToastWatcher toasts;
        ModalDriver modals;
        modals.Then(Press(QStringLiteral("是")));
        const Afterwards deleted(NotifyDeleteAppSnapshotInfo, [this] {
            QCOMPARE(author->GetSelectedVersion(), QStringLiteral("乙"));
            author->Press("pushButtonSave");
        });

        QVERIFY(author->PressDelete(QStringLiteral("甲")));

        QTRY_VERIFY2(SaysStillOpening(toasts, QStringLiteral("乙")),
                     qPrintable(toasts.GetTexts().join(QLatin1Char('|'))));
        QTRY_COMPARE(author->GetInstructions(), QStringLiteral("second"));
        QCOMPARE(world.GetInstructions(secondId), QStringLiteral("second"));
    }

    void staysOpenWhenItIsToCloseDuringASwitch()
    {
        author->TypeInstructions(QStringLiteral(" edited"));
        FaultServer slow;
        QSemaphore gate;
        slow.SetScript([&gate](const FaultServer::Request&) {
            gate.tryAcquire(1, 20000);
            return FaultServer::Data(VersionReplies::App(R"("extendInfo":{"manual":"second"})"), 1);
        });
        world.UseServer(slow.GetUrl());
        ToastWatcher toasts;
        ModalDriver modals;
        modals.Then(Press(QStringLiteral("否"))); // not before the switch
        modals.Then([&gate](QWidget* box) {       // before closing
            QVERIFY(ModalDriver::Press(box, QStringLiteral("是")));
            gate.release();
        });
        QVERIFY(author->PickVersion(QStringLiteral("乙")));

        QCOMPARE(author->GetEditor()->BeforeClose(), BeforeCloseResult::Refused);

        QVERIFY2(SaysStillOpening(toasts, QStringLiteral("乙")),
                 qPrintable(toasts.GetTexts().join(QLatin1Char('|'))));
        QCOMPARE(slow.GetRequestCount(), 1);
        QCOMPARE(author->GetInstructions(), QStringLiteral("second"));
    }

    void leavesAVersionAloneThatCouldNotBeOpened()
    {
        ToastWatcher toasts;
        FaultServer broken;
        broken.SetScript([](const FaultServer::Request&) {
            return FaultServer::Refusal(500, "broken", QStringLiteral("坏了"));
        });
        const QUrl right(world.GetServer().BaseUrl());
        const Afterwards failed(NotifyGetDevSnapshotData, [&] {
            world.UseServer(right);
            author->Press("pushButtonSave");
        });
        world.UseServer(broken.GetUrl());

        QVERIFY(author->PickVersion(QStringLiteral("乙")));

        QTRY_VERIFY2(toasts.GetTexts()
                         .join(QLatin1Char('|'))
                         .contains(QStringLiteral("编辑器中的内容不是版本“乙”的内容，没有保存")),
                     qPrintable(toasts.GetTexts().join(QLatin1Char('|'))));
        QCOMPARE(world.GetInstructions(secondId), QStringLiteral("second"));
    }

    void overwritesAnotherVersionThatIsPickedInTheDialog()
    {
        author->TypeInstructions(QStringLiteral(" edited"));
        ModalDriver modals;
        modals.Then([](QWidget* dialog) {
            dialog->findChild<QComboBox*>(QStringLiteral("comboBoxName"))->setEditText(QStringLiteral("乙"));
            QVERIFY(ModalDriver::Press(dialog, QStringLiteral("确定")));
        });

        author->Press("pushButtonSaveAs");

        QCOMPARE(author->GetSelectedVersion(), QStringLiteral("乙"));
        QCOMPARE(world.GetInstructions(secondId), QStringLiteral("<p>first edited</p>"));
        // From here on it is the content of the second version.
        author->TypeInstructions(QStringLiteral(" again"));
        ToastWatcher toasts;
        author->Press("pushButtonSave");
        QTRY_COMPARE(toasts.GetTexts(), QStringList(QStringLiteral("保存成功")));
        QCOMPARE(world.GetInstructions(secondId), QStringLiteral("<p>first edited again</p>"));
        QCOMPARE(world.GetInstructions(firstId), QStringLiteral("first"));
    }

private:
    EditorWorld world;
    RobotExecuteInfo app;
    QString firstId;
    QString secondId;
    std::unique_ptr<ServerRelay> relay;
    std::unique_ptr<EditorDriver> author;
};

RPA_TEST_MAIN(SaveDuringSwitchTest)
#include "tst_saveduringswitch.moc"
