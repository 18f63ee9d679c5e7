// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbFoundation/IJsonParser.h>

#include <QByteArray>
#include <QString>

// A template: a whole app, with the name and description it is offered under.
class RpaTemplateData : public IJsonParser
{
    Q_OBJECT
    Q_PROPERTY(QString templateName READ GetTemplateName WRITE SetTemplateName)
    Q_PROPERTY(QString templateDirection READ GetTemplateDirection WRITE SetTemplateDirection)
    Q_PROPERTY(QByteArray appData READ GetAppData WRITE SetAppData)

public:
    explicit RpaTemplateData(QObject* parent = nullptr);

    QString GetTemplateName() const { return templateName; }
    void SetTemplateName(const QString& value) { templateName = value; }

    // Description.
    QString GetTemplateDirection() const { return templateDirection; }
    void SetTemplateDirection(const QString& value) { templateDirection = value; }

    // JSON of the app, as RpaAppData::ToJson() gives it.
    QByteArray GetAppData() const { return appData; }
    void SetAppData(const QByteArray& value) { appData = value; }

private:
    QString templateName;
    QString templateDirection;
    QByteArray appData;
};
