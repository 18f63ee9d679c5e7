// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/RpaServiceClientExport.h>

#include <QByteArray>
#include <QString>

struct WbHttpRequest;

// A version as it is handed over whole.
struct RPASERVICECLIENT_EXPORT VersionServiceContent
{
    QString name; // 1–20 characters
    QString description;
    QString apiVersion;
    QByteArray data;   // app data, kept byte for byte
    QString text = {}; // app data in place of the bytes, encoded away from the GUI thread; null: the bytes

    // As what the request saves.
    void PutInto(WbHttpRequest* request) const;
};
