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
            return Keep(lossless, png, bounded);
        // Photographs grow fourfold as PNG; transparency leaves no choice.
        const QByteArray bytes = bounded.hasAlphaChannel() ? lossless : Encoded(bounded, jpeg);
        if (bytes.size() <= maximumBytes)
            return Keep(bytes, bounded.hasAlphaChannel() ? png : jpeg, bounded);
        side = side * 3 / 4;
    }
    return {};
}

QString RichImages::AddEncoded(const QByteArray& bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QByteArray format = reader.format();
    // The header is asked first: a small file may claim a picture that fills the memory.
    const QSize size = reader.size();
    if (!IsWebFormat(format) || !size.isValid() || qint64(size.width()) * size.height() > maximumPixels)
        return {};
    const QImage image = reader.read();
    if (image.isNull())
        return {};
    const bool keepsLimits = bytes.size() <= maximumBytes && size.width() <= maximumSide &&
                             size.height() <= maximumSide &&
                             reader.transformation() == QImageIOHandler::TransformationNone;
    return keepsLimits ? Keep(bytes, format, image) : Add(image);
}

QString RichImages::AddDataUri(const QString& uri)
{
    const int comma = uri.indexOf(QLatin1Char(','));
    const QString head = uri.left(qMax(comma, 0)).toLower();
    if (!head.startsWith(QLatin1String("data:image/")) || !head.endsWith(QLatin1String(";base64")))
        return {};
    if (uri.size() > maximumBytes * 16)
        return {};
    return AddEncoded(QByteArray::fromBase64(uri.midRef(comma + 1).toLatin1()));
}

void RichImages::Clear()
{
    pictures.clear();
    totalBytes = 0;
}

QString RichImages::Keep(const QByteArray& bytes, const QByteArray& format, const QImage& image)
{
    const QByteArray hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex();
    const QString name = QLatin1String("picture:") + QString::fromLatin1(hash);
    if (pictures.contains(name))
        return name;
    if (totalBytes + bytes.size() > maximumTotalBytes)
        return {};
    const QByteArray uri = "data:image/" + format + ";base64," + bytes.toBase64();
    pictures.insert(name, Picture{image, QString::fromLatin1(uri)});
    totalBytes += bytes.size();
    return name;
}
