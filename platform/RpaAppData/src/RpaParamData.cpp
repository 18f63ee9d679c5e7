// SPDX-License-Identifier: Apache-2.0

#include "ListMove_p.h"
#include "ParamJson_p.h"

#include <RpaAppData/RpaParamData.h>
#include <WbFoundation/FreeNames.h>
#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
void DropOtherSettings(RpaParamItem& item)
{
    const bool isStep = item.type == RpaParamType::Slider && std::isfinite(item.step) && item.step > 0;
    item.step = isStep ? item.step : 0;
    item.lines = item.type == RpaParamType::Lines ? qBound(0, item.lines, RpaParamItem::mostLines) : 0;
    item.columns = item.type == RpaParamType::Group ? qBound(0, item.columns, RpaParamItem::mostColumns) : 0;
    if (!item.TakesEndings())
        item.endings.clear();
}

void DropWhatDoesNotFit(RpaParamItem& item)
{
    if (!item.Fit(item.defaultValue))
        item.defaultValue = QVariant();
    if (!item.Fit(item.value))
        item.value = QVariant();
    if (!item.Fit(item.initial))
        item.initial.clear();
    const bool isForeign = item.type == RpaParamType::Text && !item.foreignType.isEmpty();
    for (QVariant* limit : {&item.least, &item.most})
        if (!(item.TakesRange() || isForeign) || !item.Fit(*limit))
            *limit = QVariant();
    if (!item.TakesPattern())
        item.pattern.clear();
    if (!isForeign)
        DropOtherSettings(item);
}
} // namespace

RpaParamData::RpaParamData(QObject* parent) : QObject(parent) {}

QStringList RpaParamData::GetNames() const
{
    QStringList names;
    for (const RpaParamItem& item : items)
        if (item.type != RpaParamType::Group)
            names.append(item.name);
    return names;
}

int RpaParamData::IndexOf(const QString& name) const
{
    for (int i = 0; i < items.size(); ++i)
        if (items.at(i).name == name)
            return i;
    return -1;
}

QString RpaParamData::MakeFreeName(const QString& stem) const
{
    int number = 1;
    QString name = stem + QString::number(number);
    while (IndexOf(name) >= 0)
        name = stem + QString::number(++number);
    return name;
}

int RpaParamData::InsertItem(int index, const RpaParamItem& item)
{
    if (item.name.trimmed().isEmpty() || IndexOf(item.name) >= 0)
        return -1;
    const int place = ListMove::Place(index, items.size());
    RpaParamItem settled = item;
    DropWhatDoesNotFit(settled);
    items.insert(place, settled);
    emit SigInserted(place);
    emit SigChanged();
    return place;
}

bool RpaParamData::SetItem(int index, const RpaParamItem& item)
{
    const int sameName = IndexOf(item.name);
    if (index < 0 || index >= items.size() || item.name.trimmed().isEmpty() ||
        (sameName >= 0 && sameName != index))
        return false;
    RpaParamItem settled = item;
    DropWhatDoesNotFit(settled);
    if (settled == items.at(index))
        return false;
    items[index] = settled;
    emit SigItemChanged(index);
    emit SigChanged();
    return true;
}

bool RpaParamData::RemoveItem(int index)
{
    if (index < 0 || index >= items.size())
        return false;
    const bool wasResult = items.at(index).isResult;
    items.removeAt(index);
    emit SigRemoved(index);
    emit SigChanged();
    if (wasResult)
        emit SigResultsChanged();
    return true;
}

bool RpaParamData::MoveItem(int from, int to)
{
    if (!ListMove::Move(items, from, to))
        return false;
    emit SigMoved(from, to);
    emit SigChanged();
    return true;
}

void RpaParamData::SetItems(const QVector<RpaParamItem>& newItems)
{
    const int resultsBefore = GetResultCount();
    items.clear();
    FreeNames names;
    for (RpaParamItem item : newItems) {
        if (!names.Take(item.name))
            item.name = names.TakeNumbered(QStringLiteral("参数"));
        DropWhatDoesNotFit(item);
        items.append(item);
    }
    emit SigReset();
    emit SigChanged();
    if (GetResultCount() != resultsBefore)
        emit SigResultsChanged();
}

bool RpaParamData::SetValue(int index, const QVariant& value)
{
    return Write(index, value, false);
}

bool RpaParamData::SetResult(int index, const QVariant& value)
{
    return Write(index, value, true);
}

bool RpaParamData::Write(int index, const QVariant& value, bool isResult)
{
    QVariant fitting = value;
    if (index < 0 || index >= items.size() || !items.at(index).Fit(fitting))
        return false;
    RpaParamItem& item = items[index];
    if (item.IsOutput()) {
        // Shown, and no part of the app that could have changed.
        item.value = fitting;
        emit SigValueChanged(index);
        return true;
    }
    const bool isSame = item.value == fitting && item.value.isValid() == fitting.isValid();
    if (isSame && (isResult || !item.isResult))
        return true;
    const bool wasResult = std::exchange(item.isResult, isResult);
    if (isResult && !wasResult)
        item.initial = item.value;
    else if (!isResult)
        item.initial.clear();
    item.value = fitting;
    emit SigValueChanged(index);
    emit SigChanged();
    if (wasResult != isResult)
        emit SigResultsChanged();
    return true;
}

int RpaParamData::GetResultCount() const
{
    return int(
        std::count_if(items.begin(), items.end(), [](const RpaParamItem& item) { return item.isResult; }));
}

void RpaParamData::KeepResults()
{
    if (GetResultCount() == 0)
        return;
    for (RpaParamItem& item : items) {
        item.isResult = false;
        item.initial.clear();
    }
    emit SigChanged();
    emit SigResultsChanged();
}

void RpaParamData::RestoreResults()
{
    if (GetResultCount() == 0)
        return;
    for (int index = 0; index < items.size(); ++index) {
        RpaParamItem& item = items[index];
        if (!std::exchange(item.isResult, false))
            continue;
        item.value = item.initial;
        item.initial.clear();
        emit SigValueChanged(index);
    }
    emit SigResultsChanged();
}

void RpaParamData::WriteJson(JsonWriter& writer) const
{
    writer.BeginArray();
    for (const RpaParamItem& item : items)
        ParamJson::Write(writer, item);
    writer.EndArray();
}

std::function<void()> RpaParamData::ReadJson(JsonReader& reader)
{
    QVector<RpaParamItem> read;
    if (!reader.EnterArray())
        return {};
    while (reader.NextElement())
        if (reader.EnterObject())
            read.append(ParamJson::Read(reader));
    return [this, read] { SetItems(read); };
}
