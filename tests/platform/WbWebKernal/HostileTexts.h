// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVector>

// Texts that were made to hang or to fill whoever lays them out, and as many others as wanted.
namespace HostileTexts
{
struct Text
{
    QString name;
    QString html;
};

// One for each known weakness of a layout, far beyond what may be laid out.
QVector<Text> BeyondEveryLimit();

// The most expensive ones that may still be laid out.
QVector<Text> AtTheLimits();

// Tags, attributes, entities and pictures thrown together; the same for the same seed.
Text Random(quint32 seed);

// A PNG that says it has this size and holds nothing of it.
QString EmptyPicture(quint32 width, quint32 height);
} // namespace HostileTexts
