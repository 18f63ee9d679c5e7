// SPDX-License-Identifier: Apache-2.0

// Which version is judged and released, and what follows.
#include "EditorCalls.h"
#include "ModalDriver.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <RpaEditorCore/RpaEditorNotify.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>

#include <QLabel>
#include <QtTest>

namespace
{
const QString yes = QStringLiteral("是");
const QString ok = QStringLiteral("确定");

// A box that says this is answered by the button.
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

class ReleaseCallsTest : public EditorCalls
{
    Q_OBJECT

private slots:
    void releasesTheSelectedVersionWhileItIsStillLoading_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QString>("question");
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("gray") << QByteArray("pushButtonBeta") << QStringLiteral("确定开始灰度吗？")
                              << QStringList({QStringLiteral("event OXA_AppDevelop_GrayRelease"),
                                              QStringLiteral("release v2 of app1 as 1")});
        QTest::newRow("publish") << QByteArray("pushButtonPublish") << QStringLiteral("确定发布上线吗")
                                 << QStringList({QStringLiteral("event OXA_AppDevelop_Launch"),
                                                 QStringLiteral("release v2 of app1 as 2")});
    }

    void releasesTheSelectedVersionWhileItIsStillLoading()
    {
        QFETCH(QByteArray, button);
        QFETCH(QString, question);
        QFETCH(QStringList, calls);
        Open();
        PickWithoutData(QStringLiteral("乙版"));
        CallLog::Take();
        ModalDriver modals;
        modals.Then(Answer(question, yes));

        author->Press(button);

        QCOMPARE(CallLog::Take(), calls);
    }

