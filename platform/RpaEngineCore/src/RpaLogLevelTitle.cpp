// SPDX-License-Identifier: Apache-2.0

#include <RpaEngineCore/RpaLogLevelTitle.h>

QString RpaLogLevelTitle(RpaLogLevel level)
{
    switch (level) {
    case RpaLogLevel::Debug:
        return QStringLiteral("调试");
    case RpaLogLevel::Warning:
        return QStringLiteral("警告");
    case RpaLogLevel::Error:
        return QStringLiteral("错误");
    case RpaLogLevel::Info:
        break;
    }
    return QStringLiteral("信息");
}
