// SPDX-License-Identifier: Apache-2.0

#include "RunFilterSql_p.h"

#include <QStringList>

namespace
{
QString Escaped(QString text)
{
    for (const char special : {'\\', '%', '_'})
        text.replace(QLatin1Char(special), QLatin1Char('\\') + QString(QLatin1Char(special)));
    return QLatin1Char('%') + text + QLatin1Char('%');
}

} // namespace

QString RunFilterSql::Where(const RpaRunFilter& filter, QVariantList* values)
{
    QString where = QStringLiteral("app=?");
    values->append(filter.appId);
    if (!filter.versionName.isEmpty()) {
        where += QStringLiteral(" AND version_name=?");
        values->append(filter.versionName);
    }
    QStringList results;
    for (const RpaRunResult result : filter.results)
        results.append(QString::number(int(result)));
    if (!results.isEmpty())
        where += QStringLiteral(" AND result IN (%1)").arg(results.join(QLatin1Char(',')));
    if (!filter.text.isEmpty()) {
        const QString like = QStringLiteral(" LIKE ? ESCAPE '\\'");
        QStringList places;
        for (const char* column : {"process", "version_name", "account", "reason"})
            places.append(QLatin1String(column) + like);
        places.append(
            QStringLiteral("EXISTS(SELECT 1 FROM line WHERE run=run.id AND line.text%1)").arg(like));
        where += QStringLiteral(" AND (%1)").arg(places.join(QStringLiteral(" OR ")));
        for (int i = 0; i < places.size(); ++i)
            values->append(Escaped(filter.text));
    }
    return where;
}
