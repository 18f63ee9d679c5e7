// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProblems/RpaAppCopy.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaProcess.h>

#include <functional>

// The copy as the checkers see it: its processes are a model again, on the thread of the check.
class CheckedApp
{
public:
    explicit CheckedApp(const RpaAppCopy& copy);

    const RpaAppCopy& Get() const { return app; }
    const ProcessDataManager& Processes() const { return processes; }

    using Visit = std::function<void(const RpaProcess&, const RpaStatementNode&, const RpaCommandInfo&)>;
    // Every statement of a known command that a run could come to.
    void ForEachEnabled(const Visit& visit) const;

    // Names of the processes that the enabled statements of a process run, each once.
    QStringList CalledBy(const RpaProcess& process) const;

    // The text of an argument, its default included.
    static QString TextOf(const RpaStatementNode& node, const RpaArgumentInfo& argument);

private:
    const RpaAppCopy& app;
    ProcessDataManager processes;
};
