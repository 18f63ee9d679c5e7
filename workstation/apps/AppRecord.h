#pragma once

#include <QDateTime>
#include <QMetaType>
#include <QString>
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
};

Q_DECLARE_METATYPE(AppRecord)
