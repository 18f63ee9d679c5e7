// SPDX-License-Identifier: Apache-2.0

#include "RpaLogDataSource_p.h"

#include <algorithm>
#include <utility>

RpaLogDataSource::RpaLogDataSource(QObject* parent) : IRpaLogDataSource(parent)
{
    announceTimer.setSingleShot(true);
    announceTimer.setInterval(0);
    connect(&announceTimer, &QTimer::timeout, this, &RpaLogDataSource::AnnounceNewLines);
}

void RpaLogDataSource::Initialize()
{
    announceTimer.stop();
    unannounced = 0;
    ring.clear();
    oldest = 0;
    nextNumber = 1;
    emit SigInitialized();
}

void RpaLogDataSource::Append(RpaLogLevel level, const QString& text, const QString& statementId,
                              int lineNumber)
{
    RpaLogLine line;
    line.number = nextNumber++;
    line.time = QDateTime::currentDateTime();
    line.level = level;
    line.text = text.size() > maxLineLength ? text.left(maxLineLength) + QStringLiteral("…") : text;
    line.statementId = statementId;
    line.line = lineNumber;

    if (ring.size() < capacityInLines) {
        ring.append(line);
    } else {
        ring[oldest] = line;
        oldest = (oldest + 1) % capacityInLines;
    }

    // Of the lines of this turn only those that are still there are news.
    unannounced = std::min(unannounced + 1, ring.size());
    if (!announceTimer.isActive())
        announceTimer.start();
}

void RpaLogDataSource::AnnounceNewLines()
{
    // Only the news are copied: a flood of lines is announced many times a second.
    const int count = std::exchange(unannounced, 0);
    QVector<RpaLogLine> news;
    news.reserve(count);
    for (int i = ring.size() - count; i < ring.size(); ++i)
        news.append(ring.at((oldest + i) % ring.size()));
    emit SigLinesAdded(news);
}
