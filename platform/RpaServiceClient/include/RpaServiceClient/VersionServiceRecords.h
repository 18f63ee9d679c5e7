// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QMetaType>
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
    QDateTime createdAt;  // UTC
    QDateTime changedAt;  // UTC
    QString changedByPin; // who named it or saved a version of it last
    QString changedByName;
    QStringList tags;
    int state = 1; // what users have: 3 an online version, else 2 a gray one, else 1
};

// An app in the bin.
struct VersionServiceDeletedApp
{
    VersionServiceApp app;
    QDateTime deletedAt; // UTC
};

// A version as it is handed over whole.
struct VersionServiceContent
{
    QString name; // 1–20 characters
    QString description;
    QString apiVersion;
    QByteArray data; // app data, kept byte for byte
};

// A version as its app's list shows it.
struct VersionServiceVersion
{
    QString id;
    QString name;
    int state = 1; // 1 develop, 2 gray, 3 online
    int revision = 0;
    QByteArray sha256; // of its app data, lower-case hex
    QString pin;       // who saved it last
    QString description = {};
    QString apiVersion = {};
};

// What a user may run: the newest online or gray version of an app.
struct VersionServiceReleasedApp
{
    VersionServiceApp app;
    QString versionId;
    QString versionName;
    QString description;  // of the version
    int state = 0;        // 2 gray, 3 online
    QDateTime releasedAt; // UTC
};

// A gray or online version as the authors of its app see it.
struct VersionServiceRelease
{
    QString versionId;
    QString versionName;
    QString description;
    int state = 0;          // 2 gray, 3 online
    QDateTime releasedAt;   // UTC
    bool present = false;   // the one of its state that users have
    bool withdrawn = false; // taken back from users
};

// One save of a version.
struct VersionServiceSave
{
    QString versionId;
    int revision = 0;
    QString pin;       // who saved it
    QString name;      // the account's
    QDateTime savedAt; // UTC
    QString note;      // what its author says of it; may be empty
};

// What an author decides about what users have.
struct VersionServiceTakeBack
{
    QString appId;
    int state = 0; // 2 gray, 3 online
    QString from;  // the version that users have by what the author saw; empty: none
    QString to;    // the one that they shall have, which was released before; empty: none
    QString reason;
};

// A code that opens the gray versions of an app to whoever redeems it.
struct VersionServiceInvitation
{
    QString id;
    QString code; // "XXXXX-XXXXX"
    QString appId;
    QDateTime createdAt; // UTC
    QDateTime expiresAt; // UTC
    int mostUses = 0;
    int uses = 0; // accounts that redeemed it
    bool revoked = false;

    // Whether somebody can still redeem it.
    bool IsOpen(const QDateTime& now) const { return !revoked && now < expiresAt && uses < mostUses; }
};

// Who did what to the versions and invitations of an app.
struct VersionServiceAuditEntry
{
    QString id;
    QDateTime at; // UTC
    QString pin;
    QString act; // "release.gray", "invitation.redeem", …: docs/protocol.md
    QString appId;
    QString versionId; // may be empty
    QString detail;    // name of the version, or id of the invitation
    QString reason;    // of a taking back, else empty
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

Q_DECLARE_METATYPE(VersionServiceReleasedApp)
