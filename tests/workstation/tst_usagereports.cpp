// SPDX-License-Identifier: Apache-2.0

#include "FaultServer.h"
#include "ReleaseFixture.h"
#include "ServerRelay.h"
#include "TestApp.h"
#include "TestFolder.h"
#include "UsageDialog.h"
#include "UsageReports.h"
#include "VersionReplies.h"

#include <RpaServiceClient/VersionServiceSettings.h>
#include <WbCore/IMonitorSystem.h>

#include <QDir>
#include <QDirIterator>
#include <QJsonArray>
#include <QLabel>
#include <QSignalSpy>
#include <QtTest>

namespace
{
// Calls a function before the first call that another thread has posted to the object reaches it.
class BeforeCall : public QObject
{
public:
    explicit BeforeCall(std::function<void()> function) : act(std::move(function)) {}

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::MetaCall && act)
            std::exchange(act, nullptr)();
        return false;
    }

private:
    std::function<void()> act;
};

void Report(const QString& event)
{
    IMonitorSystem::GetMonitorSystem()->ReportEvent(event, QStringLiteral("page"),
                                                    {QStringLiteral("secret")});
    UsageMonitor::Instance()->Flush();
}
} // namespace

// What users do reaches the version service, and nothing else does.
class tst_UsageReports : public ReleaseFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void tellsTheServerWhatWasDone();
    void tellsNothingOfWhatItWasDoneWith();
    void countsOnceWhatTheServerHadWhenItDied();
    void keepsWhatWaitsUntilTheServerIsBack();
    void keepsWhatWaitsOverTheEndOfTheWorkstation();
    void doesNotWaitForASilentServerToEnd();
    void dropsWhatTheServerWillNeverTake();
    void keepsAccountsApart();
    void keepsServersApart();
    void stopsAndForgetsWhenTheUserSaysNo();
    void sendsNothingMoreOnceTheUserHasSaidNo();
    void staysSilentAfterANoThatWasSaidBefore();
    void beginsAgainWhenTheUserAgreesAgain();
    void showsAdministratorsTheCounts();
    void saysThatThereIsNothing();
    void isAsHighAsItsDays();
    void saysWhyThereAreNoCounts();

private:
    void Begin(const QString& who = QStringLiteral("author-1"));
    void GoTo(const QUrl& address);
    int CountOf(const QString& event);
    QStringList Waiting() const;

    std::unique_ptr<TestFolder> folder;
    std::unique_ptr<UsageReports> reports;
    QString event; // of this test alone
};

void tst_UsageReports::init()
{
    GoTo(QUrl(server.BaseUrl()));
    SignIn("author-1");
    event = QStringLiteral("Test.") + QString::fromLatin1(QTest::currentTestFunction());
    folder = std::make_unique<TestFolder>();
    reports = std::make_unique<UsageReports>(folder->filePath(QStringLiteral("usage")));
}

void tst_UsageReports::cleanup()
{
    reports->Allow(false);
    reports->Allow(true);
    reports.reset();
}

void tst_UsageReports::Begin(const QString& who)
{
    reports->Begin(QStringLiteral("server"), who);
}

void tst_UsageReports::GoTo(const QUrl& address)
{
    VersionServiceSettings::Instance()->SetBaseUrl(address);
    VersionServiceSettings::Instance()->SetToken(server.Token(QStringLiteral("author-1")));
}

int tst_UsageReports::CountOf(const QString& name)
{
    token = server.Token(QStringLiteral("admin-1"));
    int sum = 0;
    for (const auto& count :
         Send("GET", QStringLiteral("/api/v1/usage"), {}).value(QLatin1String("counts")).toArray())
        if (count.toObject().value(QLatin1String("event")).toString() == name)
            sum += count.toObject().value(QLatin1String("count")).toInt();
    return sum;
}

QStringList tst_UsageReports::Waiting() const
{
    QStringList lines;
    QDirIterator files(folder->filePath(QStringLiteral("usage")), {QStringLiteral("*.jsonl")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly))
            lines += QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }
    return lines;
}

void tst_UsageReports::tellsTheServerWhatWasDone()
{
    Begin();

    Report(event);
    Report(event);

    QTRY_COMPARE(CountOf(event), 2);
    QTRY_COMPARE(Waiting(), QStringList());
}

void tst_UsageReports::tellsNothingOfWhatItWasDoneWith()
{
    FaultServer receiver;
    receiver.SetScript([](const auto&) { return VersionReplies::Deleted(); });
    GoTo(receiver.GetUrl());
    Begin();

    Report(event);

    QTRY_COMPARE(receiver.GetRequestCount(), 1);
    const FaultServer::Request request = receiver.GetRequests().first();
    QCOMPARE(request.path, QByteArray("/api/v1/usage-events"));
    QVERIFY(request.body.contains(event.toUtf8()));
    QVERIFY(!request.body.contains("secret"));
    QVERIFY(!request.body.contains("author-1"));
}

