// SPDX-License-Identifier: Apache-2.0

#pragma once

// Notification ids of the version requests (HttpNotifyManager).
enum RpaNotifyId : int
{
    NotifySaveAppSnapshotInfo = 10019,
    NotifyUpdateAppSnapshotInfo = 10020,
    NotifyDeleteAppSnapshotInfo = 10021,
    NotifyGetSnapshotList = 10022,
    NotifyGetDevSnapshotData = 10023,
    NotifyGrayOrRelease = 10025,
};
