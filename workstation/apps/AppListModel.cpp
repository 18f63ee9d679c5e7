// SPDX-License-Identifier: Apache-2.0

#include "AppListModel.h"

#include <RpaCore/RpaAppSnapshot.h>

#include <algorithm>

namespace
{
QString StateName(int state)
{
    switch (state) {
    case AppSnapshotDevelop:
        return QStringLiteral("开发中");
    case AppSnapshotGray:
        return QStringLiteral("灰度中");
    case AppSnapshotOnline:
        return QStringLiteral("已上线");
    default:
        return {};
    }
}
} // namespace

void AppListModel::SetApps(const QVector<AppRecord>& apps)
{
    beginResetModel();
    records = apps;
    endResetModel();
}

void AppListModel::SetAccount(const QString& pin)
{
    account = pin;
    if (!records.isEmpty())
        emit dataChanged(index(0), index(records.size() - 1), {OwnRole, Qt::AccessibleTextRole});
}

void AppListModel::SetDateLanguage(DateLanguage language)
{
    dateLanguage = language;
    if (!records.isEmpty())
        emit dataChanged(index(0), index(records.size() - 1), {ChangedRole, Qt::AccessibleTextRole});
}

AppRecord AppListModel::AppAt(int row) const
{
    return row >= 0 && row < records.size() ? records.at(row) : AppRecord();
}

int AppListModel::RowOf(const QString& appId) const
{
    const auto found =
        std::find_if(records.begin(), records.end(), [&](const AppRecord& app) { return app.id == appId; });
    return found == records.end() ? -1 : int(found - records.begin());
}

QStringList AppListModel::GetTags() const
{
    QStringList all;
    for (const AppRecord& app : records)
        all << app.tags;
    all.removeDuplicates();
    all.sort();
    return all;
}

int AppListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : records.size();
}

QVariant AppListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const AppRecord& app = records.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return app.name;
    case Qt::AccessibleTextRole:
        return AccessibleText(index);
    case IdRole:
        return app.id;
    case KindRole:
        return app.kind;
    case KindNameRole:
        return app.kind == AppKindVisual ? QStringLiteral("可视化流程") : QStringLiteral("编程流程");
    case CreatorNameRole:
        return app.creatorName.isEmpty() ? app.creatorPin : app.creatorName;
    case OwnRole:
        return app.creatorPin == account;
    case ChangedRole:
        return DateText(app.changedAt, dateLanguage);
    case ChangedByRole:
        return app.changedByName.isEmpty() ? app.changedByPin : app.changedByName;
    case StateRole:
        return app.state;
    case StateNameRole:
        return StateName(app.state);
    case TagsRole:
        return app.tags;
    default:
        return {};
    }
}

QString AppListModel::AccessibleText(const QModelIndex& row) const
{
    QStringList parts{row.data().toString(), row.data(KindNameRole).toString(),
                      row.data(StateNameRole).toString()};
    const QStringList tags = row.data(TagsRole).toStringList();
    if (!tags.isEmpty())
        parts << QStringLiteral("标签") + tags.join(QStringLiteral("、"));
    parts << QStringLiteral("创建者") + row.data(CreatorNameRole).toString()
          << row.data(ChangedByRole).toString() + QStringLiteral("修改于") + row.data(ChangedRole).toString();
    parts.removeAll(QString());
    return parts.join(QStringLiteral("，"));
}
