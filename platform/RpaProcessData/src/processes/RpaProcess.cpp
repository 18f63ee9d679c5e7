// SPDX-License-Identifier: Apache-2.0

#include "RpaStatementTree_p.h"

#include <RpaProcessData/RpaProcess.h>
#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

class RpaProcess::Private
{
public:
    bool IsWithinDepth(const RpaStatementNode& parent,
                       const std::vector<RpaStatementTree::NodePtr>& nodes) const
    {
        const int depth = RpaStatementTree::DepthOf(parent);
        for (const auto& node : nodes)
            if (depth + RpaStatementTree::HeightOf(*node) > maxDepth)
                return false;
        return true;
    }

    QString name;
    RpaStatementTree tree;
    QString programText;
    QByteArray unknown; // members written by a newer client
};

RpaProcess::RpaProcess(const QString& name, QObject* parent) : QObject(parent), d(std::make_unique<Private>())
{
    d->name = name;
}

RpaProcess::~RpaProcess() = default;

QString RpaProcess::GetName() const
{
    return d->name;
}

void RpaProcess::SetName(const QString& name)
{
    d->name = name;
    emit SigChanged();
}

const RpaStatementNode* RpaProcess::GetRoot() const
{
    return d->tree.GetRoot();
}

const RpaStatementNode* RpaProcess::Find(const QString& statementId) const
{
    return statementId.isEmpty() ? nullptr : d->tree.Find(statementId);
}

int RpaProcess::GetStatementCount() const
{
    return d->tree.GetCount();
}

void RpaProcess::ForEach(const std::function<void(const RpaStatementNode&)>& call) const
{
    const RpaStatementNode* root = d->tree.GetRoot();
    for (int row = 0; row < root->GetChildCount(); ++row)
        RpaStatementTree::ForEach(*root->GetChild(row), call);
}

bool RpaProcess::Fits(const QString& parentId, const QVector<RpaStatement>& statements) const
{
    const RpaStatementNode* parent = d->tree.Find(parentId);
    return parent && d->IsWithinDepth(*parent, d->tree.MakeNodes(statements));
}

QStringList RpaProcess::Insert(const QString& parentId, int row, const QVector<RpaStatement>& statements)
{
    RpaStatementNode* parent = d->tree.Find(parentId);
    if (!parent || statements.isEmpty())
        return {};
    std::vector<RpaStatementTree::NodePtr> nodes = d->tree.MakeNodes(statements);
    if (!d->IsWithinDepth(*parent, nodes))
        return {};

    QStringList ids;
    for (const auto& node : nodes)
        ids.append(node->GetId());
    const bool atEnd = row < 0 || row > parent->GetChildCount();
    const int first = atEnd ? parent->GetChildCount() : row;
    const int last = first + statements.size() - 1;
    emit SigAboutToInsert(parent, first, last);
    d->tree.Insert(*parent, first, std::move(nodes));
    emit SigInserted(parent, first, last);
    emit SigChanged();
    return ids;
}

RpaStatement RpaProcess::Take(const QString& statementId)
{
    RpaStatementNode* node = statementId.isEmpty() ? nullptr : d->tree.Find(statementId);
    if (!node)
        return RpaStatement();

    const RpaStatementNode* parent = node->GetParent();
    const int row = node->GetRow();
    emit SigAboutToRemove(parent, row, row);
    const RpaStatementTree::NodePtr removed = d->tree.Remove(*node);
    emit SigRemoved(parent, row, row);
    emit SigChanged();
    return removed->ToStatement();
}

bool RpaProcess::Move(const QString& statementId, const QString& newParentId, int row)
{
    RpaStatementNode* node = statementId.isEmpty() ? nullptr : d->tree.Find(statementId);
    RpaStatementNode* newParent = d->tree.Find(newParentId);
    if (!node || !newParent || RpaStatementTree::IsInside(newParent, node) ||
        RpaStatementTree::DepthOf(*newParent) + RpaStatementTree::HeightOf(*node) > maxDepth)
        return false;

    const RpaStatementNode* parent = node->GetParent();
    const int oldRow = node->GetRow();
    const bool atEnd = row < 0 || row > newParent->GetChildCount();
    const int newRow = atEnd ? newParent->GetChildCount() : row;
    if (parent == newParent && (newRow == oldRow || newRow == oldRow + 1))
        return false;

    emit SigAboutToMove(parent, oldRow, newParent, newRow);
    d->tree.Move(*node, *newParent, newRow);
    emit SigMoved(parent, oldRow, newParent, newRow);
    emit SigChanged();
    return true;
}

bool RpaProcess::SetValues(const QString& statementId, const RpaStatement& values)
{
    RpaStatementNode* node = statementId.isEmpty() ? nullptr : d->tree.Find(statementId);
    if (!node)
        return false;
    RpaStatement own = values;
    own.id = statementId;
    own.children.clear();
    if (own == node->GetValues())
        return false;

    d->tree.ValuesOf(*node) = own;
    emit SigStatementChanged(node);
    emit SigChanged();
    return true;
}

bool RpaProcess::SetArgument(const QString& statementId, const QString& name, const QString& text)
{
    const RpaStatementNode* node = Find(statementId);
    if (!node)
        return false;
    RpaStatement values = node->GetValues();
    values.arguments.insert(name, text);
    return SetValues(statementId, values);
}

bool RpaProcess::SetEnabled(const QString& statementId, bool enabled)
{
    const RpaStatementNode* node = Find(statementId);
    if (!node)
        return false;
    RpaStatement values = node->GetValues();
    values.enabled = enabled;
    return SetValues(statementId, values);
}

void RpaProcess::SetStatements(const QVector<RpaStatement>& statements)
{
    emit SigAboutToReset();
    d->tree.Clear();
    d->tree.Insert(*d->tree.GetRoot(), 0, d->tree.MakeNodes(statements));
    emit SigReset();
    emit SigChanged();
}

QVector<RpaStatement> RpaProcess::GetStatements() const
{
    return d->tree.GetRoot()->ToStatement().children;
}

QString RpaProcess::GetProgramText() const
{
    return d->programText;
}

void RpaProcess::SetProgramText(const QString& text)
{
    if (text == d->programText)
        return;
    d->programText = text;
    emit SigChanged();
}

// For a process that nobody sees yet: nothing is announced. The object has been entered.
void RpaProcess::ReadJson(JsonReader& reader)
{
    while (reader.NextMember())
        if (reader.IsKey("name"))
            reader.ReadString(d->name);
        else if (reader.IsKey("program"))
            reader.ReadString(d->programText);
        else if (reader.IsKey("statements"))
            d->tree.Adopt(RpaStatementTree::ReadNodes(reader));
        else
            reader.KeepMember(d->unknown);
}

void RpaProcess::WriteJson(JsonWriter& writer) const
{
    writer.BeginObject();
    writer.Member("name", d->name);
    if (!d->programText.isEmpty())
        writer.Member("program", d->programText);
    writer.Key("statements");
    d->tree.WriteJson(writer);
    writer.RawMembers(d->unknown);
    writer.EndObject();
}
