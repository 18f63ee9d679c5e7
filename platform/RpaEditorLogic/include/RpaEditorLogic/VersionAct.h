// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

// A deletion or release that was asked for and is not answered yet.
struct VersionAct
{
    // What is done to the version.
    enum class Kind
    {
        Deletion,
        GrayRelease,
        Publication,
    };

    Kind kind = Kind::Deletion;
    QString appId;
    QString versionId;
    QString versionName;
};
