// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaWrittenContent.h>

#include <QByteArray>

namespace RpaWrittenContent
{
void Note(const RpaAppData* app, const QByteArray& json);
} // namespace RpaWrittenContent
