// SPDX-License-Identifier: Apache-2.0

#include "CommandFile_p.h"

#include <RpaProcessData/RpaCommandCatalogue.h>

#include <QDir>
#include <QFile>
#include <QHash>

// Files embedded by a library are registered by its own initialiser, which a static build would drop.
static void InitResources()
{
    Q_INIT_RESOURCE(commands);
}

class RpaCommandCatalogue::Private
{
public:
    void Add(const QVector<RpaCommandInfo>& added)
    {
        for (const RpaCommandInfo& command : added) {
            const auto known = indexes.constFind(command.name);
            if (known != indexes.constEnd()) {
                commands[known.value()] = command;
            } else {
                indexes.insert(command.name, commands.size());
                commands.append(command);
            }
        }
        groups.clear();
        for (const RpaCommandInfo& command : qAsConst(commands))
            if (!groups.contains(command.group))
                groups.append(command.group);
    }

    QVector<RpaCommandInfo> commands;
    QStringList groups; // asked for with every tile that is painted
    QHash<QString, int> indexes;
};

const RpaArgumentInfo* RpaCommandInfo::FindArgument(const QString& argumentName) const
{
    for (const RpaArgumentInfo& argument : arguments)
        if (argument.name == argumentName)
            return &argument;
    return nullptr;
}

RpaCommandCatalogue::RpaCommandCatalogue() : d(std::make_unique<Private>())
{
    InitResources();
    const QStringList problems = AddFolder(QStringLiteral(":/rpa/commands"));
    for (const QString& problem : problems)
        qCritical("%s", qUtf8Printable(problem));
}

RpaCommandCatalogue::~RpaCommandCatalogue() = default;

RpaCommandCatalogue* RpaCommandCatalogue::Instance()
{
    static RpaCommandCatalogue instance;
    return &instance;
}

const QVector<RpaCommandInfo>& RpaCommandCatalogue::GetCommands() const
{
    return d->commands;
}

QStringList RpaCommandCatalogue::GetGroups() const
{
    return d->groups;
}

const RpaCommandInfo* RpaCommandCatalogue::Find(const QString& name) const
{
    const auto index = d->indexes.constFind(name);
    return index == d->indexes.constEnd() ? nullptr : &d->commands.at(index.value());
}

QStringList RpaCommandCatalogue::AddFolder(const QString& folder)
{
    QStringList problems;
    const QDir dir(folder);
    const QStringList names = dir.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name);
    for (const QString& name : names) {
        QFile file(dir.filePath(name));
        if (!file.open(QIODevice::ReadOnly)) {
            problems.append(QStringLiteral("%1：无法读取").arg(name));
            continue;
        }
        const CommandFile commands(file.readAll());
        d->Add(commands.GetCommands());
        for (const QString& problem : commands.GetProblems())
            problems.append(QStringLiteral("%1：%2").arg(name, problem));
    }
    return problems;
}
