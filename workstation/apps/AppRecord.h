// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDateTime>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVector>

// Kind of an app's process.
enum AppKind : int
{
    AppKindVisual = 0,
    AppKindProgram = 1,
};

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
    int state = 0; // what users have: 3 an online version, 2 a gray one, 1 none; 0: not told
    QStringList tags = {};
};

Q_DECLARE_METATYPE(AppRecord)
