// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVector>

#include <functional>

class QWidget;

// One picture of the gallery: a window that shows widgets in their states.
struct GalleryPage
{
    QString name;
    std::function<QWidget*()> make;
};

QVector<GalleryPage> GalleryPages();
