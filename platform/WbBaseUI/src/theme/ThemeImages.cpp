// SPDX-License-Identifier: Apache-2.0

#include "IconDrawing_p.h"
#include "ThemeImages_p.h"
#include "ThemeTokens_p.h"

#include <QFile>
#include <QImage>
#include <QPainter>

namespace
{
constexpr int highResolution = 2;

bool WritePicture(const IconDrawing& drawing, const QString& path, int pixels, const QColor& color)
{
    if (QFile::exists(path))
        return true;
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.Paint(painter, QRectF(0, 0, pixels, pixels), color);
    painter.end();
    return image.save(path, "PNG");
}

QColor ColorByName(const QString& name, WbTheme::Scheme scheme)
{
    for (const ColorToken& token : ColorTokens())
        if (name == QLatin1String(token.name))
            return WbTheme::Color(token.color, scheme);
    return {};
}
} // namespace

QString ThemeImages::PathFor(const QString& icon, const QString& colorName, int size, WbTheme::Scheme scheme)
{
    QFile svg(QStringLiteral(":/wb/icons/%1.svg").arg(icon));
    const QColor color = ColorByName(colorName, scheme);
    if (!folder.isValid() || !color.isValid() || size <= 0 || !svg.open(QIODevice::ReadOnly))
        return {};
    const IconDrawing drawing = IconDrawing::FromSvg(svg.readAll());
    const QString base =
        QStringLiteral("%1/%2-%3-%4")
            .arg(folder.path(), icon, color.name(QColor::HexRgb).mid(1), QString::number(size));
    const QString path = base + QLatin1String(".png");
    // Qt itself takes the second file on a screen of ratio 2.
    const bool written = WritePicture(drawing, path, size, color) &&
                         WritePicture(drawing, base + QLatin1String("@2x.png"), size * highResolution, color);
    return written ? path : QString();
}
