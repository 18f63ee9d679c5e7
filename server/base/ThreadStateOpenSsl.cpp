// SPDX-License-Identifier: Apache-2.0

#include "ThreadState.h"

#include <openssl/crypto.h>

void server::FreeThreadState()
{
    OPENSSL_thread_stop(); // PostgreSQL's client draws its random numbers from it
}
