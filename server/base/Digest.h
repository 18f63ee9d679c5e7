// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>

namespace server
{
constexpr int sha256Bytes = 32;

// SHA-256 as raw bytes. Any thread. One source file per system.
QByteArray Sha256(const QByteArray& data);

// The value of a Content-Digest header for a raw SHA-256: `sha-256=:<base64>:`.
QByteArray ContentDigest(const QByteArray& sha256);

// The raw SHA-256 that a Content-Digest header carries; empty when it carries none.
QByteArray ParseContentDigest(const QByteArray& header);
} // namespace server
