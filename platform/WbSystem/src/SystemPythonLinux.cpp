// SPDX-License-Identifier: Apache-2.0

#include "SystemPython_p.h"

QString SystemPython(const QString&)
{
    // The distribution's own: another build in PATH would miss the packages that the commands need.
    return QStringLiteral("/usr/bin/python3");
}
