// SPDX-License-Identifier: Apache-2.0

#include "TourReport.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <cstdio>

TourReport::TourReport(const QString& folder) : dir(folder)
{
    dir.mkpath(QStringLiteral("."));
    for (const QString& old : dir.entryList({QStringLiteral("[0-9]*-*.png")}, QDir::Files))
        dir.remove(old);
    dir.remove(QStringLiteral("report.json"));
}

void TourReport::Add(const QString& step, bool held, qint64 ms, const QImage& picture, const QString& message)
{
    QString fileName;
    if (!picture.isNull()) {
        fileName = QStringLiteral("%1-%2.png").arg(steps.size() + 1, 3, 10, QLatin1Char('0')).arg(step);
        if (!picture.save(dir.filePath(fileName)))
            fileName.clear();
    }
    const bool complete = held && !fileName.isEmpty();
    heldAll = heldAll && complete;
    steps.append(QJsonObject{{QStringLiteral("step"), step},
                             {QStringLiteral("held"), complete},
                             {QStringLiteral("ms"), ms},
                             {QStringLiteral("picture"), fileName},
                             {QStringLiteral("message"), message}});
    Write();
    std::printf("%s %-40s %6lld ms  %s\n", complete ? "held  " : "FAILED", qPrintable(step),
                static_cast<long long>(ms), qPrintable(message));
    std::fflush(stdout);
}

void TourReport::AddForeignTexts(const QStringList& texts)
{
    heldAll = heldAll && texts.isEmpty();
    foreignTexts = QJsonArray::fromStringList(texts);
    Write();
    for (const QString& text : texts)
        std::printf("NOT CHINESE: %s\n", qPrintable(text));
}

void TourReport::Write() const
{
    QSaveFile file(GetFile());
    if (file.open(QIODevice::WriteOnly)) {
        const QJsonObject report{{QStringLiteral("held"), EveryStepHeld()},
                                 {QStringLiteral("foreignTexts"), foreignTexts},
                                 {QStringLiteral("steps"), steps}};
        file.write(QJsonDocument(report).toJson());
        file.commit();
    }
}
