// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "Request.h"

#include <string>

namespace server
{
// Status line and header fields of an answer, up to the empty line.
std::string ResponseHead(const Response& response, bool keepAlive);

// The answer to a request that broke a limit or was no HTTP at all.
Response RefusalFor(int status);
} // namespace server
