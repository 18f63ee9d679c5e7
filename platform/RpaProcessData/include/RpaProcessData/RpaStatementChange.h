// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaStatement.h>

// One statement as it is and as it would be.
struct RpaStatementChange
{
    QString processName;
    RpaStatement before; // values only, without children
    RpaStatement after;
};
