// SPDX-License-Identifier: Apache-2.0

#include <RpaProcessData/RpaStatementNode.h>

RpaStatementNode::~RpaStatementNode() = default;

bool RpaStatementNode::IsEffectivelyEnabled() const
{
    for (const RpaStatementNode* node = this; node; node = node->parent)
        if (!node->values.enabled)
            return false;
    return true;
}

int RpaStatementNode::GetRow() const
{
    if (!parent)
        return 0;
    const auto& siblings = parent->children;
    const auto count = static_cast<int>(siblings.size());
    // Rows shift when siblings come and go. The first question after that renumbers all of them at once, so
    // that a view that asks for every row does not search for each.
    if (rowHint >= count || siblings[static_cast<size_t>(rowHint)].get() != this)
        for (int row = 0; row < count; ++row)
            siblings[static_cast<size_t>(row)]->rowHint = row;
    return rowHint;
}

const RpaStatementNode* RpaStatementNode::GetChild(int row) const
{
    return row >= 0 && row < GetChildCount() ? children[static_cast<size_t>(row)].get() : nullptr;
}

RpaStatement RpaStatementNode::ToStatement() const
{
    RpaStatement statement = values;
    statement.children.reserve(GetChildCount());
    for (const auto& child : children)
        statement.children.append(child->ToStatement());
    return statement;
}
