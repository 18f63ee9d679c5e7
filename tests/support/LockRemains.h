// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>
#include <QTest>

// What a lock file may hold when nobody holds the lock: rows for a test with the column "content".
namespace LockRemains
{
inline void AddRows()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("garbage") << QByteArray("\0\xff what is this\n\n", 17);
    QTest::newRow("a number only") << QByteArray::number(QCoreApplication::applicationPid());
    // After the restart of a container the dead process had the number, name and machine of a living one.
    QTest::newRow("the number of a living process")
        << QByteArray::number(QCoreApplication::applicationPid()) + '\n' +
               QFileInfo(QCoreApplication::applicationFilePath()).fileName().toUtf8() + '\n' +
               QSysInfo::machineHostName().toUtf8() + '\n';
}

inline bool Leave(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}
} // namespace LockRemains
