// SPDX-License-Identifier: Apache-2.0

#include <RpaEditorLogic/SnapshotRequests.h>

void SnapshotResponse::SetOutcome(bool ok, const QString& error)
{
    success = ok;
    errorDesc = error;
}
