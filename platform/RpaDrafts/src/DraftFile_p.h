// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaDrafts/RpaDraft.h>
#include <WbFoundation/ContentLimits.h>

#include <QByteArray>
#include <QString>

// A draft as a file:
//
//     8 bytes   "RPADRAFT"
//     4 bytes   format version, big-endian
//     4 bytes   length of the header, big-endian
//     header    JSON: account, app, version, base revision, time, length and SHA-256 of the content, and the
//               SHA-256 of saves in doubt
//     32 bytes  SHA-256 of everything before
//     content   JSON of the app data
//
// Nothing that is read is believed before both digests fit. Any thread.
namespace DraftFile
{
constexpr int largestContent = ContentLimits::totalBytes; // as much as a version may hold
constexpr int largestHeader = 4096;
constexpr int mostInDoubt = 16;
constexpr int largestFile = largestContent + largestHeader + 64;

// Fills in the draft's digest.
QByteArray Encode(RpaDraft* draft);

// False, with the reason in the user's words, when the bytes are no whole draft of this format. The draft's
// name stays as it is.
bool Decode(const QByteArray& file, RpaDraft* draft, QString* problem);

// One save more, unless it is there.
void NoteUnsettled(RpaDraft* draft, const QByteArray& sha256);

QByteArray Sha256Of(const QByteArray& bytes); // lower-case hex

// Tells the reason; false.
bool Refuse(QString* problem, const QString& reason);
} // namespace DraftFile
