// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QString>

#include <chrono>
#include <functional>
#include <map>

// Spaces loads that are repeated: whoever answers a failed load with the same load again is slowed down (1,
// 2, 4 … 30 seconds by default) instead of keeping client and server busy. A load that succeeds and is asked
// for again at once, several times over, is treated the same: somebody does not accept what it brings.
class LoadBackoff
{
public:
    using Start = std::function<void()>;

    void SetSpacing(std::chrono::milliseconds first, std::chrono::milliseconds longest);

    // Tells one life of those who ask from the next by a number.
    void SetLife(const std::function<quint64()>& number) { life = number; }

    // Runs start now or when the wait for the load of this key is over.
    void Run(const QString& key, Start start);
    // Whether what is being started waited longer than those who asked for it were there.
    bool IsStale() const { return isStale; }
    // The load was answered.
    void Answered(const QString& key, bool success);
    // Runs everything that waits, now.
    void Flush();
    // Something else was done in between, so the next load of this key is no mere repeat.
    void Restart(const QString& key) { histories.remove(key); }
    // Every load is a first one again.
    void Forget() { histories.clear(); }

private:
    struct History
    {
        int failures = 0;  // in a row
        int hurried = 0;   // successes asked for again at once, in a row
        QElapsedTimer age; // since the last answer
    };

    std::chrono::milliseconds WaitFor(const QString& key);

    std::chrono::milliseconds first{1000};
    std::chrono::milliseconds longest{30000};
    QHash<QString, History> histories;
    struct Waiting
    {
        Start start;
        quint64 life = 0;
    };
    void Begin(const Waiting& due);
    quint64 GetLife() const { return life ? life() : 0; }

    std::function<quint64()> life;
    bool isStale = false;
    std::map<quint64, Waiting> waiting;
    quint64 lastId = 0;
    QObject context;
};
