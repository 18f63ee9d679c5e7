// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

namespace server
{
// A new record id: 32 hex digits that sort by their time of creation, so that rows written together lie
// together.
QString NewId();

// 256 random bits as 64 hex digits.
QByteArray NewToken();

// 10 characters (50 random bits) that people can read to each other: no 0, 1, I, O.
QString NewInvitationCode();

// True for 1 to 64 characters of [A-Za-z0-9_-].
bool IsId(const QString& text);
} // namespace server
