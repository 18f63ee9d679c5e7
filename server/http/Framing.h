// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ByteArrayBody.h"
#include "HttpServer.h"

namespace server
{
// The status to refuse a request with that two readers could understand differently, or that is meant for
// another host; 0 when there is nothing against it. Asked once its head is read.
int FaultOf(const http::request<ByteArrayBody>& message, const HttpLimits& limits);

// What the routes see of it.
RequestHead HeadOf(const http::request<ByteArrayBody>& message);
} // namespace server
