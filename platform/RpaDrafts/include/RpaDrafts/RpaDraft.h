// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QDateTime>
#include <QString>

// Unsaved work of one app and version as the journal keeps it.
struct RpaDraft
{
    QString name;    // of its file in the journal's folder
    QString account; // who worked on it
    QString appId;
    QString versionId;    // empty: no version was saved yet
    int baseRevision = 0; // of the version, when the work began; 0: none
    QDateTime writtenAt;  // UTC
    QByteArray sha256;    // of the content, lower-case hex
    QByteArray content;   // app data as JSON
    // SHA-256, lower-case hex, of what saves sent since the base and nobody answered: if that is what the
    // version holds now, this work goes on from it. Oldest first, the newest 16.
    QByteArrayList inDoubt;
};
