// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "VariableUse_p.h"

#include <RpaProcessData/RpaCheckInfo.h>
#include <RpaProcessData/RpaCommandCatalogue.h>

#include <QSet>
#include <QStringList>

class ProcessDataManager;
class RpaProcess;
class RpaStatementNode;

// The rules that look at one statement and its neighbours.
class StatementCheck
{
public:
    StatementCheck(const RpaProcess& process, const ProcessDataManager& processes,
                   QList<RpaCheckInfo>& findings);

    void SetElementIds(const QStringList& ids);
    void Run();

private:
    void CheckChildren(const RpaStatementNode& parent, bool inLoop);
    void CheckStatement(const RpaStatementNode& node, const RpaStatementNode* before,
                        const RpaStatementNode* behind, bool inLoop);
    void CheckPlace(const RpaStatementNode& node, const RpaCommandInfo& command,
                    const RpaStatementNode* before, const RpaStatementNode* behind, bool inLoop);
    void CheckArgument(const RpaStatementNode& node, const RpaCommandInfo& command,
                       const RpaArgumentInfo& argument);
    void CheckOutput(const RpaStatementNode& node, const RpaCommandInfo& command);
    void Report(const RpaStatementNode& node, const char* rule, const QString& message, const QString& remedy,
                const QString& subject = QString());

    const RpaProcess& process;
    const ProcessDataManager& processes;
    QList<RpaCheckInfo>& findings;
    QSet<QString> elementIds;
    bool elementsKnown = false;
};
