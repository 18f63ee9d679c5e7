// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

// What is known about Python's modules without Python; data/ has the lists.
namespace KnownModules
{
// Whether every Python has it, or every run ("rpa").
bool IsBuiltIn(const QString& module);
// The package that brings a module; empty when that is not known.
QString PackageOf(const QString& module);
// Whether the modules of a package are known.
bool KnowsPackage(const QString& package);
// The form in which two spellings of one package are equal.
QString Normalised(const QString& package);
} // namespace KnownModules
