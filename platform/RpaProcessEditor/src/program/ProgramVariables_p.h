// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

// Variables of a program text, as far as can be told without Python.
namespace ProgramVariables
{
// Names that the lines first … last read (last 0: to the end), themselves or by the functions that they name,
// and that lines before them set at the top level; sorted. Lines count from 1.
QStringList FindNeeded(const QString& text, int first, int last);
} // namespace ProgramVariables
