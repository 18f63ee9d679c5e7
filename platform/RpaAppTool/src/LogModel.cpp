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

bool LogModel::Passes(const RpaLogLine& line) const
{
    return line.level >= lowest && (text.isEmpty() || line.text.contains(text, Qt::CaseInsensitive));
}

void LogModel::Reload()
{
    beginResetModel();
    lines.clear();
    const QVector<RpaLogLine> all = source ? source->GetLines() : QVector<RpaLogLine>();
    for (const RpaLogLine& line : all) {
        if (Passes(line))
            lines << line;
    }
    endResetModel();
}

void LogModel::Add(const QVector<RpaLogLine>& added)
{
    QVector<RpaLogLine> passing;
    for (const RpaLogLine& line : added) {
        if (Passes(line))
            passing << line;
    }
    if (passing.size() > LinesAtMost)
        passing = passing.mid(passing.size() - LinesAtMost);
    const int excess = lines.size() + passing.size() - LinesAtMost;
    if (excess > 0) {
        const int dropped = qMin(lines.size(), qMax(excess, LinesPerDrop));
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
    return parent.isValid() ? 0 : 3;
}

QVariant LogModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const RpaLogLine& line = lines.at(index.row());
    if (role == Qt::DisplayRole) {
        if (index.column() == TimeColumn)
            return line.time.toString(QStringLiteral("HH:mm:ss.zzz"));
        return index.column() == LevelColumn ? RpaLogLevelTitle(line.level)
                                             : line.text.section(QLatin1Char('\n'), 0, 0);
    }
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
    const QString titles[] = {QStringLiteral("时间"), QStringLiteral("级别"), QStringLiteral("内容")};
    return titles[section];
}
