// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaProcessDataExport.h>
#include <RpaProcessData/RpaStatement.h>

#include <memory>
#include <vector>

// One statement in the tree of a process, read-only for everybody but the process that owns it. A pointer is
// valid until the process announces the removal of the node; ids outlive it.
class RPAPROCESSDATA_EXPORT RpaStatementNode
{
public:
    ~RpaStatementNode();
    RpaStatementNode(const RpaStatementNode&) = delete;
    RpaStatementNode& operator=(const RpaStatementNode&) = delete;

    // Its own values; children of the returned record are empty. The root has an empty record.
    const RpaStatement& GetValues() const { return values; }
    // Shorter ways to values that are asked for often; empty for the root.
    QString GetId() const { return values.id; }
    QString GetCommand() const { return values.command; }
    // Empty when the argument was never set.
    QString GetArgument(const QString& name) const { return values.arguments.value(name); }

    // Null for the root only; top-level statements have the root as parent.
    const RpaStatementNode* GetParent() const { return parent; }
    // Whether it is the process itself, which holds the top-level statements.
    bool IsRoot() const { return !parent; }
    // Enabled itself and every block around it.
    bool IsEffectivelyEnabled() const;

    // Position below its parent, from 0; constant time on average. 0 for the root.
    int GetRow() const;
    int GetChildCount() const { return static_cast<int>(children.size()); }
    // Null outside 0 … GetChildCount() - 1.
    const RpaStatementNode* GetChild(int row) const;

    // A copy with everything below it, ids included.
    RpaStatement ToStatement() const;

private:
    friend class RpaProcess;
    friend class RpaStatementTree;
    RpaStatementNode() = default;

    RpaStatement values;
    RpaStatementNode* parent = nullptr;
    std::vector<std::unique_ptr<RpaStatementNode>> children;
    mutable int rowHint = 0;
};
