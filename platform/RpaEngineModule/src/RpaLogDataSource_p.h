// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/IRpaLogManager.h>

#include <QTimer>

// A ring of the newest log lines. A run may write faster than a view can draw, so new lines are announced
// together, once per turn of the event loop.
class RpaLogDataSource : public IRpaLogDataSource
{
    Q_OBJECT

public:
    static constexpr int capacityInLines = 10000;
    // A single line of a run must not fill the memory either.
    static constexpr int maxLineLength = 16 * 1024;

    explicit RpaLogDataSource(QObject* parent = nullptr);

    void Initialize() override;
    QVector<RpaLogLine> GetLines() const override { return ring.mid(oldest) + ring.mid(0, oldest); }

    void Append(RpaLogLevel level, const QString& text, const QString& statementId, int line);

private:
    void AnnounceNewLines();

    QVector<RpaLogLine> ring; // grows to its capacity, then the oldest line is overwritten
    int oldest = 0;
    qint64 nextNumber = 1;
    int unannounced = 0; // newest lines that listeners have not heard of
    QTimer announceTimer;
};
