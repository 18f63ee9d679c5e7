// SPDX-License-Identifier: Apache-2.0

// A new app asks once which template to start from, whatever else is answered meanwhile.
#include "AnswerCounter.h"
#include "EditorDriver.h"
#include "EditorWorld.h"
#include "ModalDriver.h"
#include "ServerRelay.h"
#include "TestApp.h"
#include "TestFolder.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaCore/RpaSuperDir.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <RpaServiceClient/VersionServiceSettings.h>

#include <QDataStream>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <memory>

class TemplateQuestionTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void isAskedOnceThoughTheAppWasOpenedTwice();
    void isAskedOnceWhileAReleaseOfTheAppBeforeIsAnswered();
    void isAskedOnceWhileAnotherEditorIsAnswered_data();
    void isAskedOnceWhileAnotherEditorIsAnswered();

private:
    void OfferATemplate();
    // Asks the server to release or to delete; it does, and its answer waits until the relay lets go.
    void Ask(EditorDriver& author, int what);
    // The only question: the answers that wait come while it is open, then the template is taken.
    void AnswerWhileAsked(ModalDriver& modals, int what, int count);
    // Opens the app without versions; the template is what it shows then.
    void OpenNew(EditorDriver& author);

    EditorWorld world;
    std::unique_ptr<ServerRelay> relay;
    std::unique_ptr<AnswerCounter> answers;
    TestFolder folder;
    RobotExecuteInfo before;
    RobotExecuteInfo fresh; // no version was saved of it
};

void TemplateQuestionTest::initTestCase()
{
    world.Start();
    OfferATemplate();
}

void TemplateQuestionTest::init()
{
    world.SignIn();
    relay = std::make_unique<ServerRelay>(world.GetServer().Port());
    QVERIFY(relay->Listen());
    world.UseServer(QUrl(QStringLiteral("http://127.0.0.1:%1").arg(relay->GetPort())));
    VersionServiceSettings::Instance()->SetLimits(WbHttpLimits());
    RpaSuperDir::Instance()->SetTemplateDirs(folder.path(), QString());
    before = world.CreateApp();
    world.AddVersion(before, QStringLiteral("甲"), QString(), QStringLiteral("content of 甲"));
    world.AddVersion(before, QStringLiteral("乙"), QString(), QStringLiteral("content of 乙"));
    fresh = world.CreateApp();
    answers = std::make_unique<AnswerCounter>();
}

void TemplateQuestionTest::cleanup()
{
    answers.reset();
    relay.reset();
}

void TemplateQuestionTest::OfferATemplate()
{
    RpaAppData content;
    content.InitDefault();
    content.GetAppExtendInfo()->manual = QStringLiteral("from the template");
    const QJsonObject record{{QStringLiteral("templateName"), QStringLiteral("报表模板")},
                             {QStringLiteral("templateDirection"), QStringLiteral("每日报表")},
                             {QStringLiteral("appData"), QString::fromUtf8(content.ToJson())}};
    QFile file(folder.filePath(QStringLiteral("报表模板")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QDataStream stream(&file);
    stream << QString::fromUtf8(QJsonDocument(record).toJson());
}

void TemplateQuestionTest::Ask(EditorDriver& author, int what)
{
    const bool isRelease = what == NotifyGrayOrRelease;
    QSignalSpy done(relay.get(), &ServerRelay::SigHeld);
    relay->HoldAnswerOf(isRelease ? "POST" : "DELETE");
    ModalDriver modals;
    modals.Then([](QWidget* box) { QVERIFY(ModalDriver::Press(box, QStringLiteral("是"))); });
    if (isRelease)
        author.Press("pushButtonBeta");
    else
        QVERIFY(author.PressDelete(QStringLiteral("甲")));
    QTRY_COMPARE(done.size(), 1);
}

void TemplateQuestionTest::AnswerWhileAsked(ModalDriver& modals, int what, int count)
{
    modals.Then([this, what, count](QWidget* dialog) {
        QCOMPARE(dialog->windowTitle(), QStringLiteral("选择模板"));
        relay->ReleaseAnswers();
        QTRY_COMPARE(answers->counts.value(what), count);
        world.GetVersionNames(fresh); // what anybody asked on hearing that is answered by now, too
        QVERIFY(ModalDriver::Press(dialog, QStringLiteral("确定")));
    });
}

void TemplateQuestionTest::OpenNew(EditorDriver& author)
{
    author.GetEditor()->SetExecuteInfo(fresh);
    QTRY_COMPARE(author.GetInstructions(), QStringLiteral("from the template"));
}

void TemplateQuestionTest::isAskedOnceThoughTheAppWasOpenedTwice()
{
    // given an editor that was left before its list came
    relay->HoldAnswers();
    auto left = std::make_unique<EditorDriver>();
    left->GetEditor()->SetExecuteInfo(fresh);
    left.reset();
    EditorDriver author;
    author.GetEditor()->SetExecuteInfo(fresh);

    // when both lists come
    ModalDriver modals;
    AnswerWhileAsked(modals, NotifyGetSnapshotList, 2);
    relay->ReleaseAnswers();

    // then
    QTRY_COMPARE(author.GetInstructions(), QStringLiteral("from the template"));
    QCOMPARE(modals.GetSeenCount(), 1);
}

void TemplateQuestionTest::isAskedOnceWhileAReleaseOfTheAppBeforeIsAnswered()
{
    // given an app that was left before its release was answered
    auto left = std::make_unique<EditorDriver>();
    left->GetEditor()->SetExecuteInfo(before);
    QTRY_VERIFY(left->GetInstructions().contains(QStringLiteral("content of")));
    Ask(*left, NotifyGrayOrRelease);
    left.reset();
    EditorDriver author;
    ModalDriver modals;
    AnswerWhileAsked(modals, NotifyGrayOrRelease, 1);

    // when
    OpenNew(author);

    // then
    QCOMPARE(modals.GetSeenCount(), 1);
    QCOMPARE(author.GetVersions(), QStringList(QStringLiteral("版本1")));
    QCOMPARE(answers->counts.value(NotifyGetSnapshotList), 2);
}

void TemplateQuestionTest::isAskedOnceWhileAnotherEditorIsAnswered_data()
{
    QTest::addColumn<int>("what");
    QTest::newRow("release") << int(NotifyGrayOrRelease);
    QTest::newRow("deletion") << int(NotifyDeleteAppSnapshotInfo);
}

void TemplateQuestionTest::isAskedOnceWhileAnotherEditorIsAnswered()
{
    // given another app in an editor of its own, which waits for an answer
    QFETCH(const int, what);
    EditorDriver other;
    other.GetEditor()->SetExecuteInfo(before);
    QTRY_VERIFY(other.GetInstructions().contains(QStringLiteral("content of")));
    EditorDriver author;
    Ask(other, what);
    ModalDriver modals;
    AnswerWhileAsked(modals, what, 1);

    // when
    OpenNew(author);

    // then
    QCOMPARE(modals.GetSeenCount(), 1);
    QTRY_VERIFY(other.GetInstructions().contains(QStringLiteral("content of")));
}

RPA_TEST_MAIN(TemplateQuestionTest)
#include "tst_templatequestion.moc"
