// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaProblems/RpaProblemWatch.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>

#include <QSemaphore>
#include <QSignalSpy>
#include <QThread>
#include <QtTest>

#include <atomic>

namespace
{
RpaAppDataPtr MakeApp(const QVector<RpaStatement>& statements = {})
{
    const RpaAppDataPtr app(new RpaAppData);
    app->InitDefault();
    app->GetProcessDataManager()->GetProcess(0)->SetStatements(statements);
    return app;
}

RpaStatement Log(const QString& text)
{
    RpaStatement statement;
    statement.command = QStringLiteral("log");
    statement.arguments = {{QStringLiteral("text"), text}};
    return statement;
}

void Edit(const RpaAppDataPtr& app)
{
    app->GetProcessDataManager()->GetProcess(0)->Insert(QString(), -1, {Log(QStringLiteral("x"))});
}

// A search that waits until it may go on, and says how many statements it saw.
class HeldSearch
{
public:
    RpaProblemWatch::Find Get()
    {
        return [this](const RpaAppCopy& app, const RpaProblemFinder::IsStale& isStale) {
            ++begun;
            begins.release();
            mayEnd.acquire();
            stale = isStale();
            RpaProblem problem;
            problem.message = QString::number(app.processes.value(0).statements.size());
            return QVector<RpaProblem>{problem};
        };
    }

    std::atomic<int> begun{0};
    std::atomic<bool> stale{false};
    QSemaphore begins;
    QSemaphore mayEnd;
};

QString MessageOf(const RpaProblemWatch& watch)
{
    return watch.Get().value(0).message;
}
} // namespace

class ProblemWatchTest : public QObject
{
    Q_OBJECT

private slots:
    void looksAtTenThousandStatementsOnAnotherThread();
    void looksAgainAfterAnEdit();
    void looksAgainWhenOnlyTheMarkOfAnEditCame();
    void dropsAnAnswerAboutAnOlderState();
    void looksOnceForManyEdits();
    void forgetsTheFormerApp();
    void dropsAnAnswerAboutTheFormerApp();
    void looksAgainWhenTheContentWasReplaced();
    void letsGoOfAnAppThatGoesAwayInTheMiddleOfASearch();
    void goesAwayInTheMiddleOfASearch();
};

void ProblemWatchTest::looksAtTenThousandStatementsOnAnotherThread()
{
    QVector<RpaStatement> statements(10000, Log(QStringLiteral("x")));
    statements.append(Log(QStringLiteral("=a")));
    std::atomic<QThread*> thread{nullptr};
    RpaProblemWatch watch(
        [&thread](const RpaAppCopy& app, const RpaProblemFinder::IsStale& isStale) {
            thread = QThread::currentThread();
            return RpaProblemFinder::Find(app, isStale);
        },
        nullptr);

    const RpaAppDataPtr app = MakeApp(statements);
    watch.SetApp(app.data());
    QVERIFY(watch.Get().isEmpty()); // the call did not wait

    QTRY_COMPARE(watch.Get().value(0).rule, QStringLiteral("undefined-variable"));
    QVERIFY(thread != QThread::currentThread());
    QVERIFY(watch.IsCurrent());
}

void ProblemWatchTest::looksAgainAfterAnEdit()
{
    const RpaAppDataPtr app = MakeApp();
    RpaProblemWatch watch;
    watch.SetApp(app.data());
    QTRY_VERIFY(watch.IsCurrent());

    const QString id = app->GetProcessDataManager()
                           ->GetProcess(0)
                           ->Insert(QString(), -1, {Log(QStringLiteral("=a"))})
                           .value(0);
    QVERIFY(!watch.IsCurrent());
    QTRY_COMPARE(watch.Get().value(0).place.statementId, id);

    app->GetProcessDataManager()->GetProcess(0)->Take(id);
    QTRY_VERIFY(watch.Get().isEmpty());
}

void ProblemWatchTest::looksAgainWhenOnlyTheMarkOfAnEditCame()
{
    const RpaAppDataPtr app = MakeApp();
    RpaProblemWatch watch;
    watch.SetApp(app.data());
    QTRY_VERIFY(watch.IsCurrent());

    app->GetAppExtendInfo()->manual = QStringLiteral("<a href=\"\">甲</a>");
    app->SetModified(true);

    QTRY_COMPARE(watch.Get().value(0).rule, QStringLiteral("dead-link"));
}

