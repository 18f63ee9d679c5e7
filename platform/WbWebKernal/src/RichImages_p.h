#pragma once

#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QString>

// The pictures of one text. The text names a picture by a short name, because the layout turns the name into
// a URL at every paint and a data URI of a megabyte there costs more than the painting; only the stored text
// carries the data.
class RichImages
{
public:
    static constexpr int maximumSide = 1600;
    static constexpr int maximumPixels = 32 * 1024 * 1024;
    static constexpr int maximumBytes = 1024 * 1024;
    static constexpr int maximumTotalBytes = 24 * 1024 * 1024;

    // Takes a picture in scaled down to the limits; an empty name when it is null or the text is full.
    QString Add(const QImage& image);

    // Takes encoded bytes in as they are where they keep the limits, else as Add(QImage). Empty when they are
    // no picture.
    QString AddEncoded(const QByteArray& bytes);

    // Takes "data:image/...;base64,..." in; empty when it is anything else.
    QString AddDataUri(const QString& uri);

    bool Contains(const QString& name) const { return pictures.contains(name); }
    QImage Image(const QString& name) const { return pictures.value(name).image; }
    QString DataUri(const QString& name) const { return pictures.value(name).uri; }

    void Clear();

private:
    struct Picture
    {
        QImage image;
        QString uri;
    };

    QString Keep(const QByteArray& bytes, const QByteArray& format, const QImage& image);

    QHash<QString, Picture> pictures;
    qint64 totalBytes = 0;
};