    void judgesTheSelectedVersionWhileItIsStillLoading_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QString>("refusal");
        const QString gray = QStringLiteral("【灰度】丙版");
        const QString online = QStringLiteral("【线上】丙版");
        const QByteArray beta("pushButtonBeta");
        const QByteArray publish("pushButtonPublish");
        QTest::newRow("gray again") << int(AppSnapshotGray) << gray << beta
                                    << QStringLiteral("灰度版本不能再次灰度。");
        QTest::newRow("online to gray")
            << int(AppSnapshotOnline) << online << beta << QStringLiteral("线上版本不能灰度。");
        QTest::newRow("online again")
            << int(AppSnapshotOnline) << online << publish << QStringLiteral("线上版本不能再次上线。");
    }

    void judgesTheSelectedVersionWhileItIsStillLoading()
    {
        QFETCH(int, state);
        QFETCH(QString, name);
        QFETCH(QByteArray, button);
        QFETCH(QString, refusal);
        Open(AppSnapshotState(state));
        PickWithoutData(name);
        CallLog::Take();
        ModalDriver modals;
        modals.Then(Answer(refusal, ok));

        author->Press(button);

        QCOMPARE(CallLog::Take().size(), 1); // the usage event
    }

    void judgesAVersionAfterItReportedTheClick()
    {
        const QVector<RpaAppSnapshotPtr> versions = Versions();
        Open(versions, Content(QStringLiteral("content of v1")));
        ModalDriver modals;

        CallLog::WhenNoted(QStringLiteral("event OXA_AppDevelop_GrayRelease"),
                           [&] { versions.first()->SetState(AppSnapshotGray); });
        modals.Then(Answer(QStringLiteral("灰度版本不能再次灰度。"), ok));
        author->Press("pushButtonBeta");

        CallLog::WhenNoted(QStringLiteral("event OXA_AppDevelop_Launch"),
                           [&] { versions.first()->SetState(AppSnapshotOnline); });
        modals.Then(Answer(QStringLiteral("线上版本不能再次上线。"), ok));
        author->Press("pushButtonPublish");

        QCOMPARE(CallLog::Take().size(), 2);
    }

    void releasesADevelopVersionThoughAReleasedOneIsStillOpen()
    {
        Open(AppSnapshotGray);
        PickAndLoad(QStringLiteral("【灰度】丙版"));
        author->TypeInstructions(QStringLiteral("dropped"));
        PickWithoutData(QStringLiteral("乙版"));
        CallLog::Take();
        ModalDriver modals;
        modals.Then(Answer(QStringLiteral("确定发布上线吗"), yes));

        author->Press("pushButtonPublish");

        QCOMPARE(CallLog::Take(), QStringList({QStringLiteral("event OXA_AppDevelop_Launch"),
                                               QStringLiteral("release v2 of app1 as 2")}));
    }

    void publishesAGrayVersionThoughTheDefaultRowIsStillOpen()
    {
        author = std::make_unique<EditorDriver>();
        author->GetEditor()->SetExecuteInfo(App());
        StandInRequests::AnswerList({Versions(AppSnapshotGray).last()});
        PickWithoutData(QStringLiteral("【灰度】丙版"));
        CallLog::Take();
        ModalDriver modals;
        modals.Then(Answer(QStringLiteral("确定发布上线吗"), yes));

        author->Press("pushButtonPublish");

        QCOMPARE(CallLog::Take(), QStringList({QStringLiteral("event OXA_AppDevelop_Launch"),
                                               QStringLiteral("release v3 of app1 as 2")}));
    }

    void releasesNoOtherVersionThanItAskedAbout()
    {
        Open();
        ModalDriver modals;
        modals.Then([this](QWidget* box) {
            StandInRequests::AnswerForeignDeletion(QStringLiteral("v1"));
            QCOMPARE(author->GetSelectedVersion(), QStringLiteral("乙版"));
            QVERIFY(ModalDriver::Press(box, yes));
        });

        author->Press("pushButtonBeta");

        QCOMPARE(CallLog::Take(), QStringList({QStringLiteral("event OXA_AppDevelop_GrayRelease"),
                                               QStringLiteral("load v2")}));
    }

    void reportsBeforeItAsks_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QString>("event");
        QTest::newRow("gray") << QByteArray("pushButtonBeta")
                              << QStringLiteral("event OXA_AppDevelop_GrayRelease");
        QTest::newRow("publish") << QByteArray("pushButtonPublish")
                                 << QStringLiteral("event OXA_AppDevelop_Launch");
    }

    void reportsBeforeItAsks()
    {
        QFETCH(QByteArray, button);
        QFETCH(QString, event);
        Open();
        QStringList noted;
        ModalDriver modals;
        modals.Then([&](QWidget* box) {
            noted = CallLog::Take();
            QVERIFY(ModalDriver::Press(box, QStringLiteral("否")));
        });

        author->Press(button);

        QCOMPARE(noted, QStringList(event));
        QCOMPARE(CallLog::Take(), QStringList());
    }

    void listsTheVersionsAgainBeforeItTellsTheWorkstation()
    {
        Open();
        PickAndLoad(QStringLiteral("乙版"));
        ModalDriver modals;
        modals.Then(Answer(QStringLiteral("确定开始灰度吗？"), yes));
        author->Press("pushButtonBeta");
        CallLog::Take();
        connect(RpaEditorNotify::Instance(), &RpaEditorNotify::SigPublishFinished, author->GetEditor(),
                [](const QString& appId, int type, bool needTip) {
                    CallLog::Note(QStringLiteral("told %1 %2 %3").arg(appId).arg(type).arg(needTip));
                });

        StandInRequests::AnswerRelease(1, true);

        QCOMPARE(CallLog::Take(),
                 QStringList({QStringLiteral("list app1"), QStringLiteral("told app1 1 1")}));
        QCOMPARE(author->GetStatus(), RequestStatus::Loading);
        // The released version stays the open one.
        QVector<RpaAppSnapshotPtr> versions = Versions();
        versions.at(1)->SetState(AppSnapshotGray);
        StandInRequests::AnswerList(versions);
        QCOMPARE(CallLog::Take(), QStringList(QStringLiteral("load v2")));
    }
};

RPA_TEST_MAIN(ReleaseCallsTest)
#include "tst_releasecalls.moc"
