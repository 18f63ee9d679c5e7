// SPDX-License-Identifier: Apache-2.0

#include "PackageRules_p.h"
#include "PackageTable_p.h"

#include <RpaProcessData/RpaPackageInfo.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbTheme.h>

namespace
{

struct StatusLook
{
    const char* text;
    const char* icon;
    WbColor color;
};

const StatusLook& LookOf(PackageState::Status status)
{
    static const StatusLook looks[] = {
        {"未检查", "clock", WbColor::TextSecondary},
        {"已安装", "success", WbColor::SuccessText},
        {"未安装", "download", WbColor::WarningText},
        {"安装失败", "error", WbColor::DangerText},
    };
    return looks[status];
}

QString StatusText(const PackageState& state)
{
    QString text = QString::fromUtf8(LookOf(state.status).text);
    if (state.installedVersion.isEmpty())
        return text;
    return state.status == PackageState::Installed
               ? text + QLatin1Char(' ') + state.installedVersion
               : QStringLiteral("%1（现有 %2）").arg(text, state.installedVersion);
}
} // namespace

void PackageTable::SetStates(const QVector<PackageState>& states)
{
    beginResetModel();
    rows = states;
    endResetModel();
}

void PackageTable::TakeStatus(const QVector<PackageState>& states)
{
    for (const PackageState& state : states) {
        const int row = FindRow(state.name);
        if (row < 0 || rows.at(row).version != state.version)
            continue;
        rows[row].status = state.status;
        rows[row].installedVersion = state.installedVersion;
        rows[row].problem = state.problem;
        emit dataChanged(index(row, 0), index(row, State));
    }
}

QString PackageTable::GetList() const
{
    QList<QSharedPointer<PackageItem>> items;
    for (const PackageState& state : rows)
        items << QSharedPointer<PackageItem>::create(PackageItem{state.name, state.version});
    RpaPackageInfo info(nullptr);
    info.SetListPackageItemPtr(items);
    return QString::fromUtf8(info.ToJson());
}

int PackageTable::Add(const QString& name, const QString& version, QString* problem)
{
    *problem = PackageService::NameProblem(name);
    if (problem->isEmpty())
        *problem = PackageService::VersionProblem(version);
    int row = FindRow(name);
    if (problem->isEmpty() && row < 0 && rows.size() >= PackageRules::maxPackages)
        *problem = QStringLiteral("扩展包不能超过 %1 个").arg(PackageRules::maxPackages);
    if (!problem->isEmpty())
        return -1;
    if (row >= 0) {
        setData(index(row, Version), version, Qt::EditRole);
        return row;
    }
    row = rows.size();
    beginInsertRows(QModelIndex(), row, row);
    PackageState state;
    state.name = name;
    state.version = version;
    rows << state;
    endInsertRows();
    emit SigEdited();
    return row;
}

void PackageTable::Remove(int row)
{
    if (row < 0 || row >= rows.size())
        return;
    beginRemoveRows(QModelIndex(), row, row);
    rows.removeAt(row);
    endRemoveRows();
    emit SigEdited();
}

int PackageTable::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : rows.size();
}

int PackageTable::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant PackageTable::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const PackageState& state = rows.at(index.row());
    const bool isStatus = index.column() == State;
    if (role == Qt::EditRole)
        return index.column() == Name ? state.name : state.version;
    if (role == Qt::DisplayRole) {
        if (isStatus)
            return StatusText(state);
        if (index.column() == Name)
            return state.name;
        return state.version.isEmpty() ? QStringLiteral("任意版本") : state.version;
    }
    if (role == Qt::ToolTipRole && !state.problem.isEmpty())
        return state.problem;
    if (role == Qt::DecorationRole && isStatus)
        return WbIcons::Get(QLatin1String(LookOf(state.status).icon), LookOf(state.status).color);
    if (role == Qt::ForegroundRole && isStatus)
        return WbTheme::Instance()->Color(LookOf(state.status).color);
    if (role == Qt::ForegroundRole && index.column() == Version && state.version.isEmpty())
        return WbTheme::Instance()->Color(WbColor::TextSecondary);
    return {};
}

QVariant PackageTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const QString titles[ColumnCount] = {QStringLiteral("名称"), QStringLiteral("版本"),
                                         QStringLiteral("状态")};
    return titles[section];
}

Qt::ItemFlags PackageTable::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags common = QAbstractTableModel::flags(index);
    return index.isValid() && index.column() != State ? common | Qt::ItemIsEditable : common;
}

bool PackageTable::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !index.isValid() || index.column() == State)
        return false;
    const QString text = value.toString().trimmed();
    const bool isName = index.column() == Name;
    QString& kept = isName ? rows[index.row()].name : rows[index.row()].version;
    if (text == kept)
        return true;
    QString problem = isName ? PackageService::NameProblem(text) : PackageService::VersionProblem(text);
    const int same = isName ? FindRow(text) : -1;
    if (problem.isEmpty() && same >= 0 && same != index.row())
        problem = QStringLiteral("列表中已有扩展包“%1”").arg(text);
    if (!problem.isEmpty()) {
        emit SigRefused(problem);
        return false;
    }
    kept = text;
    Touch(index.row());
    return true;
}

int PackageTable::FindRow(const QString& name) const
{
    const QString wanted = PackageRules::Normalised(name);
    for (int row = 0; row < rows.size(); ++row)
        if (PackageRules::Normalised(rows.at(row).name) == wanted)
            return row;
    return -1;
}

void PackageTable::Touch(int row)
{
    rows[row].status = PackageState::Unknown;
    rows[row].installedVersion.clear();
    rows[row].problem.clear();
    emit dataChanged(index(row, 0), index(row, State));
    emit SigEdited();
}
