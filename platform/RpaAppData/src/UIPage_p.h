// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppData/RpaUIData.h>

class RpaUIData::Private
{
public:
    QString name;
    RpaToolData tools;
    RpaParamData params;
    RpaTableData table;
    QByteArray unknown; // members written by a newer client
};
