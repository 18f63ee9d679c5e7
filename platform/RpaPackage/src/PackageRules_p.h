// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaPackage/PackageService.h>

// What may be handed to pip. Pure functions.
namespace PackageRules
{

constexpr int maxPackages = 200;

// The form in which two spellings of one name are equal.
QString Normalised(const QString& name);

// The requirement as pip reads it, such as "openpyxl==3.1.2". The state must have passed both checks.
QString Requirement(const PackageState& state);

// The packages of a list; those whose names or versions cannot be are Failed with the reason. False, with a
// problem for the user, when the text is no list.
bool ReadList(const QString& json, QVector<PackageState>* states, QString* problem);

} // namespace PackageRules
