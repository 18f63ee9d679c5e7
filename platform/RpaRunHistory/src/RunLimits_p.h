// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QtGlobal>

// What is kept at most.
struct RunLimits
{
    int runsOfAnApp = 200;
    int linesOfARun = 10000;
    qint64 bytes = 256 * 1024 * 1024;
    int spansOfABlock = 1000;
    int blocksOfARun = 100;
};
