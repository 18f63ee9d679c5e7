// SPDX-License-Identifier: Apache-2.0

// SHA-256 as the server takes it, beside Qt's own. The argument is the size in bytes: a token, a small app, a large
// one.
#include <QCryptographicHash>

#include <base/Digest.h>
#include <benchmark/benchmark.h>

namespace
{
void ServerSha256(benchmark::State& state)
{
    const QByteArray data(static_cast<int>(state.range(0)), 'x');
    for (auto _ : state)
        benchmark::DoNotOptimize(server::Sha256(data));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void QtSha256(benchmark::State& state)
{
    const QByteArray data(static_cast<int>(state.range(0)), 'x');
    for (auto _ : state)
        benchmark::DoNotOptimize(QCryptographicHash::hash(data, QCryptographicHash::Sha256));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

BENCHMARK(ServerSha256)->Arg(64)->Arg(100 * 1000)->Arg(7400 * 1000);
BENCHMARK(QtSha256)->Arg(64)->Arg(100 * 1000)->Arg(7400 * 1000);
} // namespace

BENCHMARK_MAIN();
