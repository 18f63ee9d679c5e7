// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RpaRun_p.h"

#include <QVariantMap>

// What a child tells of its run, as values. Nothing of it is believed: what is of another type, too long or too
// much is left out or cut.
namespace RunFrames
{
// 0 for what is no number, or a negative one.
qint64 Number(const QVariant& value);
RpaRunSpans ReadSpans(const QVariantMap& frame, const RpaProgram& program);
RpaRunFailure ReadFailure(const QVariantMap& frame, const RpaProgram& program);
} // namespace RunFrames
