// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <OxHttp/OxHttpExport.h>

#include <QObject>
#include <QString>

// Base of every answer.
class OXHTTP_EXPORT IHttpResponse : public QObject
{
    Q_OBJECT

public:
    explicit IHttpResponse(QObject* parent = nullptr);
    ~IHttpResponse() override;

    // True only when the server confirmed the request and the answer passed every check of the transport.
    virtual bool IsSuccess() const = 0;

    // The reason in the user's words; may be empty on success.
    virtual QString GetErrorDesc() const = 0;
};
