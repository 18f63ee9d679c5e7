// SPDX-License-Identifier: Apache-2.0

#include "ZipWriter_p.h"

#include <QIODevice>
#include <QtEndian>

#include <array>
#include <zlib.h>

namespace
{
constexpr int localHeaderBytes = 30;
constexpr quint16 version = 20; // of the format, the first one with deflate
constexpr quint16 deflateMethod = 8;
constexpr quint16 namesAreUtf8 = 0x800;
constexpr quint16 firstDay = 0x21; // 1980-01-01: the same content gives the same file

class Fields
{
public:
    Fields& Short(quint16 value) { return Add(value); }
    Fields& Long(quint32 value) { return Add(value); }
    QByteArray bytes;

private:
    template <typename Number>
    Fields& Add(Number value)
    {
        const Number ordered = qToLittleEndian(value);
        bytes.append(reinterpret_cast<const char*>(&ordered), int(sizeof ordered));
        return *this;
    }
};
} // namespace

struct ZipWriter::Entry
{
    QByteArray name;
    quint32 crc = 0;
    quint32 packedBytes = 0;
    quint32 bytes = 0;
    quint32 place = 0;
};

class ZipWriter::Packing
{
public:
    Packing() { isGood = deflateInit2(&stream, 6, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) == Z_OK; }
    ~Packing() { deflateEnd(&stream); }
    Q_DISABLE_COPY(Packing)

    QByteArray Take(const QByteArray& bytes, bool isLast)
    {
        QByteArray packed;
        std::array<char, 64 * 1024> buffer{};
        stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.constData()));
        stream.avail_in = uInt(bytes.size());
        do {
            stream.next_out = reinterpret_cast<Bytef*>(buffer.data());
            stream.avail_out = uInt(buffer.size());
            deflate(&stream, isLast ? Z_FINISH : Z_NO_FLUSH);
            packed.append(buffer.data(), int(buffer.size() - stream.avail_out));
        } while (stream.avail_out == 0);
        return packed;
    }

    bool isGood = false;

private:
    z_stream stream{};
};

ZipWriter::ZipWriter(QIODevice& given) : device(given) {}

ZipWriter::~ZipWriter() = default;

// What a local header and one of the directory have in common.
QByteArray ZipWriter::HeadOf(const Entry& entry)
{
    Fields fields;
    fields.Short(version).Short(namesAreUtf8).Short(deflateMethod).Short(0).Short(firstDay);
    fields.Long(entry.crc).Long(entry.packedBytes).Long(entry.bytes);
    fields.Short(quint16(entry.name.size())).Short(0);
    return fields.bytes;
}

void ZipWriter::Begin(const QByteArray& name)
{
    End();
    Entry entry;
    entry.name = name;
    entry.crc = quint32(crc32(0, nullptr, 0));
    entry.place = quint32(device.pos());
    entries.append(entry);
    packing = std::make_unique<Packing>();
    isGood = isGood && packing->isGood;
    Put(Fields().Long(0x04034b50).bytes + HeadOf(entry) + name);
}

void ZipWriter::Write(const QByteArray& bytes)
{
    Entry& entry = entries.last();
    entry.crc =
        quint32(crc32(entry.crc, reinterpret_cast<const Bytef*>(bytes.constData()), uInt(bytes.size())));
    isGood = isGood && quint32(bytes.size()) <= 0xffffffffU - entry.bytes;
    entry.bytes += quint32(bytes.size());
    const QByteArray packed = packing->Take(bytes, false);
    entry.packedBytes += quint32(packed.size());
    Put(packed);
}

void ZipWriter::End()
{
    if (!packing)
        return;
    Entry& entry = entries.last();
    const QByteArray packed = packing->Take(QByteArray(), true);
    entry.packedBytes += quint32(packed.size());
    Put(packed);
    packing.reset();
    // Check sum and lengths are known only now.
    const qint64 end = device.pos();
    isGood = isGood && device.seek(entry.place);
    Put(Fields().Long(0x04034b50).bytes + HeadOf(entry));
    isGood = isGood && device.seek(end);
}

bool ZipWriter::Finish()
{
    End();
    const qint64 start = device.pos();
    for (const Entry& entry : qAsConst(entries)) {
        Fields fields;
        fields.Long(0x02014b50).Short(version);
        Put(fields.bytes + HeadOf(entry) +
            Fields().Short(0).Short(0).Short(0).Long(0).Long(entry.place).bytes + entry.name);
    }
    const qint64 length = device.pos() - start;
    Fields end;
    end.Long(0x06054b50).Short(0).Short(0).Short(quint16(entries.size())).Short(quint16(entries.size()));
    end.Long(quint32(length)).Long(quint32(start)).Short(0);
    Put(end.bytes);
    return isGood && device.pos() < 0xffffffffLL;
}

void ZipWriter::Put(const QByteArray& bytes)
{
    isGood = isGood && device.write(bytes) == bytes.size();
}
