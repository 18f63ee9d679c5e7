// SPDX-License-Identifier: Apache-2.0

#include "BodyCache.h"

namespace server
{
QByteArray BodyCache::Find(const QString& versionId, qint64 revision)
{
    const std::lock_guard lock(mutex);
    const QByteArray* body = bodies.object({versionId, revision});
    return body ? *body : QByteArray();
}

void BodyCache::Keep(const QString& versionId, qint64 revision, const QByteArray& body)
{
    if (body.size() > largestBody)
        return;
    const std::lock_guard lock(mutex);
    bodies.insert({versionId, revision}, new QByteArray(body), body.size()); // the cache owns it
}
} // namespace server
