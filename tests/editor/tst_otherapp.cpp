// SPDX-License-Identifier: Apache-2.0

// What one app's editor asked for must not act on another app.
#include "AnswerCounter.h"
#include "EditorDriver.h"
#include "EditorWorld.h"
#include "ModalDriver.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <RpaEditorManager/RpaAppEditorWidget.h>

#include <QtTest>

namespace
{
ModalDriver::Step Press(const QString& button)
{
    return [button](QWidget* box) { QVERIFY(ModalDriver::Press(box, button)); };
}
} // namespace

class OtherAppTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { world.Start(); }

    void init()
    {
        world.SignIn();
        x = world.CreateApp();
        y = world.CreateApp();
        world.AddVersion(x, QStringLiteral("甲"), QString(), QStringLiteral("content of x"));
        world.AddVersion(x, QStringLiteral("乙"), QString(), QStringLiteral("more of x"));
    }

    void isNotTouchedByAReleaseOfTheAppBefore()
    {
        const QString yId =
            world.AddVersion(y, QStringLiteral("丙"), QString(), QStringLiteral("content of y"));
        auto before = std::make_unique<EditorDriver>();
        Open(*before, x);
        ModalDriver modals;
        modals.Then(Press(QStringLiteral("是")));
        AnswerCounter answers;
        before->Press("pushButtonBeta");

        before.reset();
        EditorDriver now;
        Open(now, y);

        QTRY_COMPARE(answers.counts.value(NotifyGrayOrRelease), 1);
        now.TypeInstructions(QStringLiteral(" edited"));
        ToastWatcher toasts;
        now.Press("pushButtonSave");
        QTRY_COMPARE(toasts.GetTexts(), QStringList(QStringLiteral("保存成功")));
        QCOMPARE(now.GetVersions(), QStringList(QStringLiteral("丙")));
        QCOMPARE(world.GetInstructions(yId), QStringLiteral("<p>content of y edited</p>"));
        QCOMPARE(world.GetVersionNames(y), QStringList(QStringLiteral("丙")));
        QCOMPARE(answers.counts.value(NotifyGetSnapshotList), 1);
    }

    void keepsItsEditsWhenTheAppBeforeIsTheSame()
    {
        auto before = std::make_unique<EditorDriver>();
        Open(*before, x);
        ModalDriver modals;
        modals.Then(Press(QStringLiteral("是")));
        AnswerCounter answers;
        before->Press("pushButtonBeta");

        before.reset();
        EditorDriver now;
        now.GetEditor()->SetExecuteInfo(x);
        QTRY_VERIFY(!now.GetSelectedVersion().isEmpty());
        QTRY_COMPARE(answers.counts.value(NotifyGrayOrRelease), 1);
        QTRY_COMPARE(answers.counts.value(NotifyGetDevSnapshotData), 1);
        now.TypeInstructions(QStringLiteral(" edited"));
        ToastWatcher toasts;

        now.Press("pushButtonSave");

        QTRY_COMPARE(toasts.GetCount(), 1);
        QCOMPARE(answers.counts.value(NotifyGetSnapshotList), 1);
        QVERIFY(now.GetInstructions().endsWith(QStringLiteral(" edited")));
    }

    void hearsItsOwnListOnlyOnce()
    {
        world.AddVersion(y, QStringLiteral("丙"), QString(), QStringLiteral("content of y"));
        AnswerCounter answers;
        auto before = std::make_unique<EditorDriver>();
        before->GetEditor()->SetExecuteInfo(x);

        before.reset();
        EditorDriver now;
        now.GetEditor()->SetExecuteInfo(y);

        QTRY_COMPARE(answers.counts.value(NotifyGetSnapshotList), 2);
        QTRY_COMPARE(now.GetInstructions(), QStringLiteral("content of y"));
        QCOMPARE(answers.counts.value(NotifyGetDevSnapshotData), 1);
        QCOMPARE(now.GetVersions(), QStringList(QStringLiteral("丙")));
    }

    void isNotTouchedByADeletionOfTheAppBefore()
    {
        world.AddVersion(y, QStringLiteral("丙"), QString(), QStringLiteral("content of y"));
        auto before = std::make_unique<EditorDriver>();
        Open(*before, x);
        ModalDriver modals;
        modals.Then(Press(QStringLiteral("是")));
        AnswerCounter answers;
        QVERIFY(before->PressDelete(QStringLiteral("甲")));

        before.reset();
        EditorDriver now;
        Open(now, y);

        QTRY_COMPARE(answers.counts.value(NotifyDeleteAppSnapshotInfo), 1);
        QCOMPARE(now.GetVersions(), QStringList(QStringLiteral("丙")));
        QCOMPARE(now.GetInstructions(), QStringLiteral("content of y"));
        QCOMPARE(world.GetVersionNames(x), QStringList(QStringLiteral("乙")));
    }

    void keepsToItsAppWhileAnotherEditorReleases()
    {
        world.AddVersion(y, QStringLiteral("丙"), QString(), QStringLiteral("content of y"));
        EditorDriver ofX;
        Open(ofX, x);
        EditorDriver ofY;
        Open(ofY, y);
        ofY.TypeInstructions(QStringLiteral(" edited"));
        ModalDriver modals;
        modals.Then(Press(QStringLiteral("是")));
        AnswerCounter answers;

        ofX.Press("pushButtonBeta");

        QTRY_COMPARE(answers.counts.value(NotifyGetDevSnapshotData), 1); // of the editor that released
        QCOMPARE(ofY.GetInstructions(), QStringLiteral("content of y edited"));
        QCOMPARE(ofY.GetVersions(), QStringList(QStringLiteral("丙")));
        QVERIFY(ofX.GetVersions().join(QLatin1Char(' ')).contains(QStringLiteral("【灰度】")));
        QVERIFY(ofX.GetInstructions().contains(QStringLiteral("of x")));
    }

    void savesInTwoEditorsEachIntoItsOwnApp()
    {
        const QString yId =
            world.AddVersion(y, QStringLiteral("丙"), QString(), QStringLiteral("content of y"));
        EditorDriver ofX;
        EditorDriver ofY;
        Open(ofX, x);
        Open(ofY, y);
        const QString xContent = ofX.GetInstructions();
        ofX.TypeInstructions(QStringLiteral(" one"));
        ofY.TypeInstructions(QStringLiteral(" two"));
        ToastWatcher toasts;

        ofX.Press("pushButtonSave");
        QTRY_COMPARE(toasts.GetTexts(), QStringList(QStringLiteral("保存成功")));
        ofY.Press("pushButtonSave");
        QTRY_COMPARE(toasts.GetCount(), 2);

        QCOMPARE(toasts.GetTexts().last(), QStringLiteral("保存成功"));
        QCOMPARE(world.GetInstructions(yId), QStringLiteral("<p>content of y two</p>"));
        const QString saved = world.GetInstructions(world.GetVersionIds(x).first()) +
                              world.GetInstructions(world.GetVersionIds(x).last());
        QVERIFY2(saved.contains(xContent + QStringLiteral(" one")), qPrintable(saved));
    }

private:
    static void Open(EditorDriver& author, const RobotExecuteInfo& app)
    {
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_VERIFY(author.GetInstructions().contains(QStringLiteral("of ")));
    }

    EditorWorld world;
    RobotExecuteInfo x;
    RobotExecuteInfo y;
};

RPA_TEST_MAIN(OtherAppTest)
#include "tst_otherapp.moc"
