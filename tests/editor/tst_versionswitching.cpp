// SPDX-License-Identifier: Apache-2.0

#include "EditorFixture.h"
#include "FaultServer.h"
#include "ModalDriver.h"
#include "TestApp.h"
#include "ToastWatcher.h"
#include "VersionReplies.h"

#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>

#include <QLabel>
#include <QtTest>

namespace
{
const QString switchQuestion = QStringLiteral("版本数据已修改，是否先保存当前版本？");

// Presses a button of a box that says this.
ModalDriver::Step Answer(const QString& text, const QString& button)
{
    return [text, button](QWidget* box) {
        QStringList texts;
        const QList<QLabel*> labels = box->findChildren<QLabel*>();
        for (const QLabel* label : labels)
            texts.append(label->text());
        QVERIFY2(texts.contains(text), qPrintable(texts.join(QLatin1Char('|'))));
        QVERIFY(ModalDriver::Press(box, button));
    };
}
} // namespace

class VersionSwitchingTest : public EditorFixture
{
    Q_OBJECT

private slots:
    void startsAnAppWithoutVersionsFromTheDefault()
    {
        EditorDriver author;

        author.GetEditor()->SetExecuteInfo(app);
        QCOMPARE(author.GetVersions(), QStringList());
        QTRY_COMPARE(author.GetStatus(), RequestStatus::Succeeded);

        QCOMPARE(author.GetVersions(), QStringList(QStringLiteral("版本1")));
        QCOMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));
    }

    void showsTheDefaultRowBeforeAGrayVersion()
    {
        world.Release(world.AddVersion(app, QStringLiteral("测试版")), 1);
        EditorDriver author;

        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetStatus(), RequestStatus::Succeeded);

        QCOMPARE(author.GetVersions(),
                 QStringList({QStringLiteral("版本1"), QStringLiteral("【灰度】测试版")}));
        QCOMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));
    }

    void marksTheStateOfEveryVersionInTheServersOrder()
    {
        world.Release(world.AddVersion(app, QStringLiteral("一")), 1);
        world.Release(world.AddVersion(app, QStringLiteral("二")), 2);
        world.AddVersion(app, QStringLiteral("三"));
        EditorDriver author;
        Open(author, QStringLiteral("三"));

        QStringList expected = world.GetVersionNames(app);
        expected.replaceInStrings(QStringLiteral("一"), QStringLiteral("【灰度】一"));
        expected.replaceInStrings(QStringLiteral("二"), QStringLiteral("【线上】二"));
        QCOMPARE(author.GetVersions(), expected);
    }

    void opensTheFirstVersionOfTheList()
    {
        world.AddVersion(app, QStringLiteral("旧版"), QString(), QStringLiteral("old"));
        world.AddVersion(app, QStringLiteral("新版"), QString(), QStringLiteral("new"));
        EditorDriver author;

        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetSelectedVersion(), world.GetVersionNames(app).first());

        QVERIFY(author.GetInstructions().contains(QStringLiteral("new")));
    }

    void switchesToThePickedVersion()
    {
        EditorDriver author;
        OpenTwo(author);
        ModalDriver noQuestion;

        QVERIFY(author.PickVersion(QStringLiteral("旧版")));
        QTRY_VERIFY(author.GetInstructions().contains(QStringLiteral("old")));

        QCOMPARE(author.GetSelectedVersion(), QStringLiteral("旧版"));
    }

    void pickingTheDefaultRowStartsAFreshApp()
    {
        world.Release(world.AddVersion(app, QStringLiteral("测试版"), QString(), QStringLiteral("gray")), 1);
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetVersions().size(), 2);
        QVERIFY(author.PickVersion(QStringLiteral("【灰度】测试版")));
        QTRY_VERIFY(author.GetInstructions().contains(QStringLiteral("gray")));

        QVERIFY(author.PickVersion(QStringLiteral("版本1")));

        QCOMPARE(author.GetInstructions(), QString());
        QCOMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));
        // No version is open: saving makes a new one.
        ToastWatcher toasts;
        author.Press("pushButtonSave");
        QTRY_COMPARE(toasts.GetTexts(), QStringList(QStringLiteral("保存成功")));
        QCOMPARE(world.GetVersionIds(app).size(), 2);
    }

    void savesTheOpenVersionFirstWhenTheUserWantsIt()
    {
        EditorDriver author;
        OpenTwo(author);
        author.TypeInstructions(QStringLiteral("edited"));
        ModalDriver modals;
        modals.Then(Answer(switchQuestion, QStringLiteral("是")));

        QVERIFY(author.PickVersion(QStringLiteral("旧版")));
        QTRY_VERIFY(author.GetInstructions().contains(QStringLiteral("old")));

        QVERIFY(world.GetInstructions(newId).contains(QStringLiteral("edited")));
        QVERIFY(!world.GetInstructions(oldId).contains(QStringLiteral("edited")));
        QVERIFY(author.Find("version_combo")->isEnabled());
    }

    void dropsTheChangesWhenTheUserSaysNo()
    {
        EditorDriver author;
        OpenTwo(author);
        author.TypeInstructions(QStringLiteral("edited"));
        ModalDriver modals;
        modals.Then(Answer(switchQuestion, QStringLiteral("否")));

        QVERIFY(author.PickVersion(QStringLiteral("旧版")));
        QTRY_VERIFY(author.GetInstructions().contains(QStringLiteral("old")));

        QVERIFY(!world.GetInstructions(newId).contains(QStringLiteral("edited")));
        QVERIFY(!world.GetInstructions(oldId).contains(QStringLiteral("edited")));
    }

    void staysWithTheOpenVersionWhenTheUserDoesNotDecide_data()
    {
        QTest::addColumn<bool>("isClosed");
        QTest::newRow("cancel") << false;
        QTest::newRow("the box is closed") << true;
    }

    void staysWithTheOpenVersionWhenTheUserDoesNotDecide()
    {
        QFETCH(bool, isClosed);
        EditorDriver author;
        OpenTwo(author);
        author.TypeInstructions(QStringLiteral("edited"));
        ModalDriver modals;
        if (isClosed)
            modals.Then([](QWidget* box) { box->close(); });
        else
            modals.Then(Answer(switchQuestion, QStringLiteral("取消")));

        QVERIFY(author.PickVersion(QStringLiteral("旧版")));

        QCOMPARE(author.GetSelectedVersion(), QStringLiteral("新版"));
        QVERIFY(author.GetInstructions().contains(QStringLiteral("edited")));
    }

    void staysWithTheOpenVersionWhenTheSaveFails()
    {
        EditorDriver author;
        OpenTwo(author);
        author.TypeInstructions(QStringLiteral("edited"));
        FaultServer broken;
        broken.SetScript([](const FaultServer::Request&) {
            return FaultServer::Refusal(507, "disk-full", QStringLiteral("磁盘已满"));
        });
        world.UseServer(broken.GetUrl());
        ToastWatcher toasts;
        ModalDriver modals;
        modals.Then(Answer(switchQuestion, QStringLiteral("是")));

        QVERIFY(author.PickVersion(QStringLiteral("旧版")));

        QCOMPARE(toasts.GetTexts(), QStringList(QStringLiteral("磁盘已满")));
        QCOMPARE(author.GetSelectedVersion(), QStringLiteral("新版"));
        QVERIFY(author.Find("version_combo")->isEnabled());
        QVERIFY(author.GetInstructions().contains(QStringLiteral("edited")));
    }

    void leavesAChangedGrayVersionWithoutAQuestion()
    {
        world.AddVersion(app, QStringLiteral("开发版"), QString(), QStringLiteral("develop"));
        world.Release(world.AddVersion(app, QStringLiteral("测试版")), 1);
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetVersions().size(), 2);
        QVERIFY(author.PickVersion(QStringLiteral("【灰度】测试版")));
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("【灰度】测试版"));
        author.TypeInstructions(QStringLiteral("edited"));
        ModalDriver noQuestion;

        QVERIFY(author.PickVersion(QStringLiteral("开发版")));

        QTRY_VERIFY(author.GetInstructions().contains(QStringLiteral("develop")));
    }

    void showsWhyTheListDidNotCome()
    {
        FaultServer broken;
        broken.SetScript([](const FaultServer::Request&) {
            return FaultServer::Refusal(503, "busy", QStringLiteral("服务繁忙，请稍后再试"));
        });
        world.UseServer(broken.GetUrl());
        EditorDriver author;

        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetStatus(), RequestStatus::Failed);

        QVERIFY(author.Find("editorWidget")->isHidden());
        const QList<QLabel*> labels = author.Find("requestStatusWidget")->findChildren<QLabel*>();
        QVERIFY(std::any_of(labels.cbegin(), labels.cend(), [](const QLabel* label) {
            return label->text().contains(QStringLiteral("服务繁忙，请稍后再试"));
        }));
    }

    void triesAgainAndAgainToOpenAVersionOfANewerClient()
    {
        world.AddVersion(app, QStringLiteral("版本1"), QString(), QString(), QStringLiteral("99.0.0"));
        EditorDriver author;
        ToastWatcher toasts;

        author.GetEditor()->SetExecuteInfo(app);
        QTRY_VERIFY(toasts.GetCount() >= 3);

        QVERIFY(
            std::all_of(toasts.GetToasts().cbegin(), toasts.GetToasts().cend(), [](const SeenToast& toast) {
                return toast == SeenToast{QStringLiteral("当前版本过低，请更新为最新版本"), 2};
            }));
        QCOMPARE(author.GetInstructions(), QString());
    }

    void alternatesListAndDataForTheSameVersionWhileTheDataFails()
    {
        VersionReplies::Version version;
        version.appId = app.GetAppId();
        FaultServer server;
        server.SetScript([version](const FaultServer::Request& request) {
            if (request.path.endsWith("/versions"))
                return VersionReplies::List({version});
            return FaultServer::Refusal(500, "broken", QStringLiteral("读取失败"));
        });
        world.UseServer(server.GetUrl());
        EditorDriver author;

        author.GetEditor()->SetExecuteInfo(app);
        QTRY_VERIFY(server.GetRequestCount() >= 6);
        author.Destroy();

        const QVector<FaultServer::Request> requests = server.GetRequests();
        for (int i = 0; i < requests.size(); ++i) {
            const char* end = i % 2 == 0 ? "/versions" : "/versions/v1/data";
            QVERIFY2(requests.at(i).path.endsWith(end), requests.at(i).path);
        }
    }

    void deletesAVersionThatTheUserConfirms()
    {
        EditorDriver author;
        OpenTwo(author);
        ModalDriver modals;
        modals.Then(Answer(QStringLiteral("确定要删除名称为旧版的版本吗？"), QStringLiteral("是")));

        QVERIFY(author.PressDelete(QStringLiteral("旧版")));
        QTRY_COMPARE(author.GetVersions(), QStringList(QStringLiteral("新版")));

        QCOMPARE(world.GetVersionIds(app), QStringList(newId));
        QCOMPARE(author.GetSelectedVersion(), QStringLiteral("新版"));
    }

    void deletesNothingWhenTheUserDoesNotConfirm_data()
    {
        QTest::addColumn<bool>("isClosed");
        QTest::newRow("no") << false;
        QTest::newRow("the box is closed") << true;
    }

    void deletesNothingWhenTheUserDoesNotConfirm()
    {
        QFETCH(bool, isClosed);
        EditorDriver author;
        OpenTwo(author);
        ModalDriver modals;
        if (isClosed)
            modals.Then([](QWidget* box) { box->close(); });
        else
            modals.Then(Answer(QStringLiteral("确定要删除名称为旧版的版本吗？"), QStringLiteral("否")));

        QVERIFY(author.PressDelete(QStringLiteral("旧版")));

        QCOMPARE(world.GetVersionIds(app).size(), 2);
        QCOMPARE(author.GetVersions().size(), 2);
    }

    void opensTheFirstVersionWhenTheOpenOneIsDeleted()
    {
        EditorDriver author;
        OpenTwo(author);
        ModalDriver modals;
        modals.Then(Answer(QStringLiteral("确定要删除名称为新版的版本吗？"), QStringLiteral("是")));

        QVERIFY(author.PressDelete(QStringLiteral("新版")));
        QTRY_COMPARE(author.GetVersions(), QStringList(QStringLiteral("旧版")));

        QCOMPARE(author.GetSelectedVersion(), QStringLiteral("旧版"));
        QTRY_VERIFY(author.GetInstructions().contains(QStringLiteral("old")));
    }

    void keepsTheLastDevelopVersion()
    {
        world.AddVersion(app, QStringLiteral("开发版"));
        world.Release(world.AddVersion(app, QStringLiteral("测试版")), 1);
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetVersions().size(), 2);
        ModalDriver modals;
        modals.Then(Answer(QStringLiteral("至少需保留一个开发中版本"), QStringLiteral("确定")));

        QVERIFY(author.PressDelete(QStringLiteral("开发版")));

        QCOMPARE(world.GetVersionIds(app).size(), 2);
    }

    void warnsEvenForAGrayRowWhileOneDevelopVersionIsLeft()
    {
        world.AddVersion(app, QStringLiteral("开发版"));
        const QString gray = world.AddVersion(app, QStringLiteral("测试版"));
        world.Release(gray, 1);
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetVersions().size(), 2);
        QVERIFY(!author.PressDelete(QStringLiteral("【灰度】测试版"))); // the row itself offers no mark
        ModalDriver modals;
        modals.Then(Answer(QStringLiteral("至少需保留一个开发中版本"), QStringLiteral("确定")));

        AskToDelete(author, gray);

        QCOMPARE(world.GetVersionIds(app).size(), 2);
    }

    void lastDevelopVersionRuleDoesNotHoldWithoutDevelopVersions()
    {
        const QString gray = world.AddVersion(app, QStringLiteral("测试版"));
        world.Release(gray, 1);
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetVersions().size(), 2);
        ModalDriver modals;
        modals.Then(Answer(QStringLiteral("确定要删除名称为测试版的版本吗？"), QStringLiteral("否")));

        AskToDelete(author, gray);

        QCOMPARE(modals.GetSeenCount(), 1);
    }

    void deletingAnUnknownVersionDoesNothing()
    {
        EditorDriver author;
        OpenTwo(author);
        ModalDriver nothingIsAsked;

        AskToDelete(author, QStringLiteral("nobody-knows-it"));

        QCOMPARE(world.GetVersionIds(app).size(), 2);
    }

    void startsAnewWhenTheLastVersionIsDeletedElsewhere()
    {
        const QString id =
            world.AddVersion(app, QStringLiteral("版本1"), QString(), QStringLiteral("content"));
        EditorDriver author;
        Open(author, QStringLiteral("版本1"));
        QTRY_VERIFY(author.GetInstructions().contains(QStringLiteral("content")));

        const auto request = QSharedPointer<DeleteAppSnapshotInfoRequest>::create();
        request->SetAppId(app.GetAppId());
        request->SetSnapshotId(id);
        RpaEditorLogic::Instance()->DeleteAppSnapshotInfo(request);

        QTRY_COMPARE(author.GetInstructions(), QString());
        QCOMPARE(author.GetVersions(), QStringList(QStringLiteral("版本1")));
        QCOMPARE(world.GetVersionIds(app), QStringList());
    }

private:
    void OpenTwo(EditorDriver& author)
    {
        oldId = world.AddVersion(app, QStringLiteral("旧版"), QString(), QStringLiteral("old"));
        newId = world.AddVersion(app, QStringLiteral("新版"), QString(), QStringLiteral("new"));
        Open(author, QStringLiteral("新版"));
        QTRY_VERIFY(author.GetInstructions().contains(QStringLiteral("new")));
    }

    // As a row with a delete mark does; released rows show none.
    static void AskToDelete(const EditorDriver& author, const QString& id)
    {
        QVERIFY(QMetaObject::invokeMethod(author.Find("version_combo"), "SigDeleteVersion",
                                          Q_ARG(QVariant, QVariant(id))));
    }

    QString oldId;
    QString newId;
};

RPA_TEST_MAIN(VersionSwitchingTest)
#include "tst_versionswitching.moc"
