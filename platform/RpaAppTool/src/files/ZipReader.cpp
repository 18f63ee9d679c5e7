// SPDX-License-Identifier: Apache-2.0

#include "ZipReader_p.h"

#include <QtEndian>

#include <array>
#include <zlib.h>

namespace
{
constexpr int endBytes = 22;
constexpr int centralBytes = 46;
constexpr int localBytes = 30;
constexpr int commentAtMost = 0xffff;
constexpr int entriesAtMost = 10000;
constexpr qint64 directoryAtMost = 8 * 1024 * 1024;
constexpr quint32 endMark = 0x06054b50;
constexpr quint32 centralMark = 0x02014b50;
constexpr quint32 localMark = 0x04034b50;
constexpr quint16 encrypted = 1;
constexpr quint16 stored = 0;
constexpr quint16 deflated = 8;

quint16 Short(const QByteArray& bytes, int at)
{
    return qFromLittleEndian<quint16>(bytes.constData() + at);
}

quint32 Long(const QByteArray& bytes, int at)
{
    return qFromLittleEndian<quint32>(bytes.constData() + at);
}

QByteArray BytesAt(QIODevice& device, qint64 place, qint64 length)
{
    const bool isInside = place >= 0 && length >= 0 && place <= device.size();
    return isInside && device.seek(place) ? device.read(length) : QByteArray();
}
} // namespace

ZipReader::ZipReader(QIODevice& given) : device(given)
{
    const qint64 tailStart = qMax<qint64>(0, device.size() - endBytes - commentAtMost);
    const QByteArray tail = BytesAt(device, tailStart, device.size() - tailStart);
    for (int at = tail.size() - endBytes; at >= 0; --at) {
        if (Long(tail, at) == endMark) {
            ReadDirectory(Long(tail, at + 16), Long(tail, at + 12), Short(tail, at + 10));
            return;
        }
    }
}

void ZipReader::ReadDirectory(qint64 place, qint64 length, int count)
{
    if (length > directoryAtMost || count > entriesAtMost || place + length > device.size())
        return;
    const QByteArray directory = BytesAt(device, place, length);
    int at = 0;
    for (int i = 0; i < count; ++i) {
        if (at + centralBytes > directory.size() || Long(directory, at) != centralMark)
            return;
        const int nameBytes = Short(directory, at + 28);
        const int size = centralBytes + nameBytes + Short(directory, at + 30) + Short(directory, at + 32);
        if (at + size > directory.size())
            return;
        const Entry entry{Short(directory, at + 10), Long(directory, at + 16), Long(directory, at + 20),
                          Long(directory, at + 24), Long(directory, at + 42)};
        const bool isReadable = (Short(directory, at + 8) & encrypted) == 0 &&
                                (entry.method == stored || entry.method == deflated);
        if (isReadable)
            entries.insert(QString::fromUtf8(directory.mid(at + centralBytes, nameBytes)), entry);
        at += size;
    }
    isValid = true;
}

std::unique_ptr<ZipEntry> ZipReader::Open(const QString& name, qint64 mostBytes) const
{
    const auto entry = entries.constFind(name);
    if (entry == entries.cend() || entry->bytes > mostBytes)
        return nullptr;
    const QByteArray head = BytesAt(device, entry->header, localBytes);
    if (head.size() < localBytes || Long(head, 0) != localMark)
        return nullptr;
    const qint64 place = entry->header + localBytes + Short(head, 26) + Short(head, 28);
    if (place + entry->packedBytes > device.size())
        return nullptr;
    return std::make_unique<ZipEntry>(device, place, *entry);
}

class ZipEntry::Private
{
public:
    Private(QIODevice& packed, qint64 start, const ZipReader::Entry& described)
        : device(packed), place(start), entry(described)
    {
    }

    // More of the packed bytes; false when there are none.
    bool Refill();
    qint64 Unpack(char* data, qint64 mostBytes);
    qint64 Copy(char* data, qint64 mostBytes);

    QIODevice& device;
    const qint64 place;
    const ZipReader::Entry entry;
    qint64 taken = 0;
    qint64 given = 0;
    uLong crc = crc32(0, nullptr, 0);
    z_stream stream{};
    std::array<char, 64 * 1024> buffer{};
    bool isInflating = false;
    bool isEnd = false;
    bool isBroken = false;
};

bool ZipEntry::Private::Refill()
{
    const qint64 wanted = qMin<qint64>(qint64(buffer.size()), entry.packedBytes - taken);
    const qint64 got = wanted > 0 && device.seek(place + taken) ? device.read(buffer.data(), wanted) : 0;
    if (got <= 0)
        return false;
    taken += got;
    stream.next_in = reinterpret_cast<Bytef*>(buffer.data());
    stream.avail_in = uInt(got);
    return true;
}

qint64 ZipEntry::Private::Unpack(char* data, qint64 mostBytes)
{
    stream.next_out = reinterpret_cast<Bytef*>(data);
    stream.avail_out = uInt(mostBytes);
    while (stream.avail_out > 0 && !isEnd && !isBroken) {
        if (stream.avail_in == 0 && !Refill()) {
            isBroken = true;
            break;
        }
        const int state = inflate(&stream, Z_NO_FLUSH);
        isEnd = state == Z_STREAM_END;
        isBroken = state != Z_OK && state != Z_STREAM_END;
    }
    return mostBytes - stream.avail_out;
}

qint64 ZipEntry::Private::Copy(char* data, qint64 mostBytes)
{
    if (stream.avail_in == 0 && !Refill()) {
        isEnd = true;
        return 0;
    }
    const qint64 count = qMin<qint64>(mostBytes, stream.avail_in);
    std::copy_n(reinterpret_cast<const char*>(stream.next_in), count, data);
    stream.next_in += count;
    stream.avail_in -= uInt(count);
    return count;
}

ZipEntry::ZipEntry(QIODevice& device, qint64 place, const ZipReader::Entry& entry)
    : d(std::make_unique<Private>(device, place, entry))
{
    if (entry.method == deflated)
        d->isInflating = inflateInit2(&d->stream, -MAX_WBITS) == Z_OK;
    d->isBroken = entry.method == deflated && !d->isInflating;
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

ZipEntry::~ZipEntry()
{
    if (d->isInflating)
        inflateEnd(&d->stream);
}

bool ZipEntry::atEnd() const
{
    return d->isEnd || d->isBroken;
}

bool ZipEntry::IsBroken() const
{
    return d->isBroken || (d->isEnd && (d->given != d->entry.bytes || d->crc != d->entry.crc));
}

int ZipEntry::GetPermille() const
{
    return d->entry.packedBytes > 0 ? int(d->taken * 1000 / d->entry.packedBytes) : 1000;
}

qint64 ZipEntry::readData(char* data, qint64 mostBytes)
{
    if (atEnd())
        return -1;
    // One more than announced is enough to know that the announcement is false.
    const qint64 wanted = qMin(mostBytes, d->entry.bytes - d->given + 1);
    const qint64 count = d->isInflating ? d->Unpack(data, wanted) : d->Copy(data, wanted);
    d->given += count;
    d->crc = crc32(d->crc, reinterpret_cast<const Bytef*>(data), uInt(count));
    d->isBroken = d->isBroken || d->given > d->entry.bytes;
    return d->isBroken ? -1 : count;
}
