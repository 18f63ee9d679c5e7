// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/IRpaLogManager.h>

// What people call the level: "调试", "信息", "警告" or "错误". Any thread.
RPAENGINECORE_EXPORT QString RpaLogLevelTitle(RpaLogLevel level);
