#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVector>

// What the version service says of accounts and apps, as plain values.

struct VersionServiceAccount
{
    QString pin;
    QString name;
    QString venderId;
    QStringList roles; // "author", "user", "administrator"
};

struct VersionServiceSession
{
    QByteArray token; // secret; empty in an answer about the current session
    VersionServiceAccount account;
    QDateTime expiresAt; // UTC
};

struct VersionServiceApp
{
    QString id;
    QString name;
    int kind = 0; // 0 visual process, 1 program process
    QString creatorPin;
    QString creatorName;
    QString oxsAppKey;
    QDateTime createdAt; // UTC
    QDateTime changedAt; // UTC
};

// Answer of one request. value counts only when success is true; errorDesc, in Chinese and fit to be shown,
// only when it is not. errorCode is the service's stable name of a refusal ("name-taken", "bad-credentials"),
// empty when the failure was none of the service's.
template <typename Value>
struct VersionServiceResult
{
    bool success = false;
    Value value{};
    QString errorDesc;
    QString errorCode;
};

// Of a request that brings nothing but its outcome.
struct VersionServiceNothing
{
};
