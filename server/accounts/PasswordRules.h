// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

namespace server
{
constexpr int shortestPasswordBytes = 8;
constexpr int longestPasswordBytes = 1024; // what signing in takes

// Why nobody may have this password: too short, too long to sign in with, or one of the 10,000 commonest.
// Empty when it is good.
QString ProblemOfPassword(const QByteArray& password);
} // namespace server
