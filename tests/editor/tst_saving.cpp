// SPDX-License-Identifier: Apache-2.0

#include "EditorFixture.h"
#include "FaultServer.h"
#include "ModalDriver.h"
#include "RecordingMonitor.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <RpaProcessEditor/ProcessProgramEditorWidget.h>
#include <RpaProcessEditor/ProcessVisualEditorWidget.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

class SavingTest : public EditorFixture
{
    Q_OBJECT

private slots:
    void makesANewVersionOfAnAppThatWasNeverSaved()
    {
        EditorDriver author;
        Open(author, QStringLiteral("版本1"));
        QCOMPARE(author.GetVersions(), QStringList(QStringLiteral("版本1")));
        author.TypeInstructions(QStringLiteral("hello"));
        ToastWatcher toasts;

        author.Press("pushButtonSave");
        QTRY_COMPARE(toasts.GetTexts(), QStringList(QStringLiteral("保存成功")));

        const QStringList ids = world.GetVersionIds(app);
        QCOMPARE(ids.size(), 1);
        QVERIFY(world.GetInstructions(ids.first()).contains(QStringLiteral("hello")));
        QCOMPARE(author.GetVersions(), world.GetVersionNames(app));
        QCOMPARE(author.GetSelectedVersion(), world.GetVersionNames(app).first());

        // The new version is current: the next save goes into it.
        author.TypeInstructions(QStringLiteral("again"));
        author.Press("pushButtonSave");
        QTRY_COMPARE(toasts.GetCount(), 2);
        QCOMPARE(world.GetVersionIds(app), ids);
        QVERIFY(world.GetInstructions(ids.first()).contains(QStringLiteral("again")));
    }

    void savesIntoTheSelectedVersion()
    {
        const QString other = world.AddVersion(app, QStringLiteral("旧版"));
        const QString open = world.AddVersion(app, QStringLiteral("新版"));
        EditorDriver author;
        Open(author, QStringLiteral("新版"));
        author.TypeInstructions(QStringLiteral("hello"));
        ToastWatcher toasts;

        author.Press("pushButtonSave");
        QTRY_COMPARE(toasts.GetCount(), 1);

        QVERIFY(world.GetInstructions(open).contains(QStringLiteral("hello")));
        QVERIFY(!world.GetInstructions(other).contains(QStringLiteral("hello")));
        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::NothingPending);
    }

    void savesWhenAProcessEditorAsksForIt_data()
    {
        QTest::addColumn<int>("kind");
        QTest::newRow("visual") << 0;
        QTest::newRow("program") << 1;
    }

    void savesWhenAProcessEditorAsksForIt()
    {
        QFETCH(int, kind);
        app = world.CreateApp(kind);
        const QString id = world.AddVersion(app, QStringLiteral("版本1"));
        EditorDriver author;
        Open(author, QStringLiteral("版本1"));
        author.TypeInstructions(QStringLiteral("hello"));
        RecordingMonitor monitor;
        ToastWatcher toasts;

        if (kind == 0)
            emit author.Find("pageProcess")->findChild<ProcessVisualEditorWidget*>()->SigSaveCode();
        else
            emit author.Find("pageProcess")->findChild<ProcessProgramEditorWidget*>()->SigSaveCode();
        QTRY_COMPARE(toasts.GetTexts(), QStringList(QStringLiteral("保存成功")));

        QVERIFY(world.GetInstructions(id).contains(QStringLiteral("hello")));
        QCOMPARE(monitor.GetEventIds(), QStringList(QStringLiteral("OXA_AppDevelop_Save")));
    }

    void showsTheServersReasonWhenItRefuses()
    {
        world.AddVersion(app, QStringLiteral("版本1"));
        EditorDriver author;
        Open(author, QStringLiteral("版本1"));
        author.TypeInstructions(QStringLiteral("x"));
        FaultServer server;
        server.SetScript([](const FaultServer::Request&) {
            return FaultServer::Refusal(412, "changed", QStringLiteral("版本已被他人修改"));
        });
        world.UseServer(server.GetUrl());
        ToastWatcher toasts;

        author.Press("pushButtonSave");

        QTRY_COMPARE(toasts.GetCount(), 1);
        QCOMPARE(toasts.GetToasts().first().type, 2);
        QVERIFY(!toasts.GetTexts().first().isEmpty());
        // The mark of unsaved work went with the request.
        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::NothingPending);
    }

    void pressingSaveBeforeTheVersionHasLoadedSavesNothing()
    {
        const QString id =
            world.AddVersion(app, QStringLiteral("版本1"), QString(), QStringLiteral("as it was"));
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);

        author.Press("pushButtonSave");
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));

        QCOMPARE(world.GetVersionIds(app), QStringList(id));
        QVERIFY(world.GetInstructions(id).contains(QStringLiteral("as it was")));
    }

    void savesUnderAnotherNameAndGoesOnWithIt()
    {
        const QString id = world.AddVersion(app, QStringLiteral("版本1"));
        EditorDriver author;
        Open(author, QStringLiteral("版本1"));
        author.TypeInstructions(QStringLiteral("hello"));
        ModalDriver modals;
        modals.Then([](QWidget* dialog) {
            QCOMPARE(dialog->findChild<QLabel*>(QStringLiteral("labelVersionCurrent"))->text(),
                     QStringLiteral("版本1"));
            dialog->findChild<QComboBox*>(QStringLiteral("comboBoxName"))
                ->setEditText(QStringLiteral("第二版"));
            QVERIFY(ModalDriver::Press(dialog, QStringLiteral("确定")));
        });

        author.Press("pushButtonSaveAs");

        QCOMPARE(author.GetSelectedVersion(), QStringLiteral("第二版"));
        QCOMPARE(author.GetVersions().size(), 2);
        const QStringList ids = world.GetVersionIds(app);
        QCOMPARE(ids.size(), 2);
        const QString created = ids.first() == id ? ids.last() : ids.first();
        QVERIFY(world.GetInstructions(created).contains(QStringLiteral("hello")));
        QVERIFY(!world.GetInstructions(id).contains(QStringLiteral("hello")));
    }

    void cancellingSaveAsLeavesTheVersionsAlone()
    {
        world.AddVersion(app, QStringLiteral("旧版"));
        world.AddVersion(app, QStringLiteral("新版"));
        EditorDriver author;
        Open(author, QStringLiteral("新版"));
        const QStringList before = author.GetVersions();
        ModalDriver modals;
        modals.Then([](QWidget* dialog) { QVERIFY(ModalDriver::Press(dialog, QStringLiteral("取消"))); });

        author.Press("pushButtonSaveAs");

        QCOMPARE(author.GetVersions(), before);
        QCOMPARE(author.GetSelectedVersion(), QStringLiteral("新版"));
        QCOMPARE(world.GetVersionIds(app).size(), 2);
    }

    void showsTheStateOfTheVersionInSaveAs()
    {
        world.AddVersion(app, QStringLiteral("开发版"));
        world.Release(world.AddVersion(app, QStringLiteral("测试版")), 1);
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetVersions().size(), 2);
        QVERIFY(author.PickVersion(QStringLiteral("【灰度】测试版")));
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("【灰度】测试版"));
        ModalDriver modals;
        modals.Then([](QWidget* dialog) {
            QCOMPARE(dialog->findChild<QLabel*>(QStringLiteral("labelVersionCurrent"))->text(),
                     QStringLiteral("【灰度】测试版"));
            ModalDriver::Reject(dialog);
        });

        author.Press("pushButtonSaveAs");
    }
};

RPA_TEST_MAIN(SavingTest)
#include "tst_saving.moc"
