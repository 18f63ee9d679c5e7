// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../transport/BeastTypes.h"
#include "HttpServer.h"

#include <algorithm>

namespace server
{
// How long a body may take in either direction: as its size gives it, and no longer than the limit for a
// stall from one part to the next.
class Pace
{
public:
    Pace(Stream& theStream, const HttpLimits& theLimits) : stream(theStream), limits(theLimits) {}

    void Start(std::int64_t bytes)
    {
        latest = Clock::now() + limits.body + std::chrono::seconds(bytes / limits.slowestBytesPerSecond);
    }

    // Before each part.
    void Next() { stream.expires_at(std::min(latest, Clock::now() + limits.stall)); }

private:
    using Clock = std::chrono::steady_clock;

    Stream& stream;
    const HttpLimits& limits;
    Clock::time_point latest;
};
} // namespace server
