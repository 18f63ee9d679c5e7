// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QtGlobal>

#include <chrono>

namespace server
{
using Millis = std::chrono::milliseconds;

constexpr qint64 dayMs = 24LL * 60 * 60 * 1000;

// UTC milliseconds since 1970, the only form of time that the store and the protocol know.
inline qint64 NowMs()
{
    return std::chrono::duration_cast<Millis>(std::chrono::system_clock::now().time_since_epoch()).count();
}

// The same for what must neither end nor last longer when the clock is put right: the clock as it stood when
// the process first asked, and the time that has passed since.
inline qint64 SteadyNowMs()
{
    using Steady = std::chrono::steady_clock;
    static const qint64 start = NowMs();
    static const Steady::time_point started = Steady::now();
    return start + std::chrono::duration_cast<Millis>(Steady::now() - started).count();
}
} // namespace server
