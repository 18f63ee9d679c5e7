// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <OxBase/OxBaseExport.h>

#include <QMap>
#include <QString>

// Small conversions between plain Qt values and JSON text.
class OXBASE_EXPORT OxJsonUtil
{
public:
    // A compact JSON object with one string member per entry, in key order.
    static QString ToJsonString(const QMap<QString, QString>& map);
};
