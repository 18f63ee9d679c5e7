// SPDX-License-Identifier: Apache-2.0

#include "Descriptors.h"

#include <QDir>

#include <algorithm>
#include <sys/resource.h>

namespace server
{
namespace
{
// Every save opens a journal and its folder, every worker has a connection to the database.
constexpr int leastReserve = 16;
constexpr int mostReserve = 64;

int OpenDescriptors()
{
    return QDir(QStringLiteral("/proc/self/fd"))
        .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
        .size();
}
} // namespace

int ConnectionsThatFit(int wanted, int workers)
{
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0)
        return wanted;
    const int taken = OpenDescriptors() + 2 * workers;
    const auto needed = static_cast<rlim_t>(wanted) + static_cast<rlim_t>(taken) + mostReserve;
    if (limit.rlim_cur < needed && limit.rlim_cur < limit.rlim_max) {
        limit.rlim_cur = std::min(needed, limit.rlim_max);
        ::setrlimit(RLIMIT_NOFILE, &limit);
        ::getrlimit(RLIMIT_NOFILE, &limit);
    }
    if (limit.rlim_cur >= needed)
        return wanted;
    const int all = static_cast<int>(limit.rlim_cur);
    return std::max(1, all - taken - std::clamp(all / 4, leastReserve, mostReserve));
}
} // namespace server
