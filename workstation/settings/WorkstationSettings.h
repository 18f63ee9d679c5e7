// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DateLanguage.h"

#include <QObject>
#include <QSettings>
#include <QUrl>
#include <QVector>

// Colours of the workstation.
enum class ThemeChoice
{
    System,
    Light,
    Dark,
};

// What the user chose, kept in one file. Setters write at once and announce a change only when there is one.
class WorkstationSettings : public QObject
{
    Q_OBJECT

public:
    explicit WorkstationSettings(const QString& file, QObject* parent = nullptr);

    // True: the workstation starts a version server of its own; false: it speaks to ServerAddress().
    bool GetEmbeddedServer() const { return Read(embeddedKey, true).toBool(); }
    void SetEmbeddedServer(bool embedded);

    QUrl GetServerAddress() const;
    void SetServerAddress(const QUrl& address);

    // Why a text cannot be the address of a version server, in the user's words; empty when it can.
    static QString AddressProblem(const QString& text);

    // Certificates (PEM file, absolute) that the server's may be signed by, beside those the system trusts;
    // empty for none.
    QString GetCaFile() const { return Read(caFileKey).toString(); }
    void SetCaFile(const QString& path)
    {
        if (path != GetCaFile() && Write(caFileKey, path))
            emit SigCaFileChanged(path);
    }

    // Why a file cannot be used for that, in the user's words; empty when it can.
    static QString CaFileProblem(const QString& path);

    ThemeChoice GetTheme() const;
    void SetTheme(ThemeChoice theme);

    // Size of everything in percent of its design: one of AllScales(), 100 at first.
    static const QVector<int>& AllScales();
    int GetScale() const;
    void SetScale(int percent);

    DateLanguage GetDateLanguage() const;
    void SetDateLanguage(DateLanguage language);

    // Account id that was used last; offered again at the next sign-in.
    QString GetLastAccount() const { return Read(accountKey).toString(); }
    void SetLastAccount(const QString& account) { Write(accountKey, account); }

    // Whether the user last wanted to stay signed in to a server.
    bool GetStaySignedIn() const { return Read(stayKey, false).toBool(); }
    void SetStaySignedIn(bool stay) { Write(stayKey, stay); }

    // Super administrator; only the embedded server's accounts can be switched.
    bool GetSuperAdmin() const { return Read(superAdminKey, false).toBool(); }
    void SetSuperAdmin(bool superAdmin)
    {
        if (superAdmin != GetSuperAdmin() && Write(superAdminKey, superAdmin))
            emit SigSuperAdminChanged(superAdmin);
    }

    // Whether the sample apps were offered to the embedded server once.
    bool GetSamplesInstalled() const { return Read(samplesKey, false).toBool(); }
    void SetSamplesInstalled(bool installed) { Write(samplesKey, installed); }

    // The user's own folder of packages to install, absolute; empty for none.
    QString GetWheelFolder() const { return Read(wheelFolderKey).toString(); }
    void SetWheelFolder(const QString& folder)
    {
        if (folder != GetWheelFolder() && Write(wheelFolderKey, folder))
            emit SigWheelFolderChanged(folder);
    }

    // Whether each page says once what to do first there. Switched on again it says it anew.
    bool GetTips() const { return Read(tipsKey, true).toBool(); }
    void SetTips(bool tips);
    QStringList GetSeenTips() const { return Read(seenTipsKey).toStringList(); }
    void AddSeenTip(const QString& place);

    // Whether what the user does is told to the version service, for its statistics.
    bool GetUsageReports() const { return Read(usageReportsKey, true).toBool(); }
    void SetUsageReports(bool reports)
    {
        if (reports != GetUsageReports() && Write(usageReportsKey, reports))
            emit SigUsageReportsChanged(reports);
    }

    // Whether runs are kept on this machine, with their logs.
    bool GetKeepsRuns() const { return Read(keepsRunsKey, true).toBool(); }
    void SetKeepsRuns(bool keeps)
    {
        if (keeps != GetKeepsRuns() && Write(keepsRunsKey, keeps))
            emit SigKeepsRunsChanged(keeps);
    }

signals:
    void SigServerChanged();
    void SigThemeChanged(ThemeChoice theme);
    void SigCaFileChanged(const QString& path);
    void SigScaleChanged(int percent);
    void SigDateLanguageChanged(DateLanguage language);
    void SigSuperAdminChanged(bool superAdmin);
    void SigWheelFolderChanged(const QString& folder);
    void SigTipsChanged(bool tips);
    void SigUsageReportsChanged(bool reports);
    void SigKeepsRunsChanged(bool keeps);

private:
    static constexpr char embeddedKey[] = "server/embedded";
    static constexpr char addressKey[] = "server/address";
    static constexpr char caFileKey[] = "server/caFile";
    static constexpr char accountKey[] = "server/account";
    static constexpr char stayKey[] = "server/staySignedIn";
    static constexpr char samplesKey[] = "server/samplesInstalled";
    static constexpr char themeKey[] = "look/theme";
    static constexpr char scaleKey[] = "look/scale";
    static constexpr char dateKey[] = "look/dateLanguage";
    static constexpr char superAdminKey[] = "embedded/superAdmin";
    static constexpr char wheelFolderKey[] = "packages/wheelFolder";
    static constexpr char tipsKey[] = "help/tips";
    static constexpr char usageReportsKey[] = "usage/reports";
    static constexpr char keepsRunsKey[] = "runs/keep";
    static constexpr char seenTipsKey[] = "help/seenTips";

    QVariant Read(const char* key, const QVariant& initially = {}) const
    {
        return store.value(QLatin1String(key), initially);
    }
    // True when the value was another one.
    bool Write(const char* key, const QVariant& value);

    QSettings store;
};
