// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QCache>
#include <QHash>
#include <QImage>
#include <QPixmap>
#include <QString>

// The pictures of one text. The text names a picture by a short name, because the layout turns the name into
// a URL at every paint and a data URI of a megabyte there costs more than the painting; only the stored text
// carries the data. A picture that keeps the limits is decoded when it is painted first, and anew when it has
// not been painted for long.
class RichImages
{
public:
    static constexpr int maximumSide = 1600;
    static constexpr int maximumPixels = 32 * 1024 * 1024;
    static constexpr int maximumBytes = 1024 * 1024;
    static constexpr int maximumTotalBytes = 24 * 1024 * 1024;
    static constexpr qint64 maximumTotalPixels = 96 * 1024 * 1024;
    static constexpr int maximumCount = 2000;
    static constexpr qint64 maximumScaledPixels = 48 * 1024 * 1024; // of data URIs that must be scaled down
    static constexpr int decodedBytes = 128 * 1024 * 1024;          // that are kept at hand

    RichImages();
    // The same pictures, for another document.
    RichImages(const RichImages& other);
    RichImages& operator=(const RichImages&) = delete;

    // Takes a picture in scaled down to the limits; an empty name when it is null or the text is full.
    QString Add(const QImage& image);

    // Takes encoded bytes in as they are where they keep the limits, else as Add(QImage). Empty when they are
    // no picture.
    QString AddEncoded(const QByteArray& bytes) { return Take(bytes, false); }

    // Takes "data:image/...;base64,..." in; empty when it is anything else.
    QString AddDataUri(const QString& uri);

    bool Contains(const QString& name) const { return pictures.contains(name); }
    // GUI thread only.
    QPixmap Pixmap(const QString& name) const;
    QString DataUri(const QString& name) const;

    // The picture offered last was turned away because of those before it.
    bool IsFull() const { return full; }

private:
    struct Picture
    {
        QByteArray bytes;
        QByteArray format;
    };

    QString Keep(const QByteArray& bytes, const QByteArray& format, const QSize& size);
    QString Take(const QByteArray& bytes, bool counted);

    QHash<QString, Picture> pictures;
    mutable QCache<QString, QPixmap> decoded; // by their bytes
    qint64 totalBytes = 0;
    qint64 totalPixels = 0;
    qint64 scaledPixels = 0;
    bool full = false;
};
