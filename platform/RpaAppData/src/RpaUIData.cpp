// SPDX-License-Identifier: Apache-2.0

#include "UIPage_p.h"

#include <RpaAppData/RpaUIData.h>

RpaUIData::RpaUIData(const QString& name, QObject* parent) : QObject(parent), d(std::make_unique<Private>())
{
    d->name = name;
    connect(&d->tools, &RpaToolData::SigChanged, this, &RpaUIData::SigChanged);
    connect(&d->params, &RpaParamData::SigChanged, this, &RpaUIData::SigChanged);
    connect(&d->table, &RpaTableData::SigChanged, this, &RpaUIData::SigChanged);
    connect(&d->params, &RpaParamData::SigResultsChanged, this, &RpaUIData::SigResultsChanged);
    connect(&d->table, &RpaTableData::SigResultsChanged, this, &RpaUIData::SigResultsChanged);
}

RpaUIData::~RpaUIData() = default;

QString RpaUIData::GetName() const
{
    return d->name;
}

RpaToolData* RpaUIData::GetToolData() const
{
    return &d->tools;
}

RpaParamData* RpaUIData::GetParamData() const
{
    return &d->params;
}

RpaTableData* RpaUIData::GetTableData() const
{
    return &d->table;
}
