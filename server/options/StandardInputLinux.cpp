// SPDX-License-Identifier: Apache-2.0

#include "StandardInput.h"

#include <cerrno>
#include <unistd.h>

int server::ReadStandardInput(char* target, unsigned size)
{
    ssize_t count = 0;
    do {
        count = ::read(STDIN_FILENO, target, size);
    } while (count < 0 && errno == EINTR);
    return static_cast<int>(count);
}
