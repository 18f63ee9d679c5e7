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

QVector<RpaLogLine> RpaLogDataSource::GetLines() const
{
    return ring.mid(oldest) + ring.mid(0, oldest);
}

void RpaLogDataSource::Append(RpaLogLevel level, const QString& text, const QString& statementId)
{
    RpaLogLine line;
    line.number = nextNumber++;
    line.time = QDateTime::currentDateTime();
    line.level = level;
    line.text = text.size() > MaxLineLength ? text.left(MaxLineLength) + QStringLiteral("…") : text;
    line.statementId = statementId;

    if (ring.size() < CapacityInLines) {
        ring.append(line);
    } else {
        ring[oldest] = line;
        oldest = (oldest + 1) % CapacityInLines;
    }

    // Of the lines of this turn only those that are still there are news.
    unannounced = std::min(unannounced + 1, ring.size());
    if (!announceTimer.isActive())
        announceTimer.start();
}

void RpaLogDataSource::AnnounceNewLines()
{
    const QVector<RpaLogLine> lines = GetLines();
    emit SigLinesAdded(lines.mid(lines.size() - std::exchange(unannounced, 0)));
}
