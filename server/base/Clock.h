#pragma once

#include <QtGlobal>

#include <chrono>

namespace server
{
using Millis = std::chrono::milliseconds;

// UTC milliseconds since 1970, the only form of time that the store and the protocol know.
inline qint64 NowMs()
{
    return std::chrono::duration_cast<Millis>(std::chrono::system_clock::now().time_since_epoch()).count();
}
} // namespace server
