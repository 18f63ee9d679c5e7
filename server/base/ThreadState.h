// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace server
{
// Frees what libraries keep for the calling thread, at the end of its work. By themselves they do so when the
// thread has gone, but its end is told before that, and then the process may end first.
void FreeThreadState();
} // namespace server
