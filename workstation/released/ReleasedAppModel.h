// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppListModel.h"

#include <RpaServiceClient/releases/VersionServiceReleasedApp.h>

// Released apps as the cards show them: the version stands beside the kind, the time is that of the release.
class ReleasedAppModel : public AppListModel
{
    Q_OBJECT

public:
    using AppListModel::AppListModel;

    // Replaces the list.
    void SetReleasedApps(const QVector<VersionServiceReleasedApp>& apps);

    // Default-constructed when the row is out of range.
    VersionServiceReleasedApp ReleasedAt(int row) const { return released.value(row); }

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    QVector<VersionServiceReleasedApp> released;
};