void ProblemWatchTest::dropsAnAnswerAboutAnOlderState()
{
    const RpaAppDataPtr app = MakeApp();
    HeldSearch search;
    RpaProblemWatch watch(search.Get(), nullptr);
    const QSignalSpy changes(&watch, &RpaProblemWatch::SigChanged);
    watch.SetApp(app.data());
    search.begins.acquire();

    Edit(app);
    search.mayEnd.release();
    QTRY_COMPARE(search.begun.load(), 2); // so the first has been answered
    QVERIFY(search.stale);
    QCOMPARE(changes.count(), 0);
    QVERIFY(watch.Get().isEmpty());

    search.mayEnd.release();
    QTRY_COMPARE(MessageOf(watch), QStringLiteral("1"));
    QVERIFY(!search.stale);
    QCOMPARE(changes.count(), 1);
}

void ProblemWatchTest::looksOnceForManyEdits()
{
    const RpaAppDataPtr app = MakeApp();
    HeldSearch search;
    search.mayEnd.release(10);
    RpaProblemWatch watch(search.Get(), nullptr);
    watch.SetApp(app.data());
    QTRY_COMPARE(MessageOf(watch), QStringLiteral("0"));

    for (int i = 0; i < 20; ++i)
        Edit(app);

    QTRY_COMPARE(MessageOf(watch), QStringLiteral("20"));
    QCOMPARE(search.begun.load(), 2);
}

void ProblemWatchTest::forgetsTheFormerApp()
{
    const RpaAppDataPtr former = MakeApp({Log(QStringLiteral("=a"))});
    RpaProblemWatch watch;
    watch.SetApp(former.data());
    QTRY_COMPARE(watch.Get().size(), 1);

    watch.SetApp(nullptr);
    QVERIFY(watch.Get().isEmpty());
    QVERIFY(watch.IsCurrent());
    Edit(former);
    QVERIFY(watch.IsCurrent());
}

void ProblemWatchTest::dropsAnAnswerAboutTheFormerApp()
{
    const RpaAppDataPtr former = MakeApp();
    const RpaAppDataPtr next = MakeApp({Log(QStringLiteral("x")), Log(QStringLiteral("y"))});
    HeldSearch search;
    RpaProblemWatch watch(search.Get(), nullptr);
    watch.SetApp(former.data());
    search.begins.acquire();

    watch.SetApp(next.data());
    search.mayEnd.release();
    QTRY_COMPARE(search.begun.load(), 2); // so the first has been answered
    QVERIFY(search.stale);
    QVERIFY(watch.Get().isEmpty());
    QVERIFY(!watch.IsCurrent());

    search.mayEnd.release();
    QTRY_COMPARE(MessageOf(watch), QStringLiteral("2"));
}

void ProblemWatchTest::looksAgainWhenTheContentWasReplaced()
{
    const RpaAppDataPtr app = MakeApp();
    const QByteArray other = MakeApp({Log(QStringLiteral("=a"))})->ToJson();
    RpaProblemWatch watch;
    watch.SetApp(app.data());
    QTRY_VERIFY(watch.IsCurrent());

    QVERIFY(app->Parse(other));

    QTRY_COMPARE(watch.Get().size(), 1);
}

void ProblemWatchTest::letsGoOfAnAppThatGoesAwayInTheMiddleOfASearch()
{
    RpaAppDataPtr app = MakeApp({Log(QStringLiteral("x"))});
    HeldSearch search;
    RpaProblemWatch watch(search.Get(), nullptr);
    QSignalSpy changes(&watch, &RpaProblemWatch::SigChanged);
    watch.SetApp(app.data());
    search.begins.acquire();

    app.clear();
    QVERIFY(!watch.GetApp());
    QVERIFY(watch.IsCurrent());
    QCOMPARE(changes.count(), 1);
    search.mayEnd.release();

    const RpaAppDataPtr next = MakeApp();
    search.mayEnd.release();
    watch.SetApp(next.data()); // its search begins behind the answer to the former one
    QTRY_COMPARE(MessageOf(watch), QStringLiteral("0"));
    QCOMPARE(changes.count(), 2);
}

void ProblemWatchTest::goesAwayInTheMiddleOfASearch()
{
    std::atomic<bool> ended{false};
    QSemaphore begins;
    const RpaAppDataPtr app = MakeApp();
    {
        RpaProblemWatch watch(
            [&](const RpaAppCopy&, const RpaProblemFinder::IsStale& isStale) {
                begins.release();
                while (!isStale())
                    QThread::yieldCurrentThread();
                ended = true;
                return QVector<RpaProblem>();
            },
            nullptr);
        watch.SetApp(app.data());
        begins.acquire();
    }
    QVERIFY(ended);
}

QTEST_GUILESS_MAIN(ProblemWatchTest)
#include "tst_problemwatch.moc"
