// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaCommandCatalogue.h>

// Reads one data file of commands: an array of objects whose members are named like those of RpaCommandInfo.
class CommandFile
{
public:
    explicit CommandFile(const QByteArray& json);

    // Empty when there are problems.
    const QVector<RpaCommandInfo>& GetCommands() const { return commands; }
    // In Chinese, one line each.
    const QStringList& GetProblems() const { return problems; }

private:
    void CheckCommand(const RpaCommandInfo& command);

    QVector<RpaCommandInfo> commands;
    QStringList problems;
};
