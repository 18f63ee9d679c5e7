// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>

#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace server
{
// Counts of answered requests by route and status, and their latencies. Any thread.
class Metrics
{
public:
    // One row per label; rows are then addressed by their position.
    explicit Metrics(std::vector<QByteArray> rowLabels);

    void Count(std::size_t row, int status, std::chrono::microseconds latency);

    // A value that is asked for when the figures are read.
    void AddGauge(const char* name, const char* help, const char* type, std::function<double()> value);

    // All figures in Prometheus' text format.
    QByteArray Text() const;

private:
    static constexpr std::array<double, 9> bounds{0.0005, 0.001, 0.005, 0.01, 0.05,
                                                  0.1,    0.5,   1,     5}; // seconds

    struct Row
    {
        mutable std::mutex mutex;
        std::map<int, qint64> byStatus;
        std::array<qint64, bounds.size() + 1> buckets{};
        double seconds = 0;
    };
    struct Gauge
    {
        const char* name;
        const char* help;
        const char* type;
        std::function<double()> value;
    };

    void AppendRequests(QByteArray& text) const;
    void AppendLatencies(QByteArray& text) const;

    const std::vector<QByteArray> labels;
    const std::unique_ptr<Row[]> rows;
    std::vector<Gauge> gauges;
};
} // namespace server
