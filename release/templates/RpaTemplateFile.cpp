// SPDX-License-Identifier: Apache-2.0

#include "RpaTemplateFile.h"

#include "JsonText.h"
#include "RpaTemplateData.h"

#include <QBuffer>
#include <QDataStream>

QByteArray RpaTemplateFile::Encode(const RpaTemplateData& record)
{
    QByteArray content;
    QBuffer buffer(&content);
    if (buffer.open(QIODevice::WriteOnly)) {
        QDataStream stream(&buffer);
        stream << JsonText(record.ToJson());
    }
    return content;
}

void RpaTemplateFile::Decode(const QByteArray& content, RpaTemplateData& record)
{
    if (content.isEmpty())
        return;
    QString json;
    QDataStream stream(content);
    stream >> json;
    if (!json.isEmpty())
        record.Parse(json.toUtf8());
}
