// SPDX-License-Identifier: Apache-2.0

#include <OxBase/OxJsonUtil.h>

#include <QJsonDocument>
#include <QJsonObject>

QString OxJsonUtil::ToJsonString(const QMap<QString, QString>& map)
{
    QJsonObject object;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry)
        object.insert(entry.key(), entry.value());
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}
