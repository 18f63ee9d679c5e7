// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QIODevice>
#include <QMap>
#include <QString>

#include <memory>

// The entries of a ZIP file that nobody vouches for: places, lengths and check sums are believed only when
// they hold, and no entry gives more bytes than it is allowed to. Stored and deflated entries; neither
// encryption nor ZIP64. Any thread, one at a time.
class ZipReader
{
public:
    // The device is random access and stays open as long as the reader and its entries; not owned.
    explicit ZipReader(QIODevice& device);

    // False when it is no ZIP file that can be read.
    bool IsValid() const { return isValid; }
    bool Contains(const QString& name) const { return entries.contains(name); }

    struct Entry
    {
        quint16 method = 0;
        quint32 crc = 0;
        qint64 packedBytes = 0;
        qint64 bytes = 0;
        qint64 header = 0; // where its local header begins
    };

    // Its bytes in order; null when there is no such entry, or one longer than mostBytes. Whoever has read it
    // to the end asks ZipEntry::IsBroken().
    std::unique_ptr<class ZipEntry> Open(const QString& name, qint64 mostBytes) const;

private:
    void ReadDirectory(qint64 place, qint64 length, int count);

    QIODevice& device;
    QMap<QString, Entry> entries;
    bool isValid = false;
};

// The bytes of one entry. Sequential; reading it moves the device of its file.
class ZipEntry : public QIODevice
{
public:
    ZipEntry(QIODevice& device, qint64 place, const ZipReader::Entry& entry);
    ~ZipEntry() override;

    bool isSequential() const override { return true; }
    bool atEnd() const override;

    // Its bytes are not those that were packed: cut, changed, or more than announced.
    bool IsBroken() const;
    // How much of the packed bytes was taken, in thousandths.
    int GetPermille() const;

protected:
    qint64 readData(char* data, qint64 mostBytes) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    class Private;
    const std::unique_ptr<Private> d;
};
