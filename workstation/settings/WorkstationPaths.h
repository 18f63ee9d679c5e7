// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

// Where the workstation keeps and finds things. All folders exist after Create().
struct WorkstationPaths
{
    QString settingsFile;       // settings of this user, an .ini file
    QString dataDir;            // everything below belongs to the workstation alone, mode 0700
    QString serverDataDir;      // store of the embedded version server
    QString keptSignInFile;     // token of a sign-in that stays
    QString visualTemplateDir;  // templates of visual apps
    QString programTemplateDir; // templates of program apps
    QString packageDir;         // Python packages of the apps
    QString wheelDir;           // wheels put here by hand are installed without a network
    QString openedAppsFile;     // which apps were opened when
    QString draftDir;           // unsaved work; made by the journal
    QString usageDir;           // usage events that wait to be sent; made by the monitor
    QString runDir;             // runs that are kept; made by the history
    QString serverProgram;      // rpa-version-server

    // The folders of the signed-in user of this machine, and the server that stands beside the program.
    static WorkstationPaths ForThisUser();

    // The same tree below one folder.
    static WorkstationPaths Below(const QString& folder);

    // False when a folder can neither be found nor made.
    bool Create() const;
};
