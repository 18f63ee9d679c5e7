// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaContentReference.h>

namespace RpaContentReference
{
// What the text refers to; the text itself when it is no reference of this process.
QByteArray Resolve(const QByteArray& json);
} // namespace RpaContentReference
