// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QJsonArray>
#include <QString>

// What the tour did: a picture per step and report.json in one folder. Written after every step, so that it
// is there even when the tour dies in the middle.
class TourReport
{
public:
    // The folder is made; old pictures and an old report in it are removed.
    explicit TourReport(const QString& folder);

    // Texts of the program that are not in its user's language.
    void AddForeignTexts(const QStringList& texts);

    // Notes a step. message: why it did not hold, or a remark.
    void Add(const QString& step, bool held, qint64 ms, const QImage& picture, const QString& message);

    bool EveryStepHeld() const { return heldAll && !steps.isEmpty(); }
    QString GetFile() const { return dir.filePath(QStringLiteral("report.json")); }

private:
    void Write() const;

    QDir dir;
    QJsonArray steps;
    QJsonArray foreignTexts;
    bool heldAll = true;
};
