// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

class RpaAppData;
class RpaAppSnapshot;

// What the two senders of save requests have in common.
namespace SnapshotWriting
{
// A fresh text by which a requester recognises the answer to this request and to no other.
QString CreateIdentity();

// Puts the app as it is now into the record of an existing version: content, format version and saving user.
void WriteContent(RpaAppSnapshot& snapshot, RpaAppData& appData);
} // namespace SnapshotWriting
