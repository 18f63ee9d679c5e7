// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "Options.h"

#include <QCommandLineParser>

namespace server
{
// The options that set a limit, each with a number.
QList<QCommandLineOption> LimitOptions();

// Takes them over from a command line; why one was not understood, else empty.
QString ReadLimits(const QCommandLineParser& line, Options& options);
} // namespace server
