// SPDX-License-Identifier: Apache-2.0

// What it costs on the GUI thread to know whether the pages hold what was saved, with a table of as many rows
// as the argument says; beside it what a digest of their JSON would cost.
#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaPageEdits.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QTimer>

#include <benchmark/benchmark.h>

namespace
{
constexpr int columnCount = 6;

RpaTableData* FillTable(RpaAppData& app, int rowCount)
{
    app.InitDefault();
    RpaTableData* const table = app.GetUIDataManager()->GetUIData(0)->GetTableData();
    for (int i = 0; i < columnCount; ++i) {
        RpaTableColumn column;
        column.name = table->MakeFreeColumnName(QStringLiteral("列"));
        table->InsertColumn(-1, column);
    }
    QVector<QVariantList> rows;
    for (int row = 0; row < rowCount; ++row) {
        QVariantList cells;
        for (int column = 0; column < columnCount; ++column)
            cells << QStringLiteral("单元格 %1-%2").arg(row).arg(column);
        rows << cells;
    }
    table->InsertRows(-1, rows);
    app.SetModified(false);
    return table;
}

void Save(benchmark::State& state)
{
    RpaAppData app;
    FillTable(app, static_cast<int>(state.range(0)));
    RpaPageEdits::Of(&app);
    for (auto _ : state) {
        app.SetModified(true);
        app.SetModified(false);
    }
}

// The first edit after a save, which no longer shares the rows.
void Edit(benchmark::State& state)
{
    RpaAppData app;
    RpaTableData* const table = FillTable(app, static_cast<int>(state.range(0)));
    RpaPageEdits* const edits = RpaPageEdits::Of(&app);
    edits->findChild<QTimer*>()->setInterval(0);
    int number = 0;
    for (auto _ : state) {
        app.SetModified(false);
        table->SetCell(table->GetRowCount() - 1, 0, QString::number(++number));
        edits->Edited();
        QCoreApplication::processEvents();
    }
}

void Digest(benchmark::State& state)
{
    RpaAppData app;
    FillTable(app, static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(
            QCryptographicHash::hash(app.GetUIDataManager()->ToJson(), QCryptographicHash::Sha256));
}

void Rows(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(Save)->Apply(Rows);
BENCHMARK(Edit)->Apply(Rows);
BENCHMARK(Digest)->Apply(Rows);
} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
