// SPDX-License-Identifier: Apache-2.0

#include "NativeProcess.h"

#include <windows.h>
#include <memory>

namespace NativeProcess
{
namespace
{
struct CloseHandleOf
{
    void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, CloseHandleOf>;

Handle Open(qint64 id, DWORD rights)
{
    return Handle(::OpenProcess(rights, FALSE, static_cast<DWORD>(id)));
}
} // namespace

void Kill(qint64 id)
{
    if (const Handle process = Open(id, PROCESS_TERMINATE))
        ::TerminateProcess(process.get(), 1);
}

bool IsAlive(qint64 id)
{
    // An ended process can still be opened while somebody holds a handle of it.
    const Handle process = Open(id, SYNCHRONIZE);
    return process && ::WaitForSingleObject(process.get(), 0) == WAIT_TIMEOUT;
}
} // namespace NativeProcess
