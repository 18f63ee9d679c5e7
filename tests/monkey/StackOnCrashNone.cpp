// SPDX-License-Identifier: Apache-2.0

#include "StackOnCrash.h"

void StackOnCrash::Install() {}
