// SPDX-License-Identifier: Apache-2.0

#include "DraftFile_p.h"

#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

#include <QCryptographicHash>
#include <QtEndian>

namespace
{
constexpr char magic[] = "RPADRAFT";
constexpr int magicSize = 8;
constexpr int headerAt = magicSize + 8;
constexpr quint32 formatVersion = 1;
constexpr int digestSize = 32;

struct Header
{
    RpaDraft draft;
    int length = -1;
};

QByteArray Digest(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

QByteArray Number(quint32 value)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

quint32 NumberAt(const QByteArray& file, int at)
{
    return qFromBigEndian<quint32>(file.constData() + at);
}

void WriteInDoubt(JsonWriter& writer, const QByteArrayList& inDoubt)
{
    writer.Key("unsettled");
    writer.BeginArray();
    for (const QByteArray& sha256 : inDoubt)
        writer.Utf8(sha256);
    writer.EndArray();
}

void ReadUnsettled(JsonReader& reader, RpaDraft* draft)
{
    QByteArray sha256;
    for (bool isIn = reader.EnterArray(); isIn && reader.NextElement();)
        if (reader.ReadUtf8(sha256) && sha256.size() == 2 * digestSize)
            DraftFile::NoteUnsettled(draft, sha256);
}

QByteArray WriteHeader(const RpaDraft& draft)
{
    JsonWriter writer;
    writer.BeginObject();
    writer.Member("account", draft.account);
    writer.Member("appId", draft.appId);
    writer.Member("versionId", draft.versionId);
    writer.Member("baseRevision", draft.baseRevision);
    writer.Member("writtenAt", draft.writtenAt.toString(Qt::ISODateWithMs));
    writer.Member("length", draft.content.size());
    writer.Member("sha256", QString::fromLatin1(draft.sha256));
    if (!draft.inDoubt.isEmpty())
        WriteInDoubt(writer, draft.inDoubt);
    writer.EndObject();
    return writer.Take();
}

void ReadMember(JsonReader& reader, Header* header)
{
    QString text;
    if (reader.IsKey("account"))
        reader.ReadString(header->draft.account);
    else if (reader.IsKey("appId"))
        reader.ReadString(header->draft.appId);
    else if (reader.IsKey("versionId"))
        reader.ReadString(header->draft.versionId);
    else if (reader.IsKey("baseRevision"))
        reader.ReadInt(header->draft.baseRevision);
    else if (reader.IsKey("length"))
        reader.ReadInt(header->length);
    else if (reader.IsKey("writtenAt") && reader.ReadString(text))
        header->draft.writtenAt = QDateTime::fromString(text, Qt::ISODateWithMs);
    else if (reader.IsKey("sha256") && reader.ReadString(text))
        header->draft.sha256 = text.toLatin1();
    else if (reader.IsKey("unsettled"))
        ReadUnsettled(reader, &header->draft);
}

bool ReadHeader(const QByteArray& json, Header* header)
{
    JsonReader reader(json);
    if (!reader.EnterObject())
        return false;
    while (reader.NextMember())
        ReadMember(reader, header);
    return reader.Finish() && !header->draft.appId.isEmpty() && header->draft.baseRevision >= 0 &&
           header->draft.writtenAt.isValid() && header->length >= 0;
}

// Why there is no whole header; empty when there is one.
QString FrameProblem(const QByteArray& file)
{
    QString incomplete = QStringLiteral("草稿文件不完整");
    if (!file.startsWith(magic))
        return QStringLiteral("不是草稿文件");
    if (file.size() < headerAt)
        return incomplete;
    if (NumberAt(file, magicSize) != formatVersion)
        return QStringLiteral("草稿由其他版本的工作站写入，无法读取");
    const quint32 length = NumberAt(file, magicSize + 4);
    if (length > quint32(DraftFile::largestHeader) || file.size() < headerAt + int(length) + digestSize)
        return incomplete;
    const int digestAt = headerAt + int(length);
    return Digest(file.left(digestAt)) == file.mid(digestAt, digestSize) ? QString()
                                                                         : QStringLiteral("草稿文件已损坏");
}
} // namespace

bool DraftFile::Refuse(QString* problem, const QString& reason)
{
    *problem = reason;
    return false;
}

QByteArray DraftFile::Sha256Of(const QByteArray& bytes)
{
    return Digest(bytes).toHex();
}

void DraftFile::NoteUnsettled(RpaDraft* draft, const QByteArray& sha256)
{
    draft->inDoubt.removeAll(sha256);
    draft->inDoubt.append(sha256);
    while (draft->inDoubt.size() > mostInDoubt)
        draft->inDoubt.removeFirst();
}

QByteArray DraftFile::Encode(RpaDraft* draft)
{
    draft->sha256 = Sha256Of(draft->content);
    const QByteArray header = WriteHeader(*draft);
    QByteArray file = magic + Number(formatVersion) + Number(quint32(header.size())) + header;
    file += Digest(file);
    return file + draft->content;
}

bool DraftFile::Decode(const QByteArray& file, RpaDraft* draft, QString* problem)
{
    if (file.size() > largestFile)
        return Refuse(problem, QStringLiteral("草稿文件过大"));
    const QString frameProblem = FrameProblem(file);
    if (!frameProblem.isEmpty())
        return Refuse(problem, frameProblem);
    const int contentAt = headerAt + int(NumberAt(file, magicSize + 4)) + digestSize;
    Header header;
    if (!ReadHeader(file.mid(headerAt, contentAt - digestSize - headerAt), &header))
        return Refuse(problem, QStringLiteral("草稿文件的说明无法读取"));
    header.draft.content = file.mid(contentAt);
    if (header.draft.content.size() != header.length)
        return Refuse(problem, QStringLiteral("草稿文件不完整"));
    if (Sha256Of(header.draft.content) != header.draft.sha256)
        return Refuse(problem, QStringLiteral("草稿的内容已损坏"));
    header.draft.name = draft->name;
    *draft = header.draft;
    return true;
}
