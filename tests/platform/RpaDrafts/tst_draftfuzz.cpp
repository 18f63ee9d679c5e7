// SPDX-License-Identifier: Apache-2.0

// Draft files that something went over: each is either the draft that was written or set aside, never
// anything else, and nothing is deleted.
#include "DraftFile_p.h"
#include "DraftFolder_p.h"
#include "TestFolder.h"

#include <QDir>
#include <QFile>
#include <QtTest>

#include <random>

namespace
{
constexpr int decodings = 20000;
constexpr int files = 150;

RpaDraft Draft()
{
    RpaDraft draft;
    draft.account = QStringLiteral("作者");
    draft.appId = QStringLiteral("app-1");
    draft.versionId = QStringLiteral("version-1");
    draft.baseRevision = 3;
    draft.writtenAt = QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5, 678), Qt::UTC);
    draft.content = "{\"version\":\"1.0.0\",\"extendInfo\":{\"appId\":\"app-1\",\"manual\":\"文字\"}}";
    return draft;
}

bool IsSame(const RpaDraft& a, const RpaDraft& b)
{
    return a.account == b.account && a.appId == b.appId && a.versionId == b.versionId &&
           a.baseRevision == b.baseRevision && a.writtenAt == b.writtenAt && a.content == b.content;
}

class Mutator
{
public:
    explicit Mutator(quint32 seed) : random(seed) {}

    QByteArray Mutate(const QByteArray& file)
    {
        QByteArray changed = file;
        const int changes = 1 + Below(4);
        for (int i = 0; i < changes; ++i)
            Change(changed);
        return changed;
    }

private:
    int Below(int count) { return count > 0 ? int(random() % quint32(count)) : 0; }

    void Change(QByteArray& bytes)
    {
        const int at = Below(bytes.size());
        const int length = Below(bytes.size() - at + 1);
        switch (Below(7)) {
        case 0:
            bytes.truncate(at);
            break;
        case 1:
            if (!bytes.isEmpty())
                bytes[at] = char(bytes.at(at) ^ (1 << Below(8)));
            break;
        case 2:
            bytes.remove(at, length);
            break;
        case 3:
            bytes.insert(at, bytes.mid(Below(bytes.size()), length));
            break;
        case 4:
            bytes.insert(at, QByteArray(1 + Below(64), char(Below(256))));
            break;
        case 5: // a block that was never written
            bytes.replace(at, length, QByteArray(length, '\0'));
            break;
        default: // lengths are what readers trust
            bytes.replace(qMin(12, bytes.size()), 4, QByteArray(4, char(Below(256))));
        }
    }

    std::mt19937 random;
};
} // namespace

class DraftFuzzTest : public QObject
{
    Q_OBJECT

private slots:
    void readsTheDraftOrNothing();
    void readsTheDraftOrSetsTheFileAside();
    void believesNoHeaderWhoseDigestsFit();

private:
    // A failure names it; the environment repeats it.
    const quint32 seed = qEnvironmentVariableIsSet("RPA_FUZZ_SEED")
                             ? quint32(qEnvironmentVariableIntValue("RPA_FUZZ_SEED"))
                             : std::random_device()();
};

void DraftFuzzTest::readsTheDraftOrNothing()
{
    Mutator mutator(seed);
    RpaDraft written = Draft();
    const QByteArray file = DraftFile::Encode(&written);
    for (int i = 0; i < decodings; ++i) {
        const QByteArray changed = mutator.Mutate(file);
        RpaDraft read;
        QString problem;
        const bool isRead = DraftFile::Decode(changed, &read, &problem);
        const QByteArray where = "seed " + QByteArray::number(seed) + ", " + QByteArray::number(i);
        QVERIFY2(isRead ? IsSame(read, written) : !problem.isEmpty(), where.constData());
    }
}

void DraftFuzzTest::readsTheDraftOrSetsTheFileAside()
{
    Mutator mutator(seed + 1);
    const TestFolder place;
    const DraftFolder folder(place.path());
    for (int i = 0; i < files; ++i) {
        RpaDraft written = Draft();
        QString problem;
        QVERIFY2(folder.Write(&written, &problem), qPrintable(problem));
        const QByteArray changed = mutator.Mutate(DraftFile::Encode(&written));
        QFile file(place.filePath(written.name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(changed) == changed.size());
        file.close();

        RpaDraft read;
        const bool isRead = folder.Read(written.name, &read, &problem);

        const QByteArray where = "seed " + QByteArray::number(seed) + ", " + QByteArray::number(i);
        if (isRead) {
            QVERIFY2(IsSame(read, written), where.constData());
            QVERIFY2(folder.Remove(written.name, &problem), where.constData());
            continue;
        }
        QVERIFY2(!QFile::exists(file.fileName()), where.constData());
        const QStringList kept = QDir(place.path()).entryList({QStringLiteral("*.kept*")}, QDir::Files);
        QCOMPARE(kept.size(), 1);
        QFile aside(place.filePath(kept.first()));
        QVERIFY(aside.open(QIODevice::ReadOnly));
        QVERIFY2(aside.readAll() == changed, where.constData());
        QVERIFY(aside.remove());
    }
}

// Whoever writes a file can write digests as well.
void DraftFuzzTest::believesNoHeaderWhoseDigestsFit()
{
    Mutator mutator(seed + 2);
    RpaDraft written = Draft();
    const QByteArray file = DraftFile::Encode(&written);
    constexpr int headerAt = 16;
    constexpr int digestSize = 32;
    const int headerSize = file.size() - headerAt - digestSize - written.content.size();
    for (int i = 0; i < decodings; ++i) {
        const QByteArray header = mutator.Mutate(file.mid(headerAt, headerSize));
        QByteArray forged = file.left(12) + QByteArray("\0\0", 2) + char(header.size() >> 8) +
                            char(header.size() & 0xff) + header;
        forged += QByteArray::fromHex(DraftFile::Sha256Of(forged));
        RpaDraft read;
        QString problem;
        if (!DraftFile::Decode(forged + written.content, &read, &problem))
            continue;
        const QByteArray where = "seed " + QByteArray::number(seed) + ", " + QByteArray::number(i);
        QVERIFY2(read.content == written.content, where.constData());
        QVERIFY2(!read.appId.isEmpty() && read.baseRevision >= 0 && read.writtenAt.isValid(),
                 where.constData());
    }
}

QTEST_GUILESS_MAIN(DraftFuzzTest)
#include "tst_draftfuzz.moc"
