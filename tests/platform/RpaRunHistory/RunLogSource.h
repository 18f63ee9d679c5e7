// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/IRpaLogManager.h>

// A log whose lines the test writes, and announces when it likes.
class RunLogSource : public IRpaLogDataSource
{
public:
    void Initialize() override
    {
        lines.clear();
        announced = 0;
        emit SigInitialized();
    }

    QVector<RpaLogLine> GetLines() const override { return lines; }

    void Write(const QString& text, const QString& statementId = QString())
    {
        RpaLogLine line;
        line.number = ++last;
        line.time = QDateTime::currentDateTime();
        line.text = text;
        line.statementId = statementId;
        lines.append(line);
    }

    void Announce()
    {
        const QVector<RpaLogLine> news = lines.mid(announced);
        announced = lines.size();
        emit SigLinesAdded(news);
    }

    // As a bounded log does when it is full.
    void DropOldest(int count)
    {
        lines.remove(0, count);
        announced = qMax(0, announced - count);
    }

    void Restart()
    {
        last = 0;
        Initialize();
    }

private:
    QVector<RpaLogLine> lines;
    int announced = 0;
    qint64 last = 0;
};
