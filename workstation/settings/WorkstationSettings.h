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
    bool GetEmbeddedServer() const;
    void SetEmbeddedServer(bool embedded);

    QUrl GetServerAddress() const;
    void SetServerAddress(const QUrl& address);

    // Why a text cannot be the address of a version server, in the user's words; empty when it can.
    static QString AddressProblem(const QString& text);

    // Certificates (PEM file, absolute) that the server's may be signed by, beside those the system trusts;
    // empty for none.
    QString GetCaFile() const;
    void SetCaFile(const QString& path);

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
    QString GetLastAccount() const;
    void SetLastAccount(const QString& account);

    // Whether the user last wanted to stay signed in to a server.
    bool GetStaySignedIn() const;
    void SetStaySignedIn(bool stay);

    // Super administrator; only the embedded server's accounts can be switched.
    bool GetSuperAdmin() const;
    void SetSuperAdmin(bool superAdmin);

    // Whether the sample apps were offered to the embedded server once.
    bool GetSamplesInstalled() const;
    void SetSamplesInstalled(bool installed);

    // The user's own folder of packages to install, absolute; empty for none.
    QString GetWheelFolder() const;
    void SetWheelFolder(const QString& folder);

    // Whether each page says once what to do first there. Switched on again it says it anew.
    bool GetTips() const;
    void SetTips(bool tips);
    QStringList GetSeenTips() const;
    void AddSeenTip(const QString& place);

    // Whether what the user does is told to the version service, for its statistics.
    bool GetUsageReports() const;
    void SetUsageReports(bool reports);

    // Whether runs are kept on this machine, with their logs.
    bool GetKeepsRuns() const;
    void SetKeepsRuns(bool keeps);

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
    // True when the value was another one.
    bool Write(const char* key, const QVariant& value);

    QSettings store;
};