void tst_UsageReports::countsOnceWhatTheServerHadWhenItDied()
{
    ServerRelay relay(server.Port());
    QVERIFY(relay.Listen());
    GoTo(QUrl(QStringLiteral("http://127.0.0.1:%1").arg(relay.GetPort())));
    QSignalSpy died(&relay, &ServerRelay::SigDied);
    relay.DieAtAnswerOf("POST");
    Begin();

    Report(event);
    QVERIFY(died.wait());
    QTRY_COMPARE(CountOf(event), 1);
    QCOMPARE(Waiting().size(), 1);
    QVERIFY(relay.Listen());
    UsageMonitor::Instance()->Flush();

    QTRY_COMPARE(Waiting(), QStringList());
    QCOMPARE(CountOf(event), 1);
}

void tst_UsageReports::keepsWhatWaitsUntilTheServerIsBack()
{
    FaultServer busy;
    busy.SetScript(
        [](const auto&) { return FaultServer::Refusal(500, "internal", QStringLiteral("服务器内部错误")); });
    GoTo(busy.GetUrl());
    Begin();
    Report(event);
    QTRY_COMPARE(busy.GetRequestCount(), 1);

    GoTo(QUrl(server.BaseUrl()));
    UsageMonitor::Instance()->Flush();

    QTRY_COMPARE(CountOf(event), 1);
}

void tst_UsageReports::keepsWhatWaitsOverTheEndOfTheWorkstation()
{
    FaultServer silent;
    silent.SetScript([](const auto&) { return FaultServer::Failing(FaultServer::Fault::Silence); });
    GoTo(silent.GetUrl());
    Begin();
    Report(event);
    QTRY_COMPARE(silent.GetRequestCount(), 1);
    reports.reset();
    QCOMPARE(Waiting().size(), 1);

    GoTo(QUrl(server.BaseUrl()));
    reports = std::make_unique<UsageReports>(folder->filePath(QStringLiteral("usage")));
    Begin();
    UsageMonitor::Instance()->Flush();

    QTRY_COMPARE(CountOf(event), 1);
}

void tst_UsageReports::doesNotWaitForASilentServerToEnd()
{
    FaultServer silent;
    silent.SetScript([](const auto&) { return FaultServer::Failing(FaultServer::Fault::Silence); });
    GoTo(silent.GetUrl());
    Begin();
    Report(event);
    QTRY_COMPARE(silent.GetRequestCount(), 1);
    QElapsedTimer timer;
    timer.start();

    reports->End();

    QVERIFY(timer.elapsed() < 5000); // the request itself gives up after a minute
    QCOMPARE(Waiting().size(), 1);
}

void tst_UsageReports::dropsWhatTheServerWillNeverTake()
{
    FaultServer strict;
    strict.SetScript([](const auto&) {
        return FaultServer::Refusal(400, "bad-events", QStringLiteral("使用情况应为列表"));
    });
    GoTo(strict.GetUrl());
    Begin();

    Report(event);

    QTRY_COMPARE(strict.GetRequestCount(), 1);
    QTRY_COMPARE(Waiting(), QStringList());
}

void tst_UsageReports::keepsAccountsApart()
{
    FaultServer silent;
    silent.SetScript([](const auto&) { return FaultServer::Failing(FaultServer::Fault::Silence); });
    GoTo(silent.GetUrl());
    Begin(QStringLiteral("author-2"));
    Report(event);
    QTRY_COMPARE(silent.GetRequestCount(), 1);

    GoTo(QUrl(server.BaseUrl()));
    Begin(QStringLiteral("author-1"));
    Report(event + QStringLiteral(".other"));

    QTRY_COMPARE(CountOf(event + QStringLiteral(".other")), 1);
    QCOMPARE(CountOf(event), 0);
    QTRY_COMPARE(Waiting().size(), 1);
}

void tst_UsageReports::keepsServersApart()
{
    reports->Begin(QStringLiteral("elsewhere"), QStringLiteral("author-1"));
    FaultServer silent;
    silent.SetScript([](const auto&) { return FaultServer::Failing(FaultServer::Fault::Silence); });
    GoTo(silent.GetUrl());
    Report(event);
    QTRY_COMPARE(silent.GetRequestCount(), 1);

    GoTo(QUrl(server.BaseUrl()));
    Begin();
    Report(event + QStringLiteral(".here"));

    QTRY_COMPARE(CountOf(event + QStringLiteral(".here")), 1);
    QCOMPARE(CountOf(event), 0);
}

void tst_UsageReports::stopsAndForgetsWhenTheUserSaysNo()
{
    FaultServer silent;
    silent.SetScript([](const auto&) { return FaultServer::Failing(FaultServer::Fault::Silence); });
    GoTo(silent.GetUrl());
    Begin(QStringLiteral("author-2"));
    Report(event);
    QTRY_COMPARE(silent.GetRequestCount(), 1);
    Begin(QStringLiteral("author-1"));
    Report(event);
    QTRY_COMPARE(silent.GetRequestCount(), 2);

    reports->Allow(false);
    Report(event);

    QVERIFY(!QDir(folder->filePath(QStringLiteral("usage"))).exists());
    Begin(); // as somebody who signs in later does
    reports->Allow(true);
    QCOMPARE(Waiting(), QStringList());
    QCOMPARE(silent.GetRequestCount(), 2);
}

