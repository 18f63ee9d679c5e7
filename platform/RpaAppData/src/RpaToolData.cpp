// SPDX-License-Identifier: Apache-2.0

#include "RecordJson_p.h"

#include <RpaAppData/RpaToolData.h>
#include <WbFoundation/FreeNames.h>

#include <QUuid>

#include <tuple>

namespace
{
auto Tie(const RpaToolItem& item)
{
    return std::tie(item.id, item.text, item.icon, item.processName, item.unknown);
}

QString MakeId()
{
    return QUuid::createUuid().toString(QUuid::Id128);
}

const RecordJson::Fields<RpaToolItem>& ToolJsonFields()
{
    using RecordJson::Always;
    static const RecordJson::Fields<RpaToolItem> fields{
        Always("id", &RpaToolItem::id),
        Always("text", &RpaToolItem::text),
        Always("icon", &RpaToolItem::icon),
        Always("processName", &RpaToolItem::processName),
    };
    return fields;
}
} // namespace

bool RpaToolItem::operator==(const RpaToolItem& other) const
{
    return Tie(*this) == Tie(other);
}

RpaToolData::RpaToolData(QObject* parent) : RpaRecordList(parent) {}

bool RpaToolData::Settle(RpaToolItem& item, int index) const
{
    const auto hasId = [&item](const RpaToolItem& other) { return other.id == item.id; };
    if (index >= 0)
        item.id = items.at(index).id;
    else if (item.id.isEmpty() || std::any_of(items.begin(), items.end(), hasId))
        item.id = MakeId();
    return true;
}

void RpaToolData::SettleAll(Content& all) const
{
    FreeNames ids;
    for (RpaToolItem& item : all) {
        if (!ids.Take(item.id)) {
            item.id = MakeId();
            ids.Take(item.id);
        }
    }
}

void RpaToolData::WriteJson(JsonWriter& writer) const
{
    RecordJson::WriteList(writer, items, ToolJsonFields());
}

std::function<void()> RpaToolData::ReadJson(JsonReader& reader)
{
    Content read;
    if (!RecordJson::ReadList(reader, read, ToolJsonFields()))
        return {};
    return [this, read] { SetContent(read); };
}
