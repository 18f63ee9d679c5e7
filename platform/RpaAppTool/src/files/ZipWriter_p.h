// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QVector>

#include <memory>

class QIODevice;

// Writes a ZIP file, one deflated entry after the other. Any thread, one at a time.
class ZipWriter
{
public:
    // The device can be written and seeked; not owned.
    explicit ZipWriter(QIODevice& given);
    ~ZipWriter();

    // Ends the entry before and begins one with this name.
    void Begin(const QByteArray& name);
    void Write(const QByteArray& bytes);
    // Writes the directory. False when the device refused something or the file became longer than a ZIP file
    // may be.
    bool Finish();

private:
    struct Entry;
    class Packing;
    void End();
    void Put(const QByteArray& bytes);
    static QByteArray HeadOf(const Entry& entry);

    QIODevice& device;
    QVector<Entry> entries;
    std::unique_ptr<Packing> packing;
    bool isGood = true;
};
