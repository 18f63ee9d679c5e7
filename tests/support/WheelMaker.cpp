// SPDX-License-Identifier: Apache-2.0

#include "WheelMaker.h"

#include <WbSystem/PythonInterpreter.h>

#include <QProcess>

bool WheelMaker::Make(const QString& folder, const QString& name, const QString& version,
                      const QString& program)
{
    const QString writer = QStringLiteral(R"(
import sys, zipfile
folder, name, version, program = sys.argv[1:]
info = f"{name}-{version}.dist-info"
with zipfile.ZipFile(f"{folder}/{name}-{version}-py3-none-any.whl", "w") as wheel:
    wheel.writestr(f"{name}.py", program)
    wheel.writestr(f"{info}/METADATA", f"Metadata-Version: 2.1\nName: {name}\nVersion: {version}\n")
    wheel.writestr(f"{info}/WHEEL", "Wheel-Version: 1.0\nGenerator: t\nRoot-Is-Purelib: true\nTag: py3-none-any\n")
    wheel.writestr(f"{info}/RECORD", f"{name}.py,,\n{info}/METADATA,,\n{info}/WHEEL,,\n{info}/RECORD,,\n")
)");
    return QProcess::execute(PythonInterpreter::Find(), {QStringLiteral("-I"), QStringLiteral("-c"), writer,
                                                         folder, name, version, program}) == 0;
}
