// SPDX-License-Identifier: Apache-2.0

#include "TemplateFile.h"

#include <WbFoundation/ContentLimits.h>
#include <WbFoundation/JsonGuard.h>
#include <WbFoundation/JsonReader.h>

#include <QDataStream>
#include <QtEndian>

#include <algorithm>

namespace
{
constexpr int headSize = 4;          // length of the string in bytes
constexpr int bytesPerUnit = 2;      // UTF-16
constexpr int bytesAround = 1 << 20; // name, description, the members' names
constexpr int mostRecordBytes = 2 * ContentLimits::totalBytes + bytesAround;

// Piece by piece: as a whole it would stand in memory twice.
QByteArray Utf8Of(const char* units, int count)
{
    constexpr int pieceUnits = 1 << 20;
    QByteArray utf8;
    utf8.reserve(count);
    QString piece;
    for (int at = 0; at < count;) {
        int size = std::min(pieceUnits, count - at);
        piece.resize(size);
        qFromBigEndian<ushort>(units + qint64(at) * bytesPerUnit, size, piece.data());
        if (size > 1 && at + size < count && piece.at(size - 1).isHighSurrogate())
            piece.resize(--size); // a pair stays together
        utf8 += piece.toUtf8();
        at += size;
    }
    return utf8;
}

// A stream reads nothing at all when the string is cut.
QByteArray RecordText(const QByteArray& file)
{
    if (file.size() <= headSize)
        return {};
    const auto bytes = qFromBigEndian<quint32>(file.constData());
    const bool isWhole = bytes <= quint32(file.size() - headSize) && bytes % bytesPerUnit == 0;
    return isWhole ? Utf8Of(file.constData() + headSize, int(bytes / bytesPerUnit)) : QByteArray();
}
} // namespace

qint64 TemplateFile::LargestBytes()
{
    return qint64(mostRecordBytes) * bytesPerUnit + headSize;
}

bool TemplateFile::Decode(const QByteArray& file, TemplateRecord* record, QString* problem)
{
    const QByteArray json = RecordText(file);
    if (json.isEmpty())
        return false;
    // The app is one string in the record, and is held against the limits for itself.
    JsonLimits limits;
    limits.sizeBytes = mostRecordBytes;
    limits.stringBytes = mostRecordBytes;
    JsonReader reader(json, limits);
    const IJsonParser::Commit commit = record->ReadJson(reader);
    if (!reader.Finish()) {
        *problem = reader.GetReason();
        return false;
    }
    commit();
    if (record->name.isEmpty())
        return false;
    return record->appData.isEmpty() || JsonGuard::Check(record->appData, problem);
}

QByteArray TemplateFile::Encode(const TemplateRecord& record)
{
    QByteArray file;
    QDataStream stream(&file, QIODevice::WriteOnly);
    stream << QString::fromUtf8(record.ToJson());
    return file;
}
