// SPDX-License-Identifier: Apache-2.0

#include "ProcessorUse.h"

#include <windows.h>

void ProcessorUse::UseOneCore(bool one)
{
    static const DWORD_PTR all = [] {
        DWORD_PTR mine = 0;
        DWORD_PTR system = 0;
        GetProcessAffinityMask(GetCurrentProcess(), &mine, &system);
        return mine;
    }();
    const DWORD_PTR first = all & (~all + 1);
    SetProcessAffinityMask(GetCurrentProcess(), one ? first : all);
}

double ProcessorUse::GetSeconds()
{
    FILETIME created{};
    FILETIME ended{};
    FILETIME kernel{};
    FILETIME user{};
    GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
    const auto seconds = [](const FILETIME& time) {
        return ULARGE_INTEGER{{time.dwLowDateTime, time.dwHighDateTime}}.QuadPart / 1e7;
    };
    return seconds(kernel) + seconds(user);
}
