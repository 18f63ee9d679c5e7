#include "AppListModel.h"

#include <algorithm>

AppListModel::AppListModel(QObject* parent) : QAbstractListModel(parent) {}

void AppListModel::SetApps(const QVector<AppRecord>& apps)
{
    beginResetModel();
    records = apps;
    endResetModel();
}

void AppListModel::SetAccount(const QString& pin)
{
    account = pin;
    if (!records.isEmpty()) {
        emit dataChanged(index(0), index(records.size() - 1), {OwnRole, Qt::AccessibleTextRole});
    }
}

void AppListModel::SetDateLanguage(DateLanguage language)
{
    dateLanguage = language;
    if (!records.isEmpty()) {
        emit dataChanged(index(0), index(records.size() - 1), {ChangedRole, Qt::AccessibleTextRole});
    }
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

int AppListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : records.size();
}

QVariant AppListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
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
        return app.creatorName.isEmpty() ? app.creator : app.creatorName;
    case OwnRole:
        return app.creator == account;
    case ChangedRole:
        return DateText(app.changedAt, dateLanguage);
    default:
        return {};
    }
}

QString AppListModel::AccessibleText(const QModelIndex& row) const
{
    return QStringLiteral("%1，%2，创建者%3，修改于%4")
        .arg(row.data().toString(), row.data(KindNameRole).toString(), row.data(CreatorNameRole).toString(),
             row.data(ChangedRole).toString());
}
