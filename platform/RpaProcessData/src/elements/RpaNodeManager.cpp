// SPDX-License-Identifier: Apache-2.0

#include "StatementJson_p.h"

#include <RpaProcessData/RpaHtmlNodeManager.h>
#include <RpaProcessData/RpaNodeManager.h>
#include <RpaProcessData/RpaUiaNodeManager.h>
#include <WbFoundation/FreeNames.h>
#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

#include <QUuid>

namespace
{
// Attributes come from foreign pages; larger ones would keep the app from being loaded again, and help
// nobody.
constexpr int maxAttributeNameBytes = 128;
constexpr int maxAttributeLength = 16 * 1024;
constexpr int maxAttributes = 256;
constexpr int maxTextLength = 64 * 1024;

struct TextMember
{
    const char* name;
    QString RpaNode::*text;
};
constexpr TextMember textMembers[] = {
    {"id", &RpaNode::id},         {"name", &RpaNode::name},   {"pageUrl", &RpaNode::pageUrl},
    {"css", &RpaNode::css},       {"xpath", &RpaNode::xpath}, {"application", &RpaNode::application},
    {"window", &RpaNode::window}, {"path", &RpaNode::path},
};

void WriteNode(JsonWriter& writer, const RpaNode& node)
{
    writer.BeginObject();
    for (const TextMember& member : textMembers) {
        const QString& text = node.*member.text;
        if (!text.isEmpty())
            writer.Member(member.name, text);
    }
    writer.Key("attributes");
    StatementJson::WriteMap(writer, node.attributes);
    writer.RawMembers(node.unknown);
    writer.EndObject();
}

const TextMember* FindTextMember(const JsonReader& reader)
{
    for (const TextMember& member : textMembers)
        if (reader.IsKey(member.name))
            return &member;
    return nullptr;
}

RpaNode ReadNode(JsonReader& reader)
{
    RpaNode node;
    while (reader.NextMember())
        if (const TextMember* member = FindTextMember(reader))
            reader.ReadString(node.*member->text);
        else if (reader.IsKey("attributes"))
            node.attributes = StatementJson::ReadMap(reader);
        else
            reader.KeepMember(node.unknown);
    return node;
}

QVector<RpaNode> ReadNodes(JsonReader& reader)
{
    QVector<RpaNode> nodes;
    if (!reader.EnterArray())
        return nodes;
    while (reader.NextElement())
        if (reader.EnterObject())
            nodes.append(ReadNode(reader));
    return nodes;
}

QMap<QString, QString> Bounded(const QMap<QString, QString>& attributes)
{
    QMap<QString, QString> bounded;
    for (auto entry = attributes.cbegin(); entry != attributes.cend() && bounded.size() < maxAttributes;
         ++entry)
        if (entry.key().toUtf8().size() <= maxAttributeNameBytes)
            bounded.insert(entry.key(), entry.value().left(maxAttributeLength));
    return bounded;
}

RpaNode Bounded(const RpaNode& node)
{
    RpaNode bounded = node;
    for (const TextMember& member : textMembers)
        bounded.*member.text = (node.*member.text).left(maxTextLength);
    bounded.attributes = Bounded(node.attributes);
    return bounded;
}
} // namespace

class RpaNodeManager::Private
{
public:
    int IndexOfId(const QString& id) const
    {
        for (int i = 0; i < nodes.size(); ++i)
            if (nodes.at(i).id == id)
                return i;
        return -1;
    }

    // With an id and a name of its own.
    RpaNode Settled(const RpaNode& node) const
    {
        RpaNode settled = Bounded(node);
        if (settled.id.isEmpty() || IndexOfId(settled.id) >= 0)
            settled.id = QUuid::createUuid().toString(QUuid::Id128);
        const QString given = settled.name.trimmed();
        const QString stem = given.isEmpty() ? QStringLiteral("元素") : given;
        FreeNames names;
        for (const RpaNode& other : nodes)
            names.Take(other.name);
        settled.name = names.Take(stem) ? stem : names.TakeNumbered(stem + QLatin1Char(' '), 2);
        return settled;
    }

    QVector<RpaNode> nodes;
    QByteArray unknown; // members written by a newer client
};

RpaNodeManager::RpaNodeManager(QObject* parent) : IJsonParser(parent), d(std::make_unique<Private>()) {}

RpaNodeManager::~RpaNodeManager() = default;

int RpaNodeManager::GetCount() const
{
    return d->nodes.size();
}

QVector<RpaNode> RpaNodeManager::GetNodes() const
{
    return d->nodes;
}

RpaNode RpaNodeManager::GetNode(int index) const
{
    return d->nodes.value(index);
}

RpaNode RpaNodeManager::FindNode(const QString& id) const
{
    return d->nodes.value(d->IndexOfId(id));
}

int RpaNodeManager::IndexOf(const QString& id) const
{
    return d->IndexOfId(id);
}

QString RpaNodeManager::AddNode(const RpaNode& node)
{
    d->nodes.append(d->Settled(node));
    emit SigChanged();
    return d->nodes.last().id;
}

void RpaNodeManager::Clear()
{
    d->nodes.clear();
    d->unknown.clear();
    emit SigReset();
    emit SigChanged();
}

void RpaNodeManager::WriteJson(JsonWriter& writer) const
{
    writer.BeginObject();
    writer.Key("nodes");
    writer.BeginArray();
    for (const RpaNode& node : qAsConst(d->nodes))
        WriteNode(writer, node);
    writer.EndArray();
    writer.RawMembers(d->unknown);
    writer.EndObject();
}

IJsonParser::Commit RpaNodeManager::ReadJson(JsonReader& reader)
{
    if (!reader.RequireObject(QStringLiteral("元素库应为对象")))
        return {};
    QVector<RpaNode> nodes;
    QByteArray unknown;
    while (reader.NextMember())
        if (reader.IsKey("nodes"))
            nodes = ReadNodes(reader);
        else
            reader.KeepMember(unknown);
    return [this, nodes, unknown] {
        d->nodes = nodes;
        d->unknown = unknown;
        emit SigReset();
        emit SigChanged();
    };
}

RpaHtmlNodeManager::RpaHtmlNodeManager(QObject* parent) : RpaNodeManager(parent) {}

RpaUiaNodeManager::RpaUiaNodeManager(QObject* parent) : RpaNodeManager(parent) {}
