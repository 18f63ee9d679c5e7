#include "LoginLimit.h"

namespace server
{
namespace
{
constexpr std::size_t triesPerWindow = 5;
constexpr qint64 windowMs = 60 * 1000;
constexpr int manyAccounts = 10000;
} // namespace

int LoginLimit::SecondsToWait(const QString& account, qint64 now)
{
    const std::lock_guard lock(mutex);
    if (tries.size() > manyAccounts)
        ForgetOld(now);
    auto& mine = tries[account];
    while (!mine.empty() && mine.front() <= now - windowMs)
        mine.pop_front();
    if (mine.size() >= triesPerWindow)
        return static_cast<int>((mine.front() + windowMs - now + 999) / 1000);
    mine.push_back(now);
    return 0;
}

void LoginLimit::ForgetOld(qint64 now)
{
    for (auto it = tries.begin(); it != tries.end();) {
        if (it->empty() || it->back() <= now - windowMs)
            it = tries.erase(it);
        else
            ++it;
    }
}
} // namespace server
