// SPDX-License-Identifier: Apache-2.0

// Loaded into a server under test before the C library: shifts the clock that people set by the milliseconds
// that stand in the file RPA_CLOCK_SHIFT names, and leaves the clock that only measures alone.
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{
long long ShiftMs()
{
    const char* file = std::getenv("RPA_CLOCK_SHIFT");
    const int descriptor = file ? ::open(file, O_RDONLY | O_CLOEXEC) : -1;
    if (descriptor < 0)
        return 0;
    char text[32] = {};
    const ssize_t size = ::read(descriptor, text, sizeof text - 1);
    ::close(descriptor);
    return size > 0 ? std::atoll(text) : 0;
}
} // namespace

extern "C" __attribute__((visibility("default"))) int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    const long result = ::syscall(SYS_clock_gettime, clock, time);
    if (result == 0 && clock == CLOCK_REALTIME)
        time->tv_sec += ShiftMs() / 1000;
    return static_cast<int>(result);
}
