// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRecord.h"

#include <QHash>

// When each account of this workstation opened an app last, kept in a file. Not remembered is not lost: then
// the server's order stands.
class OpenedApps
{
public:
    // file: empty keeps nothing beyond this object.
    explicit OpenedApps(const QString& file);

    void Note(const QString& account, const QString& appId, const QDateTime& at);

    // Those that the account opened, last one first; then the others in their order.
    QVector<AppRecord> Sorted(const QString& account, QVector<AppRecord> apps) const;

private:
    void Read();
    void Write() const;

    const QString file;
    QHash<QString, QHash<QString, qint64>> times; // account, app; milliseconds since 1970
};
