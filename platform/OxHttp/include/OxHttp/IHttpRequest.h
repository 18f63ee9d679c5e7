// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <OxHttp/OxHttpExport.h>

#include <QObject>
#include <QString>

// Base of every request that is answered through HttpNotifyManager.
class OXHTTP_EXPORT IHttpRequest : public QObject
{
    Q_OBJECT

public:
    explicit IHttpRequest(QObject* parent = nullptr);
    ~IHttpRequest() override;

    // A text the requester chose to recognise its answer by; empty when it set none. Kept unchanged.
    QString GetIdentity() const { return identity; }
    void SetIdentity(const QString& value) { identity = value; }

private:
    QString identity;
};
