// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbCore/WbCoreExport.h>

#include <QString>

// Who is signed in. Set by the workstation after sign-in; read by everybody. GUI thread only.
class WBCORE_EXPORT WbGlobalData
{
public:
    // The one of the process.
    static WbGlobalData* Instance();

    // Account id of the signed-in user; empty before sign-in.
    QString GetPin() const { return pin; }
    void SetPin(const QString& value) { pin = value; }

    // The user's vendor id; 0 before sign-in.
    qint64 GetVenderId() const { return venderId; }
    void SetVenderId(qint64 value) { venderId = value; }

private:
    WbGlobalData() = default;

    QString pin;
    qint64 venderId = 0;
};
