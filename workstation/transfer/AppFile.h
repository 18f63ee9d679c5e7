// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/versions/VersionServiceContent.h>

#include <QFile>
#include <QSaveFile>

#include <memory>

// An app with all its versions as one file: a line of JSON about the app, then for each version a line of
// JSON about it and its app data, byte for byte. Slow; any thread, but one at a time per object.
namespace AppFile
{
constexpr int mostVersions = 500;
constexpr qint64 mostBytes = 1024LL * 1024 * 1024;

// What the first line tells.
struct Head
{
    QString name;
    int kind = 0;
    QStringList tags;
    int versions = 0;
};

// Makes a file; the place holds what it held before until all of it is there.
class Writer
{
public:
    // Each false with a problem in the user's words.
    bool Begin(const QString& path, const Head& head, QString* problem);
    bool Add(const VersionServiceContent& version, QString* problem);
    bool Finish(QString* problem);

private:
    bool Put(const QByteArray& bytes, QString* problem);

    std::unique_ptr<QSaveFile> file;
};

// Reads a file of anybody; nothing in it is believed.
class Reader
{
public:
    // False with a problem in the user's words when it is no app file.
    bool Open(const QString& path, Head* head, QString* problem);
    // The next version; whole, of the digest that the file tells, and an app.
    bool Next(VersionServiceContent* version, QString* problem);
    // Whether the file ends where it says.
    bool IsAtEnd() const { return file->atEnd(); }

private:
    std::unique_ptr<QFile> file;
    QStringList names;
};

// Reads all of the file and gives what it is about; false with the first problem.
bool Check(const QString& path, Head* head, QString* problem);
} // namespace AppFile
