// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DateLanguage.h"

#include <RpaServiceClient/releases/ListReleasesRequest.h>
#include <RpaServiceClient/versions/ListSavesRequest.h>

// What is known of a version: its record, who saved it, and whether users have it.
struct VersionFacts
{
    QString id;
    QString name;
    QString description;
    int state = 1;                     // 1 develop, 2 gray, 3 online
    QVector<VersionServiceSave> saves; // newest first
    VersionServiceRelease release;     // without id: users never had it
};

// The same in the author's words.
namespace VersionWords
{
// As the list of versions shows it.
QString Name(const VersionFacts& version);

// Its state, and whether users have it now.
QString State(const VersionFacts& version, DateLanguage language);

// Who saved it and when.
QString Save(const VersionServiceSave& save, DateLanguage language);

// Which of the app's versions users have now.
QString UsersHave(const QVector<VersionServiceRelease>& releases);
} // namespace VersionWords
