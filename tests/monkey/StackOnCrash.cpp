// SPDX-License-Identifier: Apache-2.0

#include "StackOnCrash.h"

#include <csignal>
#include <execinfo.h>
#include <initializer_list>
#include <unistd.h>

namespace
{
void Write(int signal)
{
    void* frames[64];
    const int count = backtrace(frames, 64);
    backtrace_symbols_fd(frames, count, STDERR_FILENO);
    std::raise(signal); // the handler is taken away by now
}
} // namespace

void StackOnCrash::Install()
{
    // The first call loads a library, which must not happen within a signal.
    void* frame = nullptr;
    backtrace(&frame, 1);
    for (const int signal : {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL}) {
        struct sigaction action = {};
        action.sa_handler = &Write;
        action.sa_flags = int(SA_RESETHAND | SA_NODEFER);
        sigaction(signal, &action, nullptr);
    }
}
