// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbFoundation/IJsonParser.h>

#include <QByteArray>
#include <QString>

// What a template file holds; the names of the properties are its format.
class TemplateRecord : public IJsonParser
{
    Q_OBJECT
    Q_PROPERTY(QString templateName MEMBER name)
    Q_PROPERTY(QString templateDirection MEMBER description)
    Q_PROPERTY(QByteArray appData MEMBER appData)

public:
    QString name;
    QString description;
    QByteArray appData; // JSON of the app
};

// The file of a template: one QDataStream record with one QString, the JSON of a TemplateRecord. Any thread.
namespace TemplateFile
{
// Room for every app there may be: a character of its JSON becomes at most two in the record's, of two bytes
// each.
qint64 LargestBytes();

// False with a problem in the user's words; an empty one when the file is no template at all.
bool Decode(const QByteArray& file, TemplateRecord* record, QString* problem);
QByteArray Encode(const TemplateRecord& record);
} // namespace TemplateFile
