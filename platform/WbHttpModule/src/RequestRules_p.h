// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbHttpModule/WbHttpRequest.h>

// True when the request may leave this machine: a plain http(s) address, headers without line breaks, and a
// token that no listener on the way can read.
bool MaySend(const WbHttpRequest& request);
