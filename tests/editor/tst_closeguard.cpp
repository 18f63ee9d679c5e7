// SPDX-License-Identifier: Apache-2.0

#include "EditorFixture.h"
#include "FaultServer.h"
#include "ModalDriver.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <RpaEditorManager/RpaAppEditorWidget.h>

#include <QLabel>
#include <QtTest>

namespace
{
const QString question = QStringLiteral("应用已经修改，是否保存？");

ModalDriver::Step Answer(const QString& button)
{
    return [button](QWidget* box) {
        const QList<QLabel*> labels = box->findChildren<QLabel*>();
        QVERIFY(std::any_of(labels.cbegin(), labels.cend(),
                            [](const QLabel* label) { return label->text() == question; }));
        QVERIFY(ModalDriver::Press(box, button));
    };
}
} // namespace

class CloseGuardTest : public EditorFixture
{
    Q_OBJECT

private slots:
    void closesWithoutAModel()
    {
        EditorDriver author;

        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::NothingPending);
    }

    void closesWithoutAQuestionWhenNothingWasEdited()
    {
        world.AddVersion(app, QStringLiteral("版本1"));
        EditorDriver author;
        Open(author, QStringLiteral("版本1"));
        ModalDriver noQuestion;

        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::NothingPending);
    }

    void dropsEditsOfAReleasedVersionWithoutAQuestion_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("name");
        QTest::newRow("gray") << 1 << QStringLiteral("【灰度】测试版");
        QTest::newRow("online") << 2 << QStringLiteral("【线上】测试版");
    }

    void dropsEditsOfAReleasedVersionWithoutAQuestion()
    {
        QFETCH(int, type);
        QFETCH(QString, name);
        world.AddVersion(app, QStringLiteral("开发版"));
        world.Release(world.AddVersion(app, QStringLiteral("测试版")), type);
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetVersions().size(), 2);
        QVERIFY(author.PickVersion(name));
        QTRY_COMPARE(author.GetSelectedVersion(), name);
        author.TypeInstructions(QStringLiteral("x"));
        ModalDriver noQuestion;

        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::NothingPending);
    }

    void savesAnAppThatWasNeverSavedAsANewVersion()
    {
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));
        QCOMPARE(world.GetVersionIds(app).size(), 0);
        author.TypeInstructions(QStringLiteral("hello"));
        ModalDriver modals;
        modals.Then(Answer(QStringLiteral("是")));

        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::Resolved);

        const QStringList ids = world.GetVersionIds(app);
        QCOMPARE(ids.size(), 1);
        QVERIFY(world.GetInstructions(ids.first()).contains(QStringLiteral("hello")));
    }

    void savesIntoTheOpenVersion()
    {
        const QString id = world.AddVersion(app, QStringLiteral("版本1"));
        EditorDriver author;
        Open(author, QStringLiteral("版本1"));
        author.TypeInstructions(QStringLiteral("hello"));
        ModalDriver modals;
        modals.Then(Answer(QStringLiteral("是")));

        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::Resolved);

        QCOMPARE(world.GetVersionIds(app), QStringList(id));
        QVERIFY(world.GetInstructions(id).contains(QStringLiteral("hello")));
        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::NothingPending);
    }

    void throwsTheEditsAwayOnceWhenTheUserSaysNo()
    {
        const QString id = world.AddVersion(app, QStringLiteral("版本1"));
        EditorDriver author;
        Open(author, QStringLiteral("版本1"));
        author.TypeInstructions(QStringLiteral("hello"));
        ModalDriver modals;
        modals.Then(Answer(QStringLiteral("否")));

        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::Resolved);
        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::NothingPending);

        QVERIFY(!world.GetInstructions(id).contains(QStringLiteral("hello")));
    }

    void staysOpenWhenTheUserDoesNotDecide_data()
    {
        QTest::addColumn<bool>("isClosed");
        QTest::newRow("cancel") << false;
        QTest::newRow("the box is closed") << true;
    }

    void staysOpenWhenTheUserDoesNotDecide()
    {
        QFETCH(bool, isClosed);
        world.AddVersion(app, QStringLiteral("版本1"));
        EditorDriver author;
        Open(author, QStringLiteral("版本1"));
        author.TypeInstructions(QStringLiteral("x"));
        ModalDriver modals;
        if (isClosed)
            modals.Then([](QWidget* box) { box->close(); });
        else
            modals.Then(Answer(QStringLiteral("取消")));

        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::Refused);

        modals.Then(Answer(QStringLiteral("取消")));
        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::Refused);
    }

    void staysOpenWhenTheSaveFails()
    {
        world.AddVersion(app, QStringLiteral("版本1"));
        EditorDriver author;
        Open(author, QStringLiteral("版本1"));
        author.TypeInstructions(QStringLiteral("x"));
        FaultServer broken;
        broken.SetScript([](const FaultServer::Request&) {
            return FaultServer::Refusal(507, "disk-full", QStringLiteral("磁盘已满"));
        });
        world.UseServer(broken.GetUrl());
        ToastWatcher toasts;
        ModalDriver modals;
        modals.Then(Answer(QStringLiteral("是")));

        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::Refused);

        QCOMPARE(toasts.GetTexts(), QStringList(QStringLiteral("磁盘已满")));
    }
};

RPA_TEST_MAIN(CloseGuardTest)
#include "tst_closeguard.moc"
