// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaCheckInfo.h>

#include <QHash>
#include <QSet>
#include <QStringList>
#include <QVector>

class RpaProcess;
class RpaStatementNode;

// Which statements set and read which variables. Variables are shared by all processes of a run.
class VariableUse
{
public:
    explicit VariableUse(const QVector<const RpaProcess*>& processes);

    // Reads of a variable that nothing sets, or that is set only later.
    void FindUndefined(const RpaProcess& process, QList<RpaCheckInfo>& findings) const;
    // Reads of a variable that only disabled statements set.
    void FindDisabled(const RpaProcess& process, QList<RpaCheckInfo>& findings) const;

    // Names that an enabled statement reads before one of the same process, or any other process, sets them.
    QStringList FindMissing(const RpaProcess& process) const;
    bool IsSet(const QString& name) const { return setters.contains(name); }

private:
    struct Setter
    {
        const RpaProcess* process;
        const RpaStatementNode* node;
        int order; // among the statements of the process as shown
    };

    bool IsSetInTime(const QString& name, const RpaProcess& process, const RpaStatementNode& reader,
                     int order) const;

    QHash<QString, QVector<Setter>> setters;
    QSet<QString> setByDisabled;
    QSet<QString> modules;
};
