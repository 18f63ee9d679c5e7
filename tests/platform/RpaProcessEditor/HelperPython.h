// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TestFolder.h"

#include <QFile>
#include <QString>

// Pythons that the workstation finds instead of the system's, as long as one of them lives: shell scripts.
class HelperPython
{
public:
    // What the script does with its arguments ("$@").
    explicit HelperPython(const QByteArray& script) : path(folder.filePath(QStringLiteral("python")))
    {
        QFile file(path);
        if (file.open(QIODevice::WriteOnly))
            file.write("#!/bin/sh\n" + script + '\n');
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        file.close();
        qputenv("RPA_PYTHON", path.toUtf8());
    }
    ~HelperPython() { qunsetenv("RPA_PYTHON"); }

    // The system's, where each start leaves a line with its process in a file.
    static QByteArray Counted(const QString& file)
    {
        return "echo $$ >> '" + file.toUtf8() + "'\nexec /usr/bin/python3 \"$@\"";
    }
    // The system's without what its packages give.
    static QByteArray WithoutPackages() { return "exec /usr/bin/python3 -S \"$@\""; }

private:
    TestFolder folder;
    const QString path;
};
