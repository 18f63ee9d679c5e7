// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

class IHttpResponse;
class RpaAppData;
class RpaAppSnapshot;
class RpaSnapshotManager;

// What the two senders of save requests have in common.
namespace SnapshotWriting
{
// The versions of the app that is being edited.
RpaSnapshotManager* SnapshotManager();

// An answer that acts on a version is asked twice, and counts only when it stands by its success.
bool IsConfirmed(const IHttpResponse& response);

// A fresh text by which a requester recognises the answer to this request and to no other.
QString CreateIdentity();

// Puts the app as it is now into the record of an existing version: content, format version and saving user.
void WriteContent(RpaAppSnapshot& snapshot, RpaAppData& appData);
} // namespace SnapshotWriting
