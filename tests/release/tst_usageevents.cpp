// SPDX-License-Identifier: Apache-2.0

#include "EditorFixture.h"
#include "ModalDriver.h"
#include "RecordingMonitor.h"
#include "RunFixture.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <WbCore/WbGlobalData.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

class UsageEventsTest : public EditorFixture
{
    Q_OBJECT

private slots:
    void countsARefusedGrayRelease()
    {
        world.AddVersion(app, QStringLiteral("开发版"));
        world.Release(world.AddVersion(app, QStringLiteral("测试版")), 1);
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetVersions().size(), 2);
        QVERIFY(author.PickVersion(QStringLiteral("【灰度】测试版")));
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("【灰度】测试版"));
        RecordingMonitor monitor;
        ModalDriver modals;
        modals.Then([](QWidget* box) { QVERIFY(ModalDriver::Press(box, QStringLiteral("确定"))); });

        author.Press("pushButtonBeta");

        QCOMPARE(monitor.GetEventIds(), QStringList(QStringLiteral("OXA_AppDevelop_GrayRelease")));
    }

    void reportsAnActionBeforeItChecksAnything_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QString>("eventId");
        QTest::newRow("save as") << QByteArray("pushButtonSaveAs") << QStringLiteral("OXA_AppDevelop_Saveas");
        QTest::newRow("gray") << QByteArray("pushButtonBeta") << QStringLiteral("OXA_AppDevelop_GrayRelease");
        QTest::newRow("publish") << QByteArray("pushButtonPublish")
                                 << QStringLiteral("OXA_AppDevelop_Launch");
    }

    void reportsAnActionBeforeItChecksAnything()
    {
        QFETCH(QByteArray, button);
        QFETCH(QString, eventId);
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_VERIFY(!author.GetVersions().isEmpty());
        RecordingMonitor monitor;
        QStringList reportedWhenAsked;
        ModalDriver modals;
        modals.Then([&](QWidget* box) {
            reportedWhenAsked = monitor.GetEventIds();
            ModalDriver::Reject(box);
        });

        author.Press(button);

        QCOMPARE(reportedWhenAsked, QStringList(eventId));
        QCOMPARE(monitor.GetEventIds(), QStringList(eventId));
        QCOMPARE(monitor.GetReports().first().pageId, QStringLiteral("OXA_AppDevelop"));
        QVERIFY(monitor.GetReports().first().params.isEmpty());
    }

    void reportsADeletionBeforeItsChecks()
    {
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_VERIFY(!author.GetVersions().isEmpty());
        RecordingMonitor monitor;

        QMetaObject::invokeMethod(author.Find("version_combo"), "SigDeleteVersion",
                                  Q_ARG(QVariant, QVariant(QStringLiteral("unknown"))));

        QCOMPARE(monitor.GetEventIds(), QStringList(QStringLiteral("OXA_AppDevelop_VersionDelete")));
        QVERIFY(monitor.GetReports().first().params.isEmpty());
    }

    void countsARunThatIsRefusedLater()
    {
        world.AddVersion(app, QStringLiteral("版本1"));
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));
        const CapturingInspector capturing;
        RecordingMonitor monitor;
        ToastWatcher toasts;

        Run::Start(author, QStringLiteral("主流程"));

        QCOMPARE(toasts.GetCount(), 1);
        QCOMPARE(monitor.GetEventIds(), QStringList(QStringLiteral("OXA_MyApplications_Execute")));
        const RecordingMonitor::Report report = monitor.GetReports().first();
        QCOMPARE(report.pageId, QStringLiteral("OXA_MyApplications"));
        QCOMPARE(report.params.size(), 1);
        QCOMPARE(report.params.first(),
                 QStringLiteral("{\"clickId\":\"%1\",\"clickType\":\"develop\",\"pin\":\"author-1\","
                                "\"processName\":\"主流程\",\"venderId\":\"9007199254740993\"}")
                     .arg(app.GetAppId()));
    }

    void namesAnAppWithoutIdByAnEmptyText()
    {
        RecordingMonitor monitor;
        EditorDriver author;

        Run::Start(author, QStringLiteral("p"));

        const QJsonObject payload =
            QJsonDocument::fromJson(monitor.GetReports().first().params.first().toUtf8()).object();
        QVERIFY(payload.contains(QStringLiteral("clickId")));
        QCOMPARE(payload.value(QStringLiteral("clickId")).toString(QStringLiteral("?")), QString());
        QCOMPARE(payload.keys().size(), 5);
    }
};

RPA_TEST_MAIN(UsageEventsTest)
#include "tst_usageevents.moc"
