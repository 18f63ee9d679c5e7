// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaStatementNode.h>

#include <QHash>

#include <functional>

class JsonReader;
class JsonWriter;

// The nodes of one process and the index of their ids. Announces nothing; RpaProcess does.
class RpaStatementTree
{
public:
    using NodePtr = std::unique_ptr<RpaStatementNode>;

    RpaStatementTree();

    RpaStatementNode* GetRoot() const { return root.get(); }
    // The root for an empty id.
    RpaStatementNode* Find(const QString& id) const { return id.isEmpty() ? root.get() : nodes.value(id); }
    int GetCount() const { return nodes.size(); }

    // Nodes for statements, not yet in the tree. Ids that are empty, in the tree, or twice among the
    // statements are made anew.
    std::vector<NodePtr> MakeNodes(const QVector<RpaStatement>& statements) const;
    void Insert(RpaStatementNode& parent, int row, std::vector<NodePtr> newNodes);
    NodePtr Remove(RpaStatementNode& node);
    // row counts as before the move.
    void Move(RpaStatementNode& node, RpaStatementNode& newParent, int row);
    void Clear();
    // Replaces everything by nodes of ReadNodes().
    void Adopt(std::vector<NodePtr> newNodes);
    // Nodes of a tree to be, as they stand in a JSON text: ids not yet settled.
    static std::vector<NodePtr> ReadNodes(JsonReader& reader);

    RpaStatement& ValuesOf(RpaStatementNode& node) const { return node.values; }
    void WriteJson(JsonWriter& writer) const { WriteChildren(writer, *root); }

    // The node and everything below it.
    static void ForEach(const RpaStatementNode& node,
                        const std::function<void(const RpaStatementNode&)>& call);
    // Blocks around a node, the root included: 0 for the root itself.
    static int DepthOf(const RpaStatementNode& node);
    // Levels from the node down, itself included.
    static int HeightOf(const RpaStatementNode& node);
    // Whether the node is the block or lies inside it.
    static bool IsInside(const RpaStatementNode* node, const RpaStatementNode* block);

private:
    NodePtr MakeNode(const RpaStatement& statement, QHash<QString, RpaStatementNode*>& fresh) const;
    static void WriteChildren(JsonWriter& writer, const RpaStatementNode& node);
    void Index(RpaStatementNode& node);
    void Settle(RpaStatementNode& parent);

    NodePtr root;
    QHash<QString, RpaStatementNode*> nodes;
};
