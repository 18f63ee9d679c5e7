// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

// The smallest content that a version server takes for an app, one for each number.
inline QString SmallApp(int number)
{
    return QStringLiteral(R"({"uiData":{"pages":[]},"processData":{"processes":[]},"n":%1})").arg(number);
}
