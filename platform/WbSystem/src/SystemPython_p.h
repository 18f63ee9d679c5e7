// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

// The Python to take when none was chosen; programFolder: where the running program lies. One source file per
// system.
QString SystemPython(const QString& programFolder);
