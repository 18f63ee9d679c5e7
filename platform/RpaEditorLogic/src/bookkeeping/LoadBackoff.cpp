// SPDX-License-Identifier: Apache-2.0

#include "LoadBackoff_p.h"

#include <QTimer>

#include <algorithm>

namespace
{
// An author may pick the same version twice in a row; nobody does so without a pause more often than this.
constexpr int hurriedForFree = 3;
} // namespace

void LoadBackoff::SetSpacing(std::chrono::milliseconds shortest, std::chrono::milliseconds most)
{
    first = shortest;
    longest = most;
}

void LoadBackoff::Run(const QString& key, Start start)
{
    const auto wait = WaitFor(key);
    if (wait.count() <= 0) {
        start();
        return;
    }
    const quint64 id = ++lastId;
    waiting.emplace(id, Waiting{std::move(start), GetLife()});
    QTimer::singleShot(wait, &context, [this, id] {
        const auto position = waiting.find(id);
        if (position == waiting.end())
            return;
        const Waiting due = std::move(position->second);
        waiting.erase(position);
        Begin(due);
    });
}

void LoadBackoff::Begin(const Waiting& due)
{
    isStale = due.life != GetLife();
    due.start();
    isStale = false;
}

std::chrono::milliseconds LoadBackoff::WaitFor(const QString& key)
{
    const auto position = histories.find(key);
    if (position == histories.end())
        return std::chrono::milliseconds(0);
    History& history = *position;
    const auto age = std::chrono::milliseconds(history.age.elapsed());
    if (history.failures == 0)
        history.hurried = age < first ? history.hurried + 1 : 0;
    const int steps = std::max(history.failures, history.hurried - hurriedForFree);
    if (steps <= 0)
        return std::chrono::milliseconds(0);
    constexpr int stepsAtMost = 20; // keeps the shift in range
    return std::min(first * (1 << std::min(steps - 1, stepsAtMost)), longest) - age;
}

void LoadBackoff::Answered(const QString& key, bool success)
{
    History& history = histories[key];
    history.failures = success ? 0 : history.failures + 1;
    history.age.start();
}

void LoadBackoff::Flush()
{
    while (!waiting.empty()) {
        const Waiting due = std::move(waiting.begin()->second);
        waiting.erase(waiting.begin());
        Begin(due);
    }
}
