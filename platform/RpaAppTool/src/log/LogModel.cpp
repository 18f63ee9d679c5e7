// SPDX-License-Identifier: Apache-2.0

#include "LogModel_p.h"

#include <RpaEngineCore/RpaLogLevelTitle.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbTheme.h>

void LogModel::SetSource(IRpaLogDataSource* given)
{
    if (source)
        source->disconnect(this);
    source = given;
    if (source) {
        connect(source, &IRpaLogDataSource::SigInitialized, this, &LogModel::Reload);
        connect(source, &IRpaLogDataSource::SigLinesAdded, this, &LogModel::Add);
    }
    Reload();
}

void LogModel::SetFilter(RpaLogLevel lowestLevel, const QString& wanted)
{
    lowest = lowestLevel;
    text = wanted;
    Reload();
}

void LogModel::SetShowsWholeTexts(bool whole)
{
    showsWhole = whole;
    if (!lines.isEmpty())
        emit dataChanged(index(0, 0), index(lines.size() - 1, ColumnCount - 1));
}

bool LogModel::Passes(const RpaLogLine& line) const
{
    return line.level >= lowest && (text.isEmpty() || line.text.contains(text, Qt::CaseInsensitive));
}

void LogModel::Reload()
{
    beginResetModel();
    lines.clear();
    const QVector<RpaLogLine> all = source ? source->GetLines() : QVector<RpaLogLine>();
    newest = all.isEmpty() ? 0 : all.last().number;
    for (const RpaLogLine& line : all)
        if (Passes(line))
            lines << line;
    endResetModel();
}

void LogModel::Add(const QVector<RpaLogLine>& added)
{
    QVector<RpaLogLine> passing;
    for (const RpaLogLine& line : added)
        if (line.number > newest && Passes(line))
            passing << line;
    newest = added.isEmpty() ? newest : qMax(newest, added.last().number);
    if (passing.size() > linesAtMost)
        passing = passing.mid(passing.size() - linesAtMost);
    const int excess = lines.size() + passing.size() - linesAtMost;
    if (excess > 0) {
        const int dropped = qMin(lines.size(), qMax(excess, linesPerDrop));
        beginRemoveRows({}, 0, dropped - 1);
        lines.remove(0, dropped);
        endRemoveRows();
    }
    if (passing.isEmpty())
        return;
    beginInsertRows({}, lines.size(), lines.size() + passing.size() - 1);
    lines += passing;
    endInsertRows();
}

int LogModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : lines.size();
}

int LogModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString LogModel::Shown(const RpaLogLine& line, int column) const
{
    switch (column) {
    case LineColumn:
        return line.line > 0 ? QString::number(line.line) : QString();
    case TimeColumn:
        return line.time.toString(QStringLiteral("HH:mm:ss.zzz"));
    case LevelColumn:
        return RpaLogLevelTitle(line.level);
    default:
        return showsWhole ? line.text : line.text.section(QLatin1Char('\n'), 0, 0);
    }
}

QVariant LogModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const RpaLogLine& line = lines.at(index.row());
    if (role == Qt::DisplayRole)
        return Shown(line, index.column());
    if (role == Qt::TextAlignmentRole)
        return int((index.column() == LineColumn ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    if ((role == Qt::ToolTipRole || role == Qt::AccessibleTextRole) && index.column() == LineColumn)
        return line.line > 0 ? QStringLiteral("第 %1 行").arg(line.line) : QString();
    if (role == Qt::ToolTipRole && index.column() == TextColumn)
        return line.text.left(2000);
    if (role == Qt::ForegroundRole && line.level != RpaLogLevel::Info) {
        const WbColor color = line.level == RpaLogLevel::Error     ? WbColor::DangerText
                              : line.level == RpaLogLevel::Warning ? WbColor::WarningText
                                                                   : WbColor::TextSecondary;
        return WbTheme::Instance()->Color(color);
    }
    return {};
}

QVariant LogModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return {};
    const QString titles[] = {QStringLiteral("行"), QStringLiteral("时间"), QStringLiteral("级别"),
                              QStringLiteral("内容")};
    return titles[section];
}
