// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../base/Account.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QtGlobal>

namespace server
{
struct App
{
    QString id;
    QString name;
    int kind = 0; // 0 visual process, else program process
    QString creator;
    QString creatorName;
    QString venderId;
    QString oxsAppKey;
    qint64 createdAt = 0;
    qint64 changedAt = 0;
    QString changedBy = {}; // who named it or saved a version of it last
    QString changedByName = {};
    QStringList tags = {}; // free of line feeds
    int state = 1;         // 3: users have an online version, else 2: those invited a gray one, else 1
    qint64 deletedAt = 0;  // 0: not deleted
};

enum class VersionState : int
{
    Develop = 1,
    Gray = 2,
    Online = 3
};

// The head of a version: its newest revision without the body.
struct Version
{
    QString id;
    QString appId;
    QString name;
    QString description;
    VersionState state = VersionState::Develop;
    QString apiVersion;
    QString pin; // who saved it last
    qint64 revision = 1;
    QByteArray sha256; // raw
    qint64 size = 0;
    qint64 createdAt = 0;
    qint64 changedAt = 0;
    qint64 deletedAt = 0;   // 0: not deleted
    qint64 withdrawnAt = 0; // 0: users have it when it is the newest of its state
};

// What a user may run: the newest version of an app in a released state.
struct ReleasedApp
{
    App app;
    Version version;
    qint64 releasedAt = 0;
};

// A gray or online version as its authors see it.
struct Release
{
    Version version;
    qint64 releasedAt = 0; // into the state that it has
};

// One save of a version, without its content.
struct SavedRevision
{
    QString versionId;
    qint64 revision = 0;
    QString pin;  // who saved it
    QString name; // the account's
    qint64 savedAt = 0;
    QString note; // what its author says of it; may be empty
};

// A code that opens the gray versions of an app to whoever redeems it.
struct Invitation
{
    QString id;
    QString code; // without the dash that people see
    QString appId;
    QString versionId; // the gray version it was made for
    QString pin;       // who made it
    qint64 createdAt = 0;
    qint64 expiresAt = 0;
    qint64 mostUses = 0;
    qint64 uses = 0;      // accounts that redeemed it
    qint64 revokedAt = 0; // 0: not revoked

    bool IsOpen(qint64 now) const { return revokedAt == 0 && now < expiresAt && uses < mostUses; }
};

// Who did what to the versions and invitations of an app, and when. Never changed.
struct AuditEntry
{
    QString id;
    qint64 at = 0;
    QString pin;
    QString act; // "release.gray", "release.online", "invitation.create", …
    QString appId;
    QString versionId;   // may be empty
    QString detail;      // may be empty
    QString reason = {}; // of a taking back, in the author's words
};

// That an account did something on a day. Holds nothing of what it was done with.
struct UsageEvent
{
    QString id; // unique within the account's
    QString event;
    qint64 day = 0; // since 1970, UTC
};

// How often the accounts of a vendor did something on a day.
struct UsageCount
{
    QString event;
    qint64 day = 0;
    qint64 count = 0;
};

struct StoredSession
{
    QByteArray tokenHash;
    QString pin;
    qint64 createdAt = 0;
    qint64 lastUsedAt = 0;
    qint64 expiresAt = 0;
};

// The answer that was given to a request with an idempotency key.
struct StoredAnswer
{
    QByteArray fingerprint; // of the request
    int status = 0;
    QByteArray etag;
    QByteArray body;
};
} // namespace server
