// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbSystem/WbSystemExport.h>

#include <QProcessEnvironment>

// The environment of this program without what would change how a Python works or what pip installs from
// where: variables of Python, its launcher, its virtual environments, pip, the dynamic linker and this
// program's browser (PYTHON…, PY_PYTHON…, VIRTUAL_ENV…, PIP_…, LD_…, QTWEBENGINE_…; on Windows in any
// case). LC_ALL says UTF-8. Any thread; looks anew each time.
WBSYSTEM_EXPORT QProcessEnvironment CleanEnvironment();
