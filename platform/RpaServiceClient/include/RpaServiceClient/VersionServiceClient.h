// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/RpaServiceClientExport.h>
#include <RpaServiceClient/VersionServiceRecords.h>

#include <functional>
#include <memory>

class QObject;

// Sessions and apps of the version service, for the workstation. Speaks to the server of
// VersionServiceSettings by the same rules as the version requests. GUI thread only.
//
// Each call is answered exactly once, from the event loop, never inside the call; the destructor answers what
// is outstanding as failed. context, when not null, stands for whoever wants the answer: it is not called
// once it is destroyed, nor by the client's destructor, which mostly runs within that of whoever asked.
class RPASERVICECLIENT_EXPORT VersionServiceClient
{
public:
    template <typename Value>
    using Callback = std::function<void(const VersionServiceResult<Value>& result)>;

    VersionServiceClient();
    ~VersionServiceClient();

    VersionServiceClient(const VersionServiceClient&) = delete;
    VersionServiceClient& operator=(const VersionServiceClient&) = delete;

    // The token of the new session is in the answer; who signs in puts it into the settings. stay: asks for a
    // session that lasts while it is not used.
    void SignIn(const QString& account, const QString& password, bool stay, QObject* context,
                const Callback<VersionServiceSession>& callback);
    // Who the token of the settings stands for.
    void GetCurrentSession(QObject* context, const Callback<VersionServiceSession>& callback);
    // Ends the session of the settings' token at the server; who signs out takes it from the settings.
    void SignOut(QObject* context, const Callback<VersionServiceNothing>& callback);

    // The apps the account may edit, newest change first. nameFilter empty: all.
    void ListApps(const QString& nameFilter, QObject* context,
                  const Callback<QVector<VersionServiceApp>>& callback);
    void GetApp(const QString& appId, QObject* context, const Callback<VersionServiceApp>& callback);
    // name: 1–50 characters. kind: 0 visual process, 1 program process.
    void CreateApp(const QString& name, int kind, QObject* context,
                   const Callback<VersionServiceApp>& callback);
    void RenameApp(const QString& appId, const QString& name, QObject* context,
                   const Callback<VersionServiceApp>& callback);
    // Under the next free name ("name 2") when that one is taken.
    void CreateAppUnderFreeName(const QString& name, int kind, QObject* context,
                                const Callback<VersionServiceApp>& callback);
    // At most 10 tags of 1–20 characters, each once.
    void SetTags(const QString& appId, const QStringList& tags, QObject* context,
                 const Callback<VersionServiceApp>& callback);
    // A new app with all versions of that one, in development, under the next free name.
    void CopyApp(const QString& appId, QObject* context, const Callback<VersionServiceApp>& callback);

    // Into the bin, for its creator and administrators.
    void DeleteApp(const QString& appId, QObject* context, const Callback<VersionServiceNothing>& callback);
    // What the account may restore, deleted last first.
    void ListDeletedApps(QObject* context, const Callback<QVector<VersionServiceDeletedApp>>& callback);
    // As it was; under the next free name when its own was taken meanwhile.
    void RestoreApp(const QString& appId, QObject* context, const Callback<VersionServiceApp>& callback);
    // Out of the bin for good.
    void PurgeApp(const QString& appId, QObject* context, const Callback<VersionServiceNothing>& callback);

    // Adds a develop version. Nobody's editor hears of it.
    void CreateVersion(const QString& appId, const VersionServiceContent& content, QObject* context,
                       const Callback<VersionServiceNothing>& callback);

    // The versions of an app that the account may edit, newest first.
    void ListVersions(const QString& appId, QObject* context,
                      const Callback<QVector<VersionServiceVersion>>& callback);

    // The apps of the account's vendor that have an online version, newest release first.
    void ListOnlineApps(QObject* context, const Callback<QVector<VersionServiceReleasedApp>>& callback);
    // The apps whose gray versions were opened to the account, newest release first.
    void ListGrayApps(QObject* context, const Callback<QVector<VersionServiceReleasedApp>>& callback);
    // The app data of a version that the account may edit or run, verified against its digest.
    void GetVersionData(const QString& versionId, QObject* context, const Callback<QByteArray>& callback);

    // The gray and online versions of an app that the account may edit, newest release first.
    void ListReleases(const QString& appId, QObject* context,
                      const Callback<QVector<VersionServiceRelease>>& callback);
    // Gives users another version or none, and brings the id of the one that they have then. What is so
    // already stays so. Refused with "release-changed" when users have another one than `from` by now.
    void TakeBack(const VersionServiceTakeBack& order, QObject* context, const Callback<QString>& callback);

    // Of each version of the app its last saves and all with a note: newest version, then newest save first.
    void ListSaves(const QString& appId, QObject* context,
                   const Callback<QVector<VersionServiceSave>>& callback);
    // For whoever saved that revision only. note: up to 200 characters; empty takes the former away.
    void NoteSave(const QString& versionId, int revision, const QString& note, QObject* context,
                  const Callback<VersionServiceNothing>& callback);

    // For the creator of the app only. All invitations, newest first.
    void ListInvitations(const QString& appId, QObject* context,
                         const Callback<QVector<VersionServiceInvitation>>& callback);
    // validDays: 1–365, mostUses: 1–10000. Refused with "no-gray" while the app has no gray version.
    void CreateInvitation(const QString& appId, int validDays, int mostUses, QObject* context,
                          const Callback<VersionServiceInvitation>& callback);
    // Whoever redeemed it keeps what it gave.
    void RevokeInvitation(const QString& invitationId, QObject* context,
                          const Callback<VersionServiceInvitation>& callback);
    // code: as typed. Brings what the account may run now; redeeming again changes nothing.
    void RedeemInvitation(const QString& code, QObject* context,
                          const Callback<VersionServiceReleasedApp>& callback);

    // For administrators: at most `limit` (1–1000) entries of the vendor, newest first; older than the entry
    // `beforeId` unless that is empty.
    void ListAudit(const QString& beforeId, int limit, QObject* context,
                   const Callback<QVector<VersionServiceAuditEntry>>& callback);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
