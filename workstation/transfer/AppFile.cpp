// SPDX-License-Identifier: Apache-2.0

#include "AppFile.h"

#include <RpaCore/RpaAppKind.h>
#include <WbFoundation/AppOutline.h>
#include <WbFoundation/ContentLimits.h>
#include <WbFoundation/JsonGuard.h>
#include <WbSystem/RegularFile.h>

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace
{
constexpr int longestLine = 64 * 1024;
constexpr int formatVersion = 1;
constexpr int longestAppName = 50;
constexpr int longestVersionName = 20;
constexpr int longestDescription = 500;
constexpr int longestApiVersion = 32;
constexpr int longestTag = 20;
constexpr int mostTags = 10;

const QString& FormatName()
{
    static const QString name = QStringLiteral("rpa-app");
    return name;
}

QByteArray DigestOf(const QByteArray& data)
{
    return QCryptographicHash::hash(data, QCryptographicHash::Sha256).toHex();
}

bool Refuse(QString* problem, const QString& text)
{
    *problem = text;
    return false;
}

bool IsDamaged(QString* problem, const QString& what)
{
    return Refuse(problem, QStringLiteral("文件已损坏：%1").arg(what));
}

// The next line as a JSON object; empty when it is none.
QJsonObject ReadLine(QFile* file)
{
    const QByteArray line = file->readLine(longestLine);
    return line.endsWith('\n') && JsonGuard::Check(line) ? QJsonDocument::fromJson(line).object()
                                                         : QJsonObject();
}

QString TextMember(const QJsonObject& json, const char* name)
{
    return json.value(QLatin1String(name)).toString();
}

bool IsName(const QString& text, int most)
{
    const auto isControl = [](QChar c) { return c.category() == QChar::Other_Control; };
    return text.size() <= most && !text.trimmed().isEmpty() &&
           std::none_of(text.begin(), text.end(), isControl);
}

bool ReadHead(const QJsonObject& json, AppFile::Head* head)
{
    head->name = TextMember(json, "name");
    head->kind = json.value(QLatin1String("kind")).toInt(-1);
    head->versions = json.value(QLatin1String("versions")).toInt(-1);
    for (const QJsonValue tag : json.value(QLatin1String("tags")).toArray()) {
        if (!IsName(tag.toString(), longestTag) || head->tags.contains(tag.toString(), Qt::CaseInsensitive))
            return false;
        head->tags << tag.toString().trimmed();
    }
    return IsName(head->name, longestAppName) &&
           (head->kind == AppKindVisual || head->kind == AppKindProgram) && head->tags.size() <= mostTags &&
           head->versions >= 0 && head->versions <= AppFile::mostVersions;
}

bool ReadTexts(const QJsonObject& json, VersionServiceContent* version)
{
    version->name = TextMember(json, "name");
    version->description = TextMember(json, "description");
    version->apiVersion = TextMember(json, "apiVersion");
    return IsName(version->name, longestVersionName) && version->description.size() <= longestDescription &&
           version->apiVersion.size() <= longestApiVersion;
}
} // namespace

bool AppFile::Writer::Begin(const QString& path, const Head& head, QString* problem)
{
    file = std::make_unique<QSaveFile>(path);
    if (!file->open(QIODevice::WriteOnly))
        return Refuse(problem, QStringLiteral("无法写入文件“%1”").arg(path));
    const QJsonObject json{{QStringLiteral("format"), FormatName()},
                           {QStringLiteral("formatVersion"), formatVersion},
                           {QStringLiteral("name"), head.name},
                           {QStringLiteral("kind"), head.kind},
                           {QStringLiteral("tags"), QJsonArray::fromStringList(head.tags)},
                           {QStringLiteral("versions"), head.versions}};
    return Put(QJsonDocument(json).toJson(QJsonDocument::Compact) + '\n', problem);
}

bool AppFile::Writer::Add(const VersionServiceContent& version, QString* problem)
{
    if (file->size() + version.data.size() > mostBytes)
        return Refuse(problem, QStringLiteral("应用的全部版本超过 1 GB，请先删除不再需要的版本"));
    const QJsonObject json{{QStringLiteral("name"), version.name},
                           {QStringLiteral("description"), version.description},
                           {QStringLiteral("apiVersion"), version.apiVersion},
                           {QStringLiteral("size"), version.data.size()},
                           {QStringLiteral("sha256"), QString::fromLatin1(DigestOf(version.data))}};
    return Put(QJsonDocument(json).toJson(QJsonDocument::Compact) + '\n' + version.data + '\n', problem);
}

bool AppFile::Writer::Finish(QString* problem)
{
    return file->commit() || Refuse(problem, QStringLiteral("无法写入文件“%1”").arg(file->fileName()));
}

bool AppFile::Writer::Put(const QByteArray& bytes, QString* problem)
{
    return file->write(bytes) == bytes.size() ||
           Refuse(problem, QStringLiteral("无法写入文件“%1”，磁盘可能已满").arg(file->fileName()));
}

bool AppFile::Reader::Open(const QString& path, Head* head, QString* problem)
{
    file = std::make_unique<QFile>();
    names.clear();
    *head = Head();
    if (!RegularFile::Open(file.get(), path, problem))
        return false;
    const QJsonObject json = ReadLine(file.get());
    if (TextMember(json, "format") != FormatName())
        return Refuse(problem, QStringLiteral("这不是导出的应用文件"));
    if (json.value(QLatin1String("formatVersion")).toInt() > formatVersion)
        return Refuse(problem, QStringLiteral("文件由更新的版本导出，请先更新本程序"));
    if (file->size() > mostBytes)
        return Refuse(problem, QStringLiteral("文件超过 1 GB"));
    return ReadHead(json, head) || IsDamaged(problem, QStringLiteral("应用的名称、类型或标签不正确"));
}

bool AppFile::Reader::Next(VersionServiceContent* version, QString* problem)
{
    const QJsonObject json = ReadLine(file.get());
    const QString which = QStringLiteral("第 %1 个版本").arg(names.size() + 1);
    if (!ReadTexts(json, version) || names.contains(version->name))
        return IsDamaged(problem, which + QStringLiteral("的名称或描述不正确"));
    names << version->name;
    const double size = json.value(QLatin1String("size")).toDouble(-1);
    if (size < 0 || size > ContentLimits::totalBytes)
        return IsDamaged(problem, which + QStringLiteral("超过 64 MB"));
    version->data = file->read(qint64(size));
    char end = 0;
    if (version->data.size() != qint64(size) || !file->getChar(&end) || end != '\n' ||
        QString::fromLatin1(DigestOf(version->data)) != TextMember(json, "sha256"))
        return IsDamaged(problem, which + QStringLiteral("的内容不完整"));
    const AppOutline outline = AppOutline::Read(version->data);
    return outline.IsApp() || IsDamaged(problem, which + QStringLiteral("不是应用。") + outline.problem);
}

bool AppFile::Check(const QString& path, Head* head, QString* problem)
{
    Reader reader;
    if (!reader.Open(path, head, problem))
        return false;
    VersionServiceContent version;
    for (int i = 0; i < head->versions; ++i)
        if (!reader.Next(&version, problem))
            return false;
    return reader.IsAtEnd() || IsDamaged(problem, QStringLiteral("末尾有多余的内容"));
}
