// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaCore/RpaAppKind.h>

#include <QDateTime>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVector>

// An app as the list shows it.
struct AppRecord
{
    QString id;
    QString name;
    int kind = AppKindVisual;
    QString creator; // account id
    QString creatorName;
    QString oxsAppKey;
    QDateTime changedAt;
    QString changedByName = {};
    int state = 0; // what users have, as an AppSnapshotState; develop: nothing; 0: not told
    QStringList tags = {};
};

Q_DECLARE_METATYPE(AppRecord)
