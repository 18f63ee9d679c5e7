// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

// The guide as it comes with the program.
struct GuidePage
{
    QString file;
    QString title;
    QStringList headings; // of the second level
};

namespace GuidePages
{
// In the order in which they are read.
const QVector<GuidePage>& All();

QString FolderAddress();
} // namespace GuidePages
