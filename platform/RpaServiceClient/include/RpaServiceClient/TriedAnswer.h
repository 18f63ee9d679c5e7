// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbHttpModule/WbHttpAnswer.h>

// What came of a request, all its tries taken together: the answer is that of the last one.
struct TriedAnswer : WbHttpAnswer
{
    // Whether the server may have done what was asked in a try of which that is not known. sentDigest is set
    // when any try got that far.
    bool mayBeDone = false;
    // The answer of a look-up into what became of it, not of what was asked.
    bool isLookUp = false;
};
