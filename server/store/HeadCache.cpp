// SPDX-License-Identifier: Apache-2.0

#include "HeadCache.h"

namespace server
{
quint64 HeadCache::Generation() const
{
    const std::lock_guard lock(mutex);
    return current;
}

void HeadCache::Forget(const std::vector<QString>& ids)
{
    const std::lock_guard lock(mutex);
    ++current;
    for (const QString& id : ids) {
        apps.remove(id);
        versions.remove(id);
        lists.remove(id);
    }
}
} // namespace server
