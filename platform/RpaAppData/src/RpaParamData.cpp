// SPDX-License-Identifier: Apache-2.0

#include "RecordNames_p.h"
#include "TypedValue_p.h"

#include <RpaAppData/RpaParamData.h>

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
    for (QVariant* limit : {&item.least, &item.most})
        if (!(item.TakesRange() || item.IsForeign()) || !item.Fit(*limit))
            *limit = QVariant();
    if (!item.TakesPattern())
        item.pattern.clear();
    if (!item.IsForeign())
        DropOtherSettings(item);
}
} // namespace

RpaParamData::RpaParamData(QObject* parent) : RpaRecordList(parent) {}

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
    return RecordNames::IndexOf(items, name);
}

QString RpaParamData::MakeFreeName(const QString& stem) const
{
    return RecordNames::MakeFree(items, stem);
}

bool RpaParamData::Settle(RpaParamItem& item, int index) const
{
    DropWhatDoesNotFit(item);
    return RecordNames::IsFree(items, item.name, index);
}

void RpaParamData::SettleAll(Content& all) const
{
    RecordNames::MakeUnique(all, QStringLiteral("参数"));
    for (RpaParamItem& item : all)
        DropWhatDoesNotFit(item);
}

void RpaParamData::Replace(const Content& after)
{
    const int resultsBefore = GetResultCount();
    RpaRecordList::Replace(after);
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
    if (!Has(index) || !items.at(index).Fit(fitting))
        return false;
    RpaParamItem& item = items[index];
    if (item.IsOutput()) {
        // Shown, and no part of the app that could have changed.
        item.value = fitting;
        emit SigValueChanged(index);
        return true;
    }
    if (TypedValue::IsSame(item.value, fitting) && (isResult || !item.isResult))
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
