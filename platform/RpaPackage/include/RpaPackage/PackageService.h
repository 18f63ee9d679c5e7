// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaPackage/IPackageService.h>

#include <QStringList>
#include <QVector>

#include <chrono>
#include <memory>

// Where packages come from and go to.
struct RPAPACKAGE_EXPORT PackageSettings
{
    QString dataFolder; // absolute; each app has an environment of its own below it. Empty: no installing
    QStringList wheelFolders; // absolute folders of wheels, for machines without a network
    QString indexUrl;         // package index, https; empty: only the folders
    QString python;           // makes the environments; empty: the engine's interpreter
    // A whole installation, counted from its start; at its end whatever still runs is killed.
    std::chrono::milliseconds timeout = std::chrono::minutes(10);
};

// One package that the app wants, and how it stands.
struct RPAPACKAGE_EXPORT PackageState
{
    // How it stands in the environment of the app.
    enum Status
    {
        Unknown, // not looked at yet
        Installed,
        Missing,
        Failed, // the last installation could not provide it; problem says why
    };

    QString name;
    QString version;          // wanted; empty: any
    QString installedVersion; // empty: none
    Status status = Unknown;
    QString problem; // in the user's words
};

// The platform's own package service: an environment of its own for each app (Python's venv, which also sees
// the packages of the system), filled by pip. Only wheels are taken, because anything else would run a
// stranger's code while it is installed. Several installations are done one after another. GUI thread only;
// Python and pip run as child processes without the user's Python settings.
class RPAPACKAGE_EXPORT PackageService : public IPackageService
{
    Q_OBJECT

public:
    explicit PackageService(QObject* parent = nullptr);
    // Ends like Shutdown(), but announces nothing.
    ~PackageService() override;

    // Count for installations that start from now on.
    void SetSettings(const PackageSettings& settings);
    PackageSettings GetSettings() const;

    // The app that lists and installations are about from now on; installations under way keep theirs. Told
    // by the workstation before it opens an editor. The list of the app before is forgotten.
    void SetApp(const QString& appId);
    QString GetApp() const;

    // SigInstallFinished exactly once for each call, never inside it: also when the text is no list, when
    // nothing had to be done, when it failed or took too long, and at Shutdown(). The list becomes the
    // current one. Packages that are there already are not installed again.
    void Install(const QString& json) override;
    void Reset(const QString& json) override;

    // Installs the current list without SigInstallFinished, which belongs to those who called Install().
    void InstallCurrent();

    // Makes the list the current one and tells the app through SigSaveConfig.
    void Save(const QString& json);

    // Whether an app listens for Save() now. A visual one does not: its process decides what it needs.
    bool IsListTaken() const;

    // JSON text of the current list, as given.
    QString GetConfiguration() const;

    // The current list, in its order.
    QVector<PackageState> GetStates() const;

    // Looks which packages of the current list are there; SigStatesChanged follows.
    void Refresh();

    // Folders with the packages of the current app, for Python's module path; empty before something was
    // installed.
    QStringList GetPackageFolders() const;

    // How many installations are under way or wait.
    int GetPendingCount() const;

    // Whether somebody who called Install() still waits for SigInstallFinished.
    bool IsAwaited() const;

    // Ends every installation, from the event loop: each is answered as ever.
    void Cancel();
    // Whether the last installation for the current app was cancelled, so that packages may be missing of
    // which nothing was said.
    bool IsCut() const;

    // Kills what runs and answers everything outstanding. The service can be used again afterwards.
    void Shutdown();

    // Why a text cannot be the name of a package, in the user's words; empty when it can. Names follow the
    // rules of Python's index (letters, digits, ".", "_", "-"), so that none can be taken for an option, a
    // file or an address.
    static QString NameProblem(const QString& name);
    // Likewise for a version: empty for any, else one exact version such as "3.1.2".
    static QString VersionProblem(const QString& version);

signals:
    // Any change of GetStates() or of the current list.
    void SigStatesChanged();
    // step of steps, what is being done. Ends with SigInstallationEnded.
    void SigProgress(int step, int steps, const QString& text);
    // What pip said, one line at a time; at most 500 lines of 1,000 characters per installation.
    void SigOutput(const QString& line);
    // An installation is over, before its SigInstallFinished. problem: empty when every package is there.
    void SigInstallationEnded(const QString& problem);
    // GetPendingCount() or IsAwaited() may have changed; of an installation that is over before its
    // SigInstallFinished.
    void SigPendingChanged();
    // GetPackageFolders() may have changed.
    void SigPackageFoldersChanged();

private:
    class Private;
    const std::unique_ptr<Private> d;
};
