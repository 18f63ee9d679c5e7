// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbSystem/WbSystemExport.h>

#include <QString>

// The Python that processes and package installations run in.
namespace PythonInterpreter
{
// Absolute path or, on Windows, whatever starts it. The environment variable RPA_PYTHON goes first. Otherwise
// on Linux the system's own Python; on Windows "python\python.exe" beside the program, then the launcher
// ("py.exe"), then "python.exe" of the search path. Empty when Windows has none of them. Any thread; looks
// anew each time.
WBSYSTEM_EXPORT QString Find();
} // namespace PythonInterpreter
