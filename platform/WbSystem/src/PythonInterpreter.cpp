// SPDX-License-Identifier: Apache-2.0

#include "SystemPython_p.h"

#include <WbSystem/PythonInterpreter.h>

#include <QCoreApplication>

QString PythonInterpreter::Find()
{
    const QString chosen = qEnvironmentVariable("RPA_PYTHON");
    return chosen.isEmpty() ? SystemPython(QCoreApplication::applicationDirPath()) : chosen;
}
