// SPDX-License-Identifier: Apache-2.0

#include <WbCore/WbGlobalData.h>

WbGlobalData* WbGlobalData::Instance()
{
    static WbGlobalData instance;
    return &instance;
}

QString WbGlobalData::GetPin() const
{
    return pin;
}

void WbGlobalData::SetPin(const QString& value)
{
    pin = value;
}

qint64 WbGlobalData::GetVenderId() const
{
    return venderId;
}

void WbGlobalData::SetVenderId(qint64 value)
{
    venderId = value;
}
