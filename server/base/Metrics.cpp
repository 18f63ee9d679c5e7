// SPDX-License-Identifier: Apache-2.0

#include "Metrics.h"

#include <algorithm>

namespace server
{
Metrics::Metrics(std::vector<QByteArray> rowLabels)
    : labels(std::move(rowLabels)), rows(std::make_unique<Row[]>(labels.size()))
{
}

void Metrics::Count(std::size_t row, int status, std::chrono::microseconds latency)
{
    const double seconds = static_cast<double>(latency.count()) / 1e6;
    const auto bucket = std::lower_bound(bounds.begin(), bounds.end(), seconds) - bounds.begin();
    Row& mine = rows[row];
    const std::lock_guard lock(mine.mutex);
    ++mine.byStatus[status];
    ++mine.buckets[static_cast<std::size_t>(bucket)];
    mine.seconds += seconds;
}

void Metrics::AddGauge(const char* name, const char* help, const char* type, std::function<double()> value)
{
    gauges.push_back({name, help, type, std::move(value)});
}

QByteArray Metrics::Text() const
{
    QByteArray text;
    AppendRequests(text);
    AppendLatencies(text);
    for (const Gauge& gauge : gauges) {
        text += QByteArray("# HELP ") + gauge.name + ' ' + gauge.help + "\n# TYPE " + gauge.name + ' ' +
                gauge.type + '\n' + gauge.name + ' ' + QByteArray::number(gauge.value(), 'g', 15) + '\n';
    }
    return text;
}

void Metrics::AppendRequests(QByteArray& text) const
{
    text += "# HELP rpa_requests_total Answered requests by route and status.\n# TYPE rpa_requests_total "
            "counter\n";
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const std::lock_guard lock(rows[i].mutex);
        for (const auto& [status, count] : rows[i].byStatus)
            text += "rpa_requests_total{route=\"" + labels[i] + "\",status=\"" + QByteArray::number(status) +
                    "\"} " + QByteArray::number(count) + '\n';
    }
}

void Metrics::AppendLatencies(QByteArray& text) const
{
    const QByteArray name = QByteArrayLiteral("rpa_request_seconds");
    text +=
        "# HELP " + name + " Time from the complete request to its answer.\n# TYPE " + name + " histogram\n";
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const std::lock_guard lock(rows[i].mutex);
        if (rows[i].byStatus.empty())
            continue;
        const QByteArray route = "{route=\"" + labels[i] + '"';
        qint64 sum = 0;
        for (std::size_t b = 0; b <= bounds.size(); ++b) {
            sum += rows[i].buckets[b];
            const QByteArray bound =
                b < bounds.size() ? QByteArray::number(bounds[b]) : QByteArrayLiteral("+Inf");
            text += name + "_bucket" + route + ",le=\"" + bound + "\"} " + QByteArray::number(sum) + '\n';
        }
        text += name + "_sum" + route + "} " + QByteArray::number(rows[i].seconds, 'g', 12) + '\n';
        text += name + "_count" + route + "} " + QByteArray::number(sum) + '\n';
    }
}
} // namespace server
