// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>

class QString;

// How a secret on the disk is kept from others. One source file per system.
namespace SecretSeal
{
// What may be written to the disk; empty when it cannot be sealed.
QByteArray Seal(const QByteArray& plain);

// What was sealed by this user; empty otherwise.
QByteArray Unseal(const QByteArray& sealed);

// Whether a plain file lies there that nobody else could have written or read.
bool IsPrivate(const QString& file);
} // namespace SecretSeal
