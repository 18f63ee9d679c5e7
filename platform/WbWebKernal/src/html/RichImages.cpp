// SPDX-License-Identifier: Apache-2.0

#include "RichImages_p.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QImageReader>

namespace
{
const QByteArray png = QByteArrayLiteral("png");
const QByteArray jpeg = QByteArrayLiteral("jpeg");

QByteArray Encoded(const QImage& image, const QByteArray& format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format.constData(), format == jpeg ? 85 : -1);
    return bytes;
}

bool IsWebFormat(const QByteArray& format)
{
    return format == png || format == jpeg || format == "gif" || format == "webp" || format == "bmp";
}
} // namespace

RichImages::RichImages() : decoded(decodedBytes) {}

RichImages::RichImages(const RichImages& other)
    : pictures(other.pictures), decoded(decodedBytes), totalBytes(other.totalBytes),
      totalPixels(other.totalPixels), scaledPixels(other.scaledPixels)
{
}

QString RichImages::Add(const QImage& image)
{
    if (image.isNull())
        return {};
    QImage bounded = image;
    int side = maximumSide;
    while (side > 16) {
        if (bounded.width() > side || bounded.height() > side)
            bounded = image.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        const QByteArray lossless = Encoded(bounded, png);
        if (lossless.size() <= maximumBytes / 4)
            return Keep(lossless, png, bounded.size());
        // Photographs grow fourfold as PNG; transparency leaves no choice.
        const QByteArray bytes = bounded.hasAlphaChannel() ? lossless : Encoded(bounded, jpeg);
        if (bytes.size() <= maximumBytes)
            return Keep(bytes, bounded.hasAlphaChannel() ? png : jpeg, bounded.size());
        side = side * 3 / 4;
    }
    return {};
}

QString RichImages::Take(const QByteArray& bytes, bool counted)
{
    full = false;
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QByteArray format = reader.format();
    // The header is asked first: a small file may claim a picture that fills the memory.
    const QSize size = reader.size();
    if (!IsWebFormat(format) || size.isEmpty() || qint64(size.width()) * size.height() > maximumPixels)
        return {};
    const bool keepsLimits = bytes.size() <= maximumBytes && size.width() <= maximumSide &&
                             size.height() <= maximumSide &&
                             reader.transformation() == QImageIOHandler::TransformationNone;
    if (keepsLimits)
        return Keep(bytes, format, size);
    // Writing the smaller picture costs as much as reading some millions of pixels.
    const qint64 pixels = qint64(size.width()) * size.height() + 2 * maximumSide * maximumSide;
    scaledPixels += counted ? pixels : 0;
    full = counted && scaledPixels > maximumScaledPixels;
    return full ? QString() : Add(reader.read());
}

QString RichImages::AddDataUri(const QString& uri)
{
    const int comma = uri.indexOf(QLatin1Char(','));
    full = false;
    const QString head = uri.left(qMax(comma, 0)).toLower();
    if (!head.startsWith(QLatin1String("data:image/")) || !head.endsWith(QLatin1String(";base64")))
        return {};
    if (uri.size() > maximumBytes * 16)
        return {};
    // A text's pictures are scaled down while it is opened, so all of them together are bounded.
    return Take(QByteArray::fromBase64(uri.midRef(comma + 1).toLatin1()), true);
}

// As it is painted: from an image a document makes a pixmap anew for each place that shows it.
QPixmap RichImages::Pixmap(const QString& name) const
{
    if (const QPixmap* kept = decoded.object(name))
        return *kept;
    const auto found = pictures.constFind(name);
    if (found == pictures.cend())
        return {};
    const QPixmap shown = QPixmap::fromImage(QImage::fromData(found->bytes, found->format.constData()));
    const qint64 bytes = qint64(shown.width()) * shown.height() * shown.depth() / 8;
    decoded.insert(name, new QPixmap(shown), qMax<int>(1, int(bytes)));
    return shown;
}

QString RichImages::DataUri(const QString& name) const
{
    const auto found = pictures.constFind(name);
    return found == pictures.cend()
               ? QString()
               : QString::fromLatin1("data:image/" + found->format + ";base64," + found->bytes.toBase64());
}

QString RichImages::Keep(const QByteArray& bytes, const QByteArray& format, const QSize& size)
{
    const QByteArray hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex();
    QString name = QLatin1String("picture:") + QString::fromLatin1(hash);
    if (pictures.contains(name))
        return name;
    const qint64 pixels = qint64(size.width()) * size.height();
    if (totalBytes + bytes.size() > maximumTotalBytes || totalPixels + pixels > maximumTotalPixels ||
        pictures.size() >= maximumCount) {
        full = true;
        return {};
    }
    pictures.insert(name, Picture{bytes, format});
    totalBytes += bytes.size();
    totalPixels += pixels;
    return name;
}
