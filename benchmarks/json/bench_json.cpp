// SPDX-License-Identifier: Apache-2.0

// The app model to and from JSON, beside Qt's own JSON classes on the same text. The argument is the size of
// the text in kilobytes.
#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaDrafts/RpaDraftJournal.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <WbFoundation/JsonGuard.h>

#include <QCoreApplication>
#include <QHash>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace
{
RpaStatement MakeStatement(int number)
{
    RpaStatement statement;
    statement.id = QString::number(number, 16).rightJustified(32, QLatin1Char('0'));
    statement.command = QStringLiteral("variable.set");
    statement.arguments = {{QStringLiteral("name"), QStringLiteral("变量%1").arg(number)},
                           {QStringLiteral("value"), QStringLiteral("=f\"{行[0]}: {金额 * 1.06:.2f}\"")}};
    statement.note = number % 5 == 0 ? QStringLiteral("把每一行的金额加上税") : QString();
    return statement;
}

// Half statements in blocks, half table rows.
QByteArray MakeText(int kilobytes)
{
    RpaAppData app;
    app.InitDefault();
    RpaProcess* process = app.GetProcessDataManager()->GetProcess(0);
    RpaTableData* table = app.GetUIDataManager()->GetUIData(0)->GetTableData();
    table->InsertColumn(-1, {QStringLiteral("姓名"), RpaColumnType::Text, QString(), 0, QByteArray()});
    table->InsertColumn(-1, {QStringLiteral("金额"), RpaColumnType::Number, QString(), 0, QByteArray()});
    table->InsertColumn(-1, {QStringLiteral("完成"), RpaColumnType::Switch, QString(), 0, QByteArray()});

    QVector<RpaStatement> statements;
    QVector<QVariantList> rows;
    for (int i = 0; i < kilobytes * 20 / 9; ++i) {
        if (i % 10 == 0) {
            statements.append(MakeStatement(i));
            statements.last().command = QStringLiteral("if");
        } else {
            statements.last().children.append(MakeStatement(i));
        }
        for (int k = 0; k < 6; ++k)
            rows.append({QStringLiteral("客户 %1").arg(i), i * 12.25 + k, k % 2 == 0});
    }
    process->SetStatements(statements);
    table->InsertRows(-1, rows);
    return app.ToJson();
}

const QByteArray& TextOf(int kilobytes)
{
    static QHash<int, QByteArray> texts;
    if (!texts.contains(kilobytes))
        texts.insert(kilobytes, MakeText(kilobytes));
    return texts[kilobytes];
}

void Count(benchmark::State& state, const QByteArray& text)
{
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * text.size());
    const int kilobytes = text.size() / 1024;
    state.counters["text_kB"] = kilobytes;
}

void AppToJson(benchmark::State& state)
{
    const QByteArray& text = TextOf(static_cast<int>(state.range(0)));
    RpaAppData app;
    app.Parse(text);
    for (auto _ : state)
        benchmark::DoNotOptimize(app.ToJson());
    Count(state, text);
}

void QtToJson(benchmark::State& state)
{
    const QByteArray& text = TextOf(static_cast<int>(state.range(0)));
    const QJsonDocument document = QJsonDocument::fromJson(text);
    for (auto _ : state)
        benchmark::DoNotOptimize(document.toJson(QJsonDocument::Compact));
    Count(state, text);
}

void AppFromJson(benchmark::State& state)
{
    const QByteArray& text = TextOf(static_cast<int>(state.range(0)));
    RpaAppData app;
    for (auto _ : state)
        benchmark::DoNotOptimize(app.Parse(text));
    Count(state, text);
}

void QtFromJson(benchmark::State& state)
{
    const QByteArray& text = TextOf(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(QJsonDocument::fromJson(text));
    Count(state, text);
}

void CheckForeignJson(benchmark::State& state)
{
    const QByteArray& text = TextOf(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(JsonGuard::Check(text));
    Count(state, text);
}

// The argument is the size of the app: what an edit costs must not depend on it.
void EditWithJournal(benchmark::State& state)
{
    const QTemporaryDir folder;
    RpaDraftJournal journal;
    QString problem;
    RpaAppData app;
    if (!journal.Start(folder.path(), &problem) || !app.Parse(TextOf(static_cast<int>(state.range(0))))) {
        state.SkipWithError(qPrintable(problem));
        return;
    }
    app.GetAppExtendInfo()->SetAppId(QStringLiteral("app"));
    journal.Open(QStringLiteral("author"), QStringLiteral("app"));
    for (auto _ : state)
        app.SetModified(true);
}

void EditWithoutJournal(benchmark::State& state)
{
    RpaAppData app;
    app.Parse(TextOf(static_cast<int>(state.range(0))));
    for (auto _ : state)
        app.SetModified(true);
}

void Sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(AppToJson)->Apply(Sizes);
BENCHMARK(QtToJson)->Apply(Sizes);
BENCHMARK(AppFromJson)->Apply(Sizes);
BENCHMARK(QtFromJson)->Apply(Sizes);
BENCHMARK(CheckForeignJson)->Apply(Sizes);
BENCHMARK(EditWithJournal)->Arg(100)->Arg(10000);
BENCHMARK(EditWithoutJournal)->Arg(100)->Arg(10000);
} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
