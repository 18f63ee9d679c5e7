// SPDX-License-Identifier: Apache-2.0

#include "VersionQueue_p.h"

void VersionQueue::Enqueue(const QString& versionId, const Start& start)
{
    const auto position = waitingById.find(versionId);
    if (position != waitingById.end()) {
        position->enqueue(start);
        return;
    }
    waitingById.insert(versionId, {});
    start();
}

void VersionQueue::Finish(const QString& versionId)
{
    const auto position = waitingById.find(versionId);
    if (position == waitingById.end())
        return;
    if (position->isEmpty()) {
        waitingById.erase(position);
        return;
    }
    const Start next = position->dequeue();
    next();
}
