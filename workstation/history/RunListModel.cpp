// SPDX-License-Identifier: Apache-2.0

#include "RunListModel.h"

#include "RunWords.h"

#include <WbBaseUI/WbTheme.h>

#include <algorithm>

RunListModel::RunListModel(DateLanguage language, QObject* parent)
    : QAbstractTableModel(parent), dateLanguage(language)
{
}

void RunListModel::SetRuns(const QVector<RpaRunRecord>& value)
{
    beginResetModel();
    runs = value;
    endResetModel();
}

int RunListModel::RowOf(qint64 id) const
{
    const auto found =
        std::find_if(runs.begin(), runs.end(), [id](const RpaRunRecord& run) { return run.id == id; });
    return found == runs.end() ? -1 : int(found - runs.begin());
}

int RunListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : runs.size();
}

int RunListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant RunListModel::data(const QModelIndex& index, int role) const
{
    const RpaRunRecord run = runs.value(index.row());
    if (role == Qt::ForegroundRole && index.column() == ResultColumn)
        return run.result == RpaRunResult::Failed ? WbTheme::Instance()->Color(WbColor::DangerText)
                                                  : QVariant();
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return QVariant();
    switch (index.column()) {
    case StartColumn:
        return DateText(run.started, dateLanguage);
    case ProcessColumn:
        return run.processName;
    case ResultColumn:
        return RunWords::Result(run.result);
    case DurationColumn:
        return RunWords::Duration(run);
    case VersionColumn:
        return run.versionName;
    default:
        return QVariant();
    }
}

QVariant RunListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    const QStringList titles{QStringLiteral("开始"), QStringLiteral("流程"), QStringLiteral("结果"),
                             QStringLiteral("用时"), QStringLiteral("版本")};
    return titles.value(section);
}
