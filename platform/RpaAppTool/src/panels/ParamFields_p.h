// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RecordTable_p.h"

#include <RpaAppData/RpaParamData.h>

// What the author edits of a parameter, in its panel's columns.
namespace ParamFields
{
QVector<RecordField<RpaParamItem>> GetAll();
} // namespace ParamFields
