// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QHash>
#include <QQueue>
#include <QString>

#include <functional>

// Requests for one version go out one after another, in the order they were made: a save is based on the
// revision that the save before it made, and a load sees the saves before it.
class VersionQueue
{
public:
    using Start = std::function<void()>;

    // Starts at once when nothing of the version is under way.
    void Enqueue(const QString& versionId, const Start& start);
    // The one under way was answered: starts the next. Belongs to each start.
    void Finish(const QString& versionId);

private:
    QHash<QString, QQueue<Start>> waitingById; // an entry means that one is under way
};
