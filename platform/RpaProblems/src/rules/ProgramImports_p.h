// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVector>

// One module that a program imports: its first name, such as "urllib" of "urllib.request".
struct ProgramImport
{
    QString module;
    int line = 0; // from 1
};

// The imports of a Python text, wherever they stand, in its order; not those of its own modules ("from .x"). A
// text that is no Python gives what looks like imports.
namespace ProgramImports
{
QVector<ProgramImport> Read(const QString& program);
} // namespace ProgramImports
