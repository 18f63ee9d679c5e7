// SPDX-License-Identifier: Apache-2.0

#include "ProcessorUse.h"

#include <sched.h>
#include <sys/resource.h>

void ProcessorUse::UseOneCore(bool one)
{
    static const cpu_set_t all = [] {
        cpu_set_t cores;
        sched_getaffinity(0, sizeof cores, &cores);
        return cores;
    }();
    cpu_set_t first;
    CPU_ZERO(&first);
    for (int core = 0; core < CPU_SETSIZE && CPU_COUNT(&first) == 0; ++core)
        if (CPU_ISSET(core, &all))
            CPU_SET(core, &first);
    sched_setaffinity(0, sizeof first, one ? &first : &all);
}

double ProcessorUse::GetSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}
