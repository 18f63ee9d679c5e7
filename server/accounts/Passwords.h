// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>

namespace server
{
// Argon2id, 64 MiB, three passes: about 0.2 s of one processor each. The caller bounds how many run at once.
QByteArray HashPassword(const QByteArray& password);

// False for a wrong password and for an account without one, after the same time.
bool VerifyPassword(const QByteArray& hash, const QByteArray& password);
} // namespace server
