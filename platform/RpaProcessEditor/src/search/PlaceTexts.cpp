// SPDX-License-Identifier: Apache-2.0

#include "CommandTexts_p.h"
#include "PlaceTexts_p.h"
#include "ToolCalls_p.h"

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaProcessCalls.h>
#include <RpaProcessData/RpaProcessSearch.h>

#include <QHash>

namespace
{
constexpr int excerptBefore = 16;
constexpr int excerptLength = 200;

QString PartOf(const RpaSearchPlace& place)
{
    if (place.kind == RpaSearchPlace::Kind::Note)
        return QStringLiteral("备注");
    const RpaCommandInfo* command = RpaCommandCatalogue::Instance()->Find(place.command);
    if (place.kind == RpaSearchPlace::Kind::Output)
        return command ? command->output.title : QStringLiteral("结果");
    const RpaArgumentInfo* argument = command ? command->FindArgument(place.argument) : nullptr;
    return argument ? argument->title : place.argument;
}

// What the card does not tell: an argument that is not in its summary.
void ShowArguments(const RpaStatementChange& change, ShownPlace& place)
{
    for (auto it = change.after.arguments.begin(); it != change.after.arguments.end(); ++it) {
        const QString before = change.before.arguments.value(it.key());
        if (before == it.value())
            continue;
        place.before = PlaceTexts::Excerpt(before, 0);
        place.after = PlaceTexts::Excerpt(it.value(), 0);
        return;
    }
}

QHash<QString, int> LinesOf(const RpaProcess& process)
{
    QHash<QString, int> lines;
    process.ForEach([&lines](const RpaStatementNode& node) { lines.insert(node.GetId(), lines.size() + 1); });
    return lines;
}
} // namespace

ShownPlace PlaceTexts::Of(const RpaSearchPlace& place)
{
    return {place.processName, place.statementId,
            place.line,        CommandTexts::Title(place.command),
            PartOf(place),     Excerpt(place.text, place.begins.value(0)),
            QString()};
}

QString PlaceTexts::Excerpt(const QString& text, int begin)
{
    const int from = qMax(0, begin - excerptBefore);
    QString shown = text.mid(from, excerptLength);
    shown.replace(QLatin1Char('\n'), QLatin1Char(' '));
    if (from > 0)
        shown.prepend(QChar(0x2026));
    return shown;
}

QVector<ShownPlace> PlaceTexts::OfChanges(const ProcessDataManager& manager,
                                          const QVector<RpaStatementChange>& changes)
{
    QVector<ShownPlace> places;
    QHash<QString, QHash<QString, int>> lines;
    for (const RpaStatementChange& change : changes) {
        const RpaProcess* process = manager.FindProcess(change.processName);
        if (process && !lines.contains(change.processName))
            lines.insert(change.processName, LinesOf(*process));
        ShownPlace place{change.processName,
                         change.before.id,
                         lines.value(change.processName).value(change.before.id),
                         CommandTexts::Title(change.before.command),
                         QString(),
                         CommandTexts::Summary(change.before),
                         CommandTexts::Summary(change.after)};
        if (place.before == place.after)
            ShowArguments(change, place);
        places.append(place);
    }
    return places;
}

QVector<ShownPlace> PlaceTexts::OfProcess(const RpaAppData& app, const QString& name, const QString& newName)
{
    const ProcessDataManager& manager = *app.GetProcessDataManager();
    QVector<ShownPlace> places = OfChanges(manager, RpaProcessCalls::Renamed(manager, name, newName));
    const QVector<ToolCall> tools = ToolCalls::Of(app, name);
    for (const ToolCall& tool : tools)
        places.append({QStringLiteral("界面：") + tool.pageName, QString(), 0, tool.text,
                       QStringLiteral("工具"), QStringLiteral("运行流程 ") + name,
                       QStringLiteral("运行流程 ") + newName});
    return places;
}
