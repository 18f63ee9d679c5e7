// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaContentOrigin.h>

#include <optional>

namespace RpaStartContent
{
struct Content
{
    QByteArray json;
    RpaContentOrigin origin;
};

// What was set, which is not set any more then.
std::optional<Content> Take();
} // namespace RpaStartContent
