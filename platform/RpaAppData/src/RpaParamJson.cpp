// SPDX-License-Identifier: Apache-2.0

// Parameters to and from JSON. Secrets stay out: of a password neither value nor default is written, and what
// an older or foreign file carries there is not read.
#include "RecordJson_p.h"

#include <RpaAppData/RpaParamData.h>

#include <utility>

namespace
{
const RecordJson::Fields<RpaParamItem>& ParamJsonFields()
{
    using Item = RpaParamItem;
    using RecordJson::Always;
    using RecordJson::WhenSet;
    static const RecordJson::Fields<Item> fields{
        Always("name", &Item::name),         Always("label", &Item::label),
        RecordJson::TypeName<Item>("type"),  WhenSet("default", &Item::defaultValue),
        WhenSet("value", &Item::value),      WhenSet("choices", &Item::choices),
        Always("required", &Item::required), WhenSet("least", &Item::least),
        WhenSet("most", &Item::most),        WhenSet("step", &Item::step),
        WhenSet("lines", &Item::lines),      WhenSet("columns", &Item::columns),
        WhenSet("endings", &Item::endings),  WhenSet("pattern", &Item::pattern),
        WhenSet("hint", &Item::hint),
    };
    return fields;
}

// As they are part of the app.
QVector<RpaParamItem> Stored(QVector<RpaParamItem> items)
{
    for (RpaParamItem& item : items) {
        if (std::exchange(item.isResult, false))
            item.value = item.initial;
        if (item.type == RpaParamType::Password || item.IsOutput())
            item.defaultValue = item.value = QVariant();
    }
    return items;
}
} // namespace

void RpaParamData::WriteJson(JsonWriter& writer) const
{
    RecordJson::WriteList(writer, Stored(items), ParamJsonFields());
}

std::function<void()> RpaParamData::ReadJson(JsonReader& reader)
{
    QVector<RpaParamItem> read;
    if (!RecordJson::ReadList(reader, read, ParamJsonFields()))
        return {};
    return [this, read] { SetContent(Stored(read)); };
}
