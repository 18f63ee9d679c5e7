// SPDX-License-Identifier: Apache-2.0

#include "StandardInput.h"

#include <windows.h>

int server::ReadStandardInput(char* target, unsigned size)
{
    // Not by the C library, which would end the input at a Ctrl-Z.
    DWORD count = 0;
    return ReadFile(GetStdHandle(STD_INPUT_HANDLE), target, size, &count, nullptr) ? static_cast<int>(count)
                                                                                   : 0;
}
