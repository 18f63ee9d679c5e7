// SPDX-License-Identifier: Apache-2.0

#include "RpaStatementTree_p.h"
#include "StatementJson_p.h"

#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

#include <QUuid>

#include <iterator>

RpaStatementTree::RpaStatementTree() : root(new RpaStatementNode) {}

std::vector<RpaStatementTree::NodePtr>
RpaStatementTree::MakeNodes(const QVector<RpaStatement>& statements) const
{
    QHash<QString, RpaStatementNode*> fresh;
    std::vector<NodePtr> made;
    made.reserve(static_cast<size_t>(statements.size()));
    for (const RpaStatement& statement : statements)
        made.push_back(MakeNode(statement, fresh));
    return made;
}

RpaStatementTree::NodePtr RpaStatementTree::MakeNode(const RpaStatement& statement,
                                                     QHash<QString, RpaStatementNode*>& fresh) const
{
    NodePtr node(new RpaStatementNode);
    node->values = statement;
    node->values.children.clear();
    QString& id = node->values.id;
    if (id.isEmpty() || nodes.contains(id) || fresh.contains(id))
        id = QUuid::createUuid().toString(QUuid::Id128);
    fresh.insert(id, node.get());

    node->children.reserve(static_cast<size_t>(statement.children.size()));
    for (const RpaStatement& child : statement.children) {
        node->children.push_back(MakeNode(child, fresh));
        node->children.back()->parent = node.get();
        node->children.back()->rowHint = node->GetChildCount() - 1;
    }
    return node;
}

void RpaStatementTree::Insert(RpaStatementNode& parent, int row, std::vector<NodePtr> newNodes)
{
    int hint = row;
    for (const NodePtr& node : newNodes) {
        node->parent = &parent;
        node->rowHint = hint++;
        Index(*node);
    }
    parent.children.insert(parent.children.begin() + row, std::make_move_iterator(newNodes.begin()),
                           std::make_move_iterator(newNodes.end()));
}

void RpaStatementTree::Index(RpaStatementNode& node)
{
    nodes.insert(node.values.id, &node);
    for (const NodePtr& child : node.children)
        Index(*child);
}

RpaStatementTree::NodePtr RpaStatementTree::Remove(RpaStatementNode& node)
{
    auto& siblings = node.parent->children;
    const auto place = siblings.begin() + node.GetRow();
    NodePtr removed = std::move(*place);
    siblings.erase(place);
    ForEach(*removed, [this](const RpaStatementNode& gone) { nodes.remove(gone.values.id); });
    return removed;
}

void RpaStatementTree::Move(RpaStatementNode& node, RpaStatementNode& newParent, int row)
{
    auto& siblings = node.parent->children;
    const int oldRow = node.GetRow();
    if (node.parent == &newParent && row > oldRow)
        --row;
    NodePtr moved = std::move(siblings[static_cast<size_t>(oldRow)]);
    siblings.erase(siblings.begin() + oldRow);
    moved->parent = &newParent;
    moved->rowHint = row;
    newParent.children.insert(newParent.children.begin() + row, std::move(moved));
}

void RpaStatementTree::Clear()
{
    root->children.clear();
    nodes.clear();
}

void RpaStatementTree::Adopt(std::vector<NodePtr> newNodes)
{
    Clear();
    root->children = std::move(newNodes);
    Settle(*root);
}

// Parents, rows and ids of everything below.
void RpaStatementTree::Settle(RpaStatementNode& parent)
{
    int row = 0;
    for (const NodePtr& child : parent.children) {
        child->parent = &parent;
        child->rowHint = row++;
        QString& id = child->values.id;
        if (id.isEmpty() || nodes.contains(id))
            id = QUuid::createUuid().toString(QUuid::Id128);
        nodes.insert(id, child.get());
        Settle(*child);
    }
}

std::vector<RpaStatementTree::NodePtr> RpaStatementTree::ReadNodes(JsonReader& reader)
{
    std::vector<NodePtr> read;
    if (!reader.EnterArray())
        return read;
    while (reader.NextElement()) {
        if (!reader.EnterObject())
            continue;
        read.emplace_back(new RpaStatementNode);
        while (reader.NextMember())
            if (!StatementJson::ReadMember(reader, read.back()->values))
                read.back()->children = ReadNodes(reader);
    }
    return read;
}

void RpaStatementTree::WriteChildren(JsonWriter& writer, const RpaStatementNode& node)
{
    writer.BeginArray();
    for (const NodePtr& child : node.children) {
        writer.BeginObject();
        StatementJson::WriteValues(writer, child->values);
        if (!child->children.empty()) {
            writer.Key("children");
            WriteChildren(writer, *child);
        }
        writer.EndObject();
    }
    writer.EndArray();
}

void RpaStatementTree::ForEach(const RpaStatementNode& node,
                               const std::function<void(const RpaStatementNode&)>& call)
{
    call(node);
    for (int row = 0; row < node.GetChildCount(); ++row)
        ForEach(*node.GetChild(row), call);
}

int RpaStatementTree::DepthOf(const RpaStatementNode& node)
{
    int depth = 0;
    for (const RpaStatementNode* at = node.GetParent(); at; at = at->GetParent())
        ++depth;
    return depth;
}

int RpaStatementTree::HeightOf(const RpaStatementNode& node)
{
    int height = 0;
    for (const NodePtr& child : node.children)
        height = qMax(height, HeightOf(*child));
    return height + 1;
}

bool RpaStatementTree::IsInside(const RpaStatementNode* node, const RpaStatementNode* block)
{
    while (node && node != block)
        node = node->GetParent();
    return node != nullptr;
}
