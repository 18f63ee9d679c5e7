// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QProcess>
#include <QProcessEnvironment>

#include <memory>

// How a process and whatever it starts are kept together. One source file per system.
namespace PackageGroup
{

// A process to be started, which ends with this program, however that ends.
std::unique_ptr<QProcess> Make();

// Ends a started process and its descendants at once.
void Kill(QProcess& process);

// What pip and Python need on this system to read no settings and to write UTF-8.
void SetVariables(QProcessEnvironment& environment);

} // namespace PackageGroup
