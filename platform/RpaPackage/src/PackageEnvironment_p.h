// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

// The folder of one app's own Python below the data folder.
class PackageEnvironment
{
public:
    PackageEnvironment() = default;
    PackageEnvironment(const QString& dataFolder, const QString& appId);

    QString GetFolder() const { return folder; }
    QString GetPython() const;

    // Made completely; a creation that was interrupted does not count.
    bool IsReady() const;
    bool MarkReady() const;

    // Where installed modules lie; empty when there is no environment.
    QStringList GetPackageFolders() const;

    // The name of the app's folder: what of the id is harmless in a file name, and enough of its hash that no
    // two apps meet on a file system that ignores case.
    static QString FolderName(const QString& appId);

private:
    QString folder;
};
