// SPDX-License-Identifier: Apache-2.0

#include "IconDrawing_p.h"
#include "IconEngine_p.h"

#include <WbBaseUI/WbIcons.h>

#include <QDir>
#include <QFile>
#include <QHash>
#include <QPainter>
#include <QPixmapCache>

#include <memory>

namespace
{
QString IconPath(const QString& name)
{
    return QStringLiteral(":/wb/icons/%1.svg").arg(name);
}

const IconDrawing& DrawingOf(const QString& name)
{
    static QHash<QString, IconDrawing> drawings;
    const auto known = drawings.constFind(name);
    if (known != drawings.constEnd())
        return known.value();
    QFile file(IconPath(name));
    const QByteArray svg = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    return drawings.insert(name, IconDrawing::FromSvg(svg)).value();
}
} // namespace

QIcon WbIcons::Get(const QString& name, WbColor color)
{
    if (!QFile::exists(IconPath(name)))
        return {};
    // QIcon takes the engine over.
    return QIcon(std::make_unique<IconEngine>(name, color).release());
}

QPixmap WbIcons::Pixmap(const QString& name, int size, WbColor color, qreal ratio)
{
    const QColor ink = WbTheme::Instance()->Color(color);
    const QString key =
        QStringLiteral("WbIcons/%1/%2/%3/%4").arg(name).arg(size).arg(ratio).arg(ink.rgba(), 0, 16);
    QPixmap picture;
    if (QPixmapCache::find(key, &picture))
        return picture;
    const IconDrawing& drawing = DrawingOf(name);
    if (size <= 0 || drawing.IsEmpty())
        return {};
    const int pixels = qRound(size * ratio);
    picture = QPixmap(pixels, pixels);
    picture.fill(Qt::transparent);
    {
        QPainter painter(&picture);
        drawing.Paint(painter, QRectF(0, 0, pixels, pixels), ink);
    }
    picture.setDevicePixelRatio(ratio);
    QPixmapCache::insert(key, picture);
    return picture;
}

QStringList WbIcons::Names()
{
    QStringList names = QDir(QStringLiteral(":/wb/icons")).entryList(QDir::Files, QDir::Name);
    for (QString& name : names)
        name.chop(int(qstrlen(".svg")));
    return names;
}
