// SPDX-License-Identifier: Apache-2.0

// A kept run of 100,000 spans: opening it, its timeline, and both while another run floods the log; beside reading
// as many rows of plain SQL.

#include "FrameTimes.h"
#include "RunLogSource.h"
#include "RunTimeline.h"

#include <RpaEngineCore/IProcessLifeCycle.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>
#include <RpaRunHistory/RpaRunHistory.h>
#include <WbBaseUI/WbTheme.h>

#include <QApplication>
#include <QEventLoop>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QVariant>

namespace
{
constexpr int spanCount = 100000;
constexpr int lineCount = 100000;
constexpr int linesAtOnce = 500;
constexpr int rounds = 15;

template <typename Call>
void Tell(const Call& call)
{
    RpaProcessLifeCycleManager::Instance()->ForEach(call);
}

QVector<RpaRunSpan> SpansOf(int first, int count)
{
    QVector<RpaRunSpan> spans;
    for (int number = first; number < first + count; ++number) {
        RpaRunSpan span;
        span.kind = RpaSpanKind::File;
        span.start = number * qint64(1000);
        span.duration = 200 + number % 700;
        const int line = number % 40 + 1;
        span.place = {QStringLiteral("主流程"), QStringLiteral("statement-%1").arg(line), line,
                      QStringLiteral("读取文本文件")};
        span.call = QStringLiteral("open");
        span.input = QStringLiteral("/home/user/data/table-%1.csv").arg(number);
        span.result = QStringLiteral("4096 个字符：编号,姓名");
        spans.append(span);
    }
    return spans;
}

void Begin()
{
    const RpaRunStart start{QStringLiteral("a1"), QStringLiteral("develop"), QStringLiteral("主流程"), {}};
    Tell([&](IProcessLifeCycle* listener) { listener->RunStarted(start); });
}

void End()
{
    Tell([](IProcessLifeCycle* listener) { listener->ProcessFinish(QStringLiteral("主流程")); });
}

void WriteRun(RpaRunHistory* history)
{
    Begin();
    for (int first = 0; first < spanCount; first += 1000) {
        const RpaRunSpans spans{SpansOf(first, 1000), {}};
        Tell([&](IProcessLifeCycle* listener) { listener->RunSpans(spans); });
        history->Finish();
    }
    End();
    history->Finish();
}

// Until it is painted.
double Open(RpaRunHistory* history, RunTimeline* timeline)
{
    QElapsedTimer timer;
    QEventLoop loop;
    timer.start();
    history->ReadDetails(1, timeline, [&](const RpaRunDetails& details) {
        timeline->ShowSpans(details.spans);
        loop.quit();
    });
    loop.exec();
    timeline->viewport()->repaint();
    const double elapsed = FrameTimes::Elapsed(timer);
    if (timeline->GetRows().GetCount() != spanCount)
        qFatal("%d spans are shown", timeline->GetRows().GetCount());
    return elapsed;
}

void MeasureOpening(RpaRunHistory* history, RunTimeline* timeline)
{
    QVector<double> times;
    for (int i = 0; i < rounds; ++i)
        times << Open(history, timeline);
    FrameTimes::Print("open", FrameTimes::Of(times));
    times.clear();
    for (int i = 0; i < 200; ++i)
        times << FrameTimes::Measure([&] {
            timeline->Zoom(i % 20 < 10 ? 1.6 : 1 / 1.6, 600);
            timeline->viewport()->repaint();
        });
    FrameTimes::Print("zoom, a frame", FrameTimes::Of(times));
}

// The longest time between two turns of the event loop is what a user would feel.
void MeasureFlood(RpaRunHistory* history, RunLogSource* log, RunTimeline* timeline)
{
    Begin();
    QVector<double> times;
    QElapsedTimer whole;
    whole.start();
    for (int line = 0; line < lineCount; line += linesAtOnce) {
        for (int i = 0; i < linesAtOnce; ++i)
            log->Write(QStringLiteral("登记了第 %1 张发票").arg(line + i));
        const RpaRunSpans spans{SpansOf(line, 100), {}};
        times << FrameTimes::Measure([&] {
            log->Announce();
            Tell([&](IProcessLifeCycle* listener) { listener->RunSpans(spans); });
            timeline->Zoom(line % 1000 == 0 ? 1.1 : 1 / 1.1, 600);
            timeline->viewport()->repaint();
        });
        log->DropOldest(linesAtOnce);
    }
    End();
    FrameTimes::Print("a turn in a flood of lines", FrameTimes::Of(times));
    FrameTimes::PrintTime("longest turn", *std::max_element(times.begin(), times.end()));
    FrameTimes::PrintTime("the flood", FrameTimes::Elapsed(whole));
    history->Finish();
}

void MeasureSql(const QString& path)
{
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
    db.setDatabaseName(path);
    if (!db.open() || !db.transaction())
        qFatal("no database");
    QSqlQuery query(db);
    query.exec(
        QStringLiteral("CREATE TABLE span(start, duration, process, statement, line, call, input, result)"));
    query.prepare(QStringLiteral("INSERT INTO span VALUES(?, ?, ?, ?, ?, ?, ?, ?)"));
    for (const RpaRunSpan& span : SpansOf(0, spanCount)) {
        const QVariantList values{span.start,
                                  span.duration,
                                  span.place.processName,
                                  span.place.statementId,
                                  span.place.line,
                                  span.call,
                                  span.input,
                                  span.result};
        for (int i = 0; i < values.size(); ++i)
            query.bindValue(i, values.at(i));
        query.exec();
    }
    db.commit();
    QVector<double> times;
    for (int i = 0; i < rounds; ++i)
        times << FrameTimes::Measure([&] {
            int characters = 0;
            query.exec(QStringLiteral("SELECT * FROM span"));
            while (query.next())
                for (int column = 0; column < 8; ++column)
                    characters += query.value(column).toString().size();
            if (characters == 0)
                qFatal("nothing was read");
        });
    FrameTimes::Print("read", FrameTimes::Of(times));
}
} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    const QTemporaryDir folder;
    RunLogSource log;
    RpaRunHistory history;
    history.Start(folder.path());
    history.Follow(&log, nullptr);
    WriteRun(&history);
    RunTimeline timeline;
    timeline.resize(1000, 600);
    timeline.show();
    std::printf("timeline, %d spans of 40 statements\n", spanCount);
    MeasureOpening(&history, &timeline);
    MeasureFlood(&history, &log, &timeline);
    std::printf("QSqlQuery, %d rows of 8 columns\n", spanCount);
    MeasureSql(folder.filePath(QStringLiteral("plain.sqlite")));
    return 0;
}
