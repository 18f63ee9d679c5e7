// SPDX-License-Identifier: Apache-2.0

#include <WbSystem/RegularFile.h>

#include <QFile>
#include <QFileInfo>

// There are no pipes in folders here.
bool RegularFile::Open(QFile* file, const QString& path, QString* problem)
{
    const QFileInfo facts(path);
    if (!facts.isFile() || facts.isSymLink()) {
        *problem = facts.exists() || facts.isSymLink() ? QStringLiteral("不是普通文件")
                                                       : QStringLiteral("无法打开：文件不存在");
        return false;
    }
    file->setFileName(path);
    if (file->open(QIODevice::ReadOnly))
        return true;
    *problem = QStringLiteral("无法打开：%1").arg(file->errorString());
    return false;
}
