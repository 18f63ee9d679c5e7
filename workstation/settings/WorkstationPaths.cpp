// SPDX-License-Identifier: Apache-2.0

#include "WorkstationPaths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace
{
WorkstationPaths Tree(const QString& dataDir, const QString& settingsFile)
{
    WorkstationPaths paths;
    paths.settingsFile = settingsFile;
    paths.dataDir = dataDir;
    paths.serverDataDir = dataDir + QStringLiteral("/server");
    paths.keptSignInFile = dataDir + QStringLiteral("/kept-sign-in");
    paths.visualTemplateDir = dataDir + QStringLiteral("/templates/visual");
    paths.programTemplateDir = dataDir + QStringLiteral("/templates/program");
    paths.packageDir = dataDir + QStringLiteral("/packages");
    paths.wheelDir = dataDir + QStringLiteral("/wheels");
    paths.openedAppsFile = dataDir + QStringLiteral("/opened-apps.json");
    paths.draftDir = dataDir + QStringLiteral("/drafts");
    paths.usageDir = dataDir + QStringLiteral("/usage");
    paths.runDir = dataDir + QStringLiteral("/runs");
#ifdef Q_OS_WIN
    const QString program = QStringLiteral("/rpa-version-server.exe");
#else
    const QString program = QStringLiteral("/rpa-version-server");
#endif
    paths.serverProgram = QCoreApplication::applicationDirPath() + program;
    return paths;
}
} // namespace

WorkstationPaths WorkstationPaths::ForThisUser()
{
    return Tree(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation),
                QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) +
                    QStringLiteral("/workstation.ini"));
}

WorkstationPaths WorkstationPaths::Below(const QString& folder)
{
    return Tree(folder + QStringLiteral("/data"), folder + QStringLiteral("/workstation.ini"));
}

bool WorkstationPaths::Create() const
{
    QDir dir;
    for (const QString& folder : {dataDir, serverDataDir, visualTemplateDir, programTemplateDir, packageDir,
                                  wheelDir, QFileInfo(settingsFile).absolutePath()})
        if (!dir.mkpath(folder))
            return false;
    // Drafts and the store hold the author's work and with it, often, passwords typed into a process.
    return QFile::setPermissions(dataDir, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}