void tst_UsageReports::sendsNothingMoreOnceTheUserHasSaidNo()
{
    FaultServer receiver;
    GoTo(receiver.GetUrl());
    bool said = false;
    BeforeCall before([&] {
        reports->Allow(false);
        said = true;
    });
    reports->installEventFilter(&before);
    Begin();

    Report(event);
    QTRY_VERIFY(said);
    reports->Allow(true);
    Report(event + QStringLiteral(".after"));

    QTRY_COMPARE(receiver.GetRequestCount(), 1);
    QVERIFY(receiver.GetRequests().first().body.contains((event + QStringLiteral(".after")).toUtf8()));
    QVERIFY(!receiver.GetRequests().first().body.contains((event + QLatin1Char('"')).toUtf8()));
}

void tst_UsageReports::staysSilentAfterANoThatWasSaidBefore()
{
    reports->Allow(false);
    Begin();

    Report(event);

    QVERIFY(!QDir(folder->filePath(QStringLiteral("usage"))).exists());
    QVERIFY(!UsageMonitor::Instance()->IsEnabled());
}

void tst_UsageReports::beginsAgainWhenTheUserAgreesAgain()
{
    reports->Allow(false);
    Begin();
    Report(event);

    reports->Allow(true);
    Report(event);

    QTRY_COMPARE(CountOf(event), 1);
}

void tst_UsageReports::showsAdministratorsTheCounts()
{
    const QString save = QStringLiteral("OXA_AppDevelop_Save");
    const QString run = QStringLiteral("OXA_MyApplications_Execute");
    Begin();
    Report(save);
    Report(save);
    Report(run);
    QTRY_COMPARE(CountOf(save) + CountOf(run), 3);

    SignIn("admin-1");
    UsageDialog dialog(DateLanguage::Chinese, nullptr);
    dialog.show();

    QTRY_VERIFY(dialog.findChild<QLabel*>(QStringLiteral("labelDay")));
    const QString text = dialog.findChild<QLabel*>(QStringLiteral("labelDay"))->text();
    QVERIFY2(text.contains(QStringLiteral("保存 2 次，")), qPrintable(text));
    QVERIFY2(text.contains(QStringLiteral("运行 1 次")), qPrintable(text));
    const QDate today = QDateTime::currentDateTimeUtc().date();
    QVERIFY2(
        text.startsWith(DayText(today, DateLanguage::Chinese)) ||
            text.startsWith(DayText(today.addDays(-1), DateLanguage::Chinese)), // midnight has just passed
        qPrintable(text));
}

void tst_UsageReports::saysThatThereIsNothing()
{
    FaultServer quiet;
    quiet.SetScript([](const auto&) { return FaultServer::Json(200, R"({"counts":[]})"); });
    GoTo(quiet.GetUrl());

    UsageDialog dialog(DateLanguage::Chinese, nullptr);

    QTRY_COMPARE(dialog.findChild<QLabel*>(QStringLiteral("labelState"))->text(),
                 QStringLiteral("最近没有使用记录。"));
}

void tst_UsageReports::isAsHighAsItsDays()
{
    QByteArray counts;
    FaultServer answering;
    answering.SetScript([&counts](const auto&) { return FaultServer::Json(200, counts); });
    GoTo(answering.GetUrl());
    const auto heightWith = [&counts](int days) {
        QByteArrayList all;
        for (int day = 1; day <= days; ++day)
            all << QStringLiteral(R"({"day":"2026-11-%1","event":"OXA_AppDevelop_Save","count":3})")
                       .arg(day, 2, 10, QLatin1Char('0'))
                       .toUtf8();
        counts = R"({"counts":[)" + all.join(',') + "]}";
        UsageDialog dialog(DateLanguage::Chinese, nullptr);
        dialog.show();
        const auto count = [&dialog] {
            return dialog.findChildren<QLabel*>(QStringLiteral("labelDay")).size();
        };
        return QTest::qWaitFor([&] { return count() == days; }) ? dialog.height() : -1;
    };

    const int one = heightWith(1);
    const int four = heightWith(4);
    const int twentyFive = heightWith(25);

    QVERIFY(one > 0);
    QVERIFY(one < 260);
    QVERIFY(four > one);
    QVERIFY(twentyFive > four);
    QVERIFY(twentyFive < 560);
}

void tst_UsageReports::saysWhyThereAreNoCounts()
{
    SignIn("author-1");

    UsageDialog dialog(DateLanguage::Chinese, nullptr);

    QTRY_VERIFY(dialog.findChild<QLabel*>(QStringLiteral("labelProblem")));
    QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("labelProblem"))->text(),
             QStringLiteral("您没有执行此操作的权限。"));
}

RPA_TEST_MAIN(tst_UsageReports)
#include "tst_usagereports.moc"
