// SPDX-License-Identifier: Apache-2.0

#include "ListMove_p.h"

#include <RpaAppData/RpaToolData.h>
#include <WbFoundation/FreeNames.h>
#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

#include <tuple>

namespace
{
auto Tie(const RpaToolItem& item)
{
    return std::tie(item.id, item.text, item.icon, item.processName, item.unknown);
}

RpaToolItem ReadItem(JsonReader& reader)
{
    RpaToolItem item;
    while (reader.NextMember())
        if (reader.IsKey("id"))
            reader.ReadString(item.id);
        else if (reader.IsKey("text"))
            reader.ReadString(item.text);
        else if (reader.IsKey("icon"))
            reader.ReadString(item.icon);
        else if (reader.IsKey("processName"))
            reader.ReadString(item.processName);
        else
            reader.KeepMember(item.unknown);
    return item;
}
} // namespace

bool RpaToolItem::operator==(const RpaToolItem& other) const
{
    return Tie(*this) == Tie(other);
}

RpaToolData::RpaToolData(QObject* parent) : QObject(parent) {}

int RpaToolData::IndexOf(const QString& id) const
{
    for (int i = 0; i < items.size(); ++i)
        if (items.at(i).id == id)
            return i;
    return -1;
}

int RpaToolData::InsertItem(int index, const RpaToolItem& item)
{
    const int place = ListMove::Place(index, items.size());
    RpaToolItem settled = item;
    if (settled.id.isEmpty() || IndexOf(settled.id) >= 0)
        settled.id = ListMove::MakeId();
    items.insert(place, settled);
    emit SigInserted(place);
    emit SigChanged();
    return place;
}

bool RpaToolData::SetItem(int index, const RpaToolItem& item)
{
    if (index < 0 || index >= items.size())
        return false;
    RpaToolItem settled = item;
    settled.id = items.at(index).id;
    if (settled == items.at(index))
        return false;
    items[index] = settled;
    emit SigItemChanged(index);
    emit SigChanged();
    return true;
}

bool RpaToolData::RemoveItem(int index)
{
    if (index < 0 || index >= items.size())
        return false;
    items.removeAt(index);
    emit SigRemoved(index);
    emit SigChanged();
    return true;
}

bool RpaToolData::MoveItem(int from, int to)
{
    if (!ListMove::Move(items, from, to))
        return false;
    emit SigMoved(from, to);
    emit SigChanged();
    return true;
}

void RpaToolData::SetItems(const QVector<RpaToolItem>& newItems)
{
    items.clear();
    FreeNames ids;
    for (RpaToolItem item : newItems) {
        if (!ids.Take(item.id)) {
            item.id = ListMove::MakeId();
            ids.Take(item.id);
        }
        items.append(item);
    }
    emit SigReset();
    emit SigChanged();
}

void RpaToolData::WriteJson(JsonWriter& writer) const
{
    writer.BeginArray();
    for (const RpaToolItem& item : items) {
        writer.BeginObject();
        writer.Member("id", item.id);
        writer.Member("text", item.text);
        writer.Member("icon", item.icon);
        writer.Member("processName", item.processName);
        writer.RawMembers(item.unknown);
        writer.EndObject();
    }
    writer.EndArray();
}

std::function<void()> RpaToolData::ReadJson(JsonReader& reader)
{
    QVector<RpaToolItem> read;
    if (!reader.EnterArray())
        return {};
    while (reader.NextElement())
        if (reader.EnterObject())
            read.append(ReadItem(reader));
    return [this, read] { SetItems(read); };
}
