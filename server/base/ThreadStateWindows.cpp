// SPDX-License-Identifier: Apache-2.0

#include "ThreadState.h"

void server::FreeThreadState() {} // no library here keeps anything for a thread
