// SPDX-License-Identifier: Apache-2.0

#include "ReleasedAppModel.h"

#include <WbBaseUI/UIUtils.h>

namespace
{
// Who runs it need not know how its author tells it from others, nor who changed it last.
AppRecord RecordOf(const VersionServiceReleasedApp& released)
{
    AppRecord record = released.app;
    record.changedAt = released.releasedAt;
    record.changedByPin.clear();
    record.changedByName.clear();
    record.state = 0;
    record.tags.clear();
    return record;
}
} // namespace

void ReleasedAppModel::SetReleasedApps(const QVector<VersionServiceReleasedApp>& apps)
{
    QVector<AppRecord> cards;
    for (const VersionServiceReleasedApp& app : apps)
        cards << RecordOf(app);
    released = apps;
    SetApps(cards);
}

QVariant ReleasedAppModel::data(const QModelIndex& index, int role) const
{
    if (index.isValid() && index.row() < released.size()) {
        const VersionServiceReleasedApp& app = released.at(index.row());
        if (role == KindNameRole)
            return AppListModel::data(index, role).toString() + QStringLiteral(" · ") + app.versionName;
        if (role == Qt::ToolTipRole && !app.description.isEmpty()) {
            // Foreign text: never taken for markup.
            return UIUtils::PlainToolTip(app.app.name + QLatin1Char('\n') + app.description);
        }
    }
    return AppListModel::data(index, role);
}
