// SPDX-License-Identifier: Apache-2.0

#include "VariableUse_p.h"

#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaStatementNames.h>

#include <algorithm>

namespace
{
const RpaCommandInfo* CommandOf(const RpaStatementNode& node)
{
    return RpaCommandCatalogue::Instance()->Find(node.GetCommand());
}

// "import urllib.request" gives "urllib", "from x import y" gives "y", "import a as b" gives "b".
QString ModuleOf(const QString& import)
{
    const QString last = import.section(QLatin1Char(' '), -1);
    const bool plain = import.startsWith(QLatin1String("import ")) && !import.contains(QLatin1String(" as "));
    return plain ? last.section(QLatin1Char('.'), 0, 0) : last;
}

bool IsInside(const RpaStatementNode* node, const RpaStatementNode* block)
{
    while (node && node != block)
        node = node->GetParent();
    return node != nullptr;
}

// In a loop a variable that is set further down has its value when the loop comes round again.
bool ShareALoop(const RpaStatementNode& a, const RpaStatementNode& b)
{
    for (const RpaStatementNode* block = a.GetParent(); block; block = block->GetParent()) {
        const RpaCommandInfo* command = CommandOf(*block);
        if (command && command->blockKind == RpaBlockKind::Loop && IsInside(&b, block))
            return true;
    }
    return false;
}
} // namespace

VariableUse::VariableUse(const QVector<const RpaProcess*>& processes)
{
    for (const RpaProcess* process : processes) {
        int order = 0;
        process->ForEach([&](const RpaStatementNode& node) {
            ++order;
            const bool enabled = node.IsEffectivelyEnabled();
            const QStringList names = RpaStatementNames::GetSet(node);
            for (const QString& name : names)
                if (enabled)
                    setters[name].append({process, &node, order});
                else
                    setByDisabled.insert(name);
            const RpaCommandInfo* command = CommandOf(node);
            if (!command || !enabled)
                return;
            for (const QString& import : command->imports)
                modules.insert(ModuleOf(import));
        });
    }
}

bool VariableUse::IsSetInTime(const QString& name, const RpaProcess& process, const RpaStatementNode& reader,
                              int order) const
{
    const QVector<Setter> all = setters.value(name);
    return std::any_of(all.cbegin(), all.cend(), [&](const Setter& setter) {
        // When another process sets it, the order of the calls decides, which only a run can tell. The block
        // that binds a name (a loop's item) counts for itself only once it has begun.
        return setter.process != &process || setter.order < order || ShareALoop(reader, *setter.node);
    });
}

void VariableUse::FindUndefined(const RpaProcess& process, QList<RpaCheckInfo>& findings) const
{
    int order = 0;
    process.ForEach([&](const RpaStatementNode& node) {
        ++order;
        if (!node.IsEffectivelyEnabled())
            return;
        const QStringList names = RpaStatementNames::GetRead(node);
        for (const QString& name : names) {
            const bool onlyDisabled = !setters.contains(name) && setByDisabled.contains(name);
            if (onlyDisabled || modules.contains(name) || IsSetInTime(name, process, node, order))
                continue;
            const bool later = setters.contains(name);
            findings.append(
                {process.GetName(), node.GetId(), QStringLiteral("undefined-variable"),
                 (later ? QStringLiteral("变量“%1”在使用之前还没有赋值") : QStringLiteral("变量“%1”从未赋值"))
                     .arg(name),
                 QStringLiteral("请检查变量名，或在此步骤之前为它赋值"), 0, name});
        }
    });
}

QStringList VariableUse::FindMissing(const RpaProcess& process) const
{
    QStringList missing;
    int order = 0;
    process.ForEach([&](const RpaStatementNode& node) {
        ++order;
        const QStringList names =
            node.IsEffectivelyEnabled() ? RpaStatementNames::GetRead(node) : QStringList();
        for (const QString& name : names)
            if (!modules.contains(name) && !IsSetInTime(name, process, node, order))
                missing.append(name);
    });
    return missing;
}

void VariableUse::FindDisabled(const RpaProcess& process, QList<RpaCheckInfo>& findings) const
{
    process.ForEach([&](const RpaStatementNode& node) {
        if (!node.IsEffectivelyEnabled())
            return;
        const QStringList names = RpaStatementNames::GetRead(node);
        for (const QString& name : names)
            if (!setters.contains(name) && setByDisabled.contains(name))
                findings.append({process.GetName(), node.GetId(), QStringLiteral("disabled-reference"),
                                 QStringLiteral("引用了变量“%1”，但为它赋值的步骤已被注释").arg(name),
                                 QStringLiteral("请取消注释为它赋值的步骤，或不再使用此变量"), 0, name});
    });
}
