// SPDX-License-Identifier: Apache-2.0

#include <RpaProcessData/RpaPackageInfo.h>
#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

#include <algorithm>
#include <utility>

namespace
{
QVector<std::pair<QString, QString>> Sorted(const QList<QSharedPointer<PackageItem>>& items)
{
    QVector<std::pair<QString, QString>> pairs;
    for (const QSharedPointer<PackageItem>& item : items)
        pairs.append({item->name, item->version});
    std::sort(pairs.begin(), pairs.end());
    return pairs;
}

void ReadItem(JsonReader& reader, PackageItem& item)
{
    while (reader.NextMember())
        if (reader.IsKey("name"))
            reader.ReadString(item.name);
        else if (reader.IsKey("version"))
            reader.ReadString(item.version);
}

QList<QSharedPointer<PackageItem>> ReadItems(JsonReader& reader)
{
    QList<QSharedPointer<PackageItem>> items;
    if (!reader.EnterArray())
        return items;
    while (reader.NextElement()) {
        const auto item = QSharedPointer<PackageItem>::create();
        if (reader.EnterObject())
            ReadItem(reader, *item);
        if (!item->name.isEmpty())
            items.append(item);
    }
    return items;
}
} // namespace

RpaPackageInfo::RpaPackageInfo(QObject* parent) : IJsonParser(parent) {}

bool RpaPackageInfo::IsEmpty() const
{
    return items.isEmpty();
}

bool RpaPackageInfo::IsEqual(const RpaPackageInfo& other) const
{
    return Sorted(items) == Sorted(other.items);
}

void RpaPackageInfo::SetPackageInfo(const RpaPackageInfo& other)
{
    QList<QSharedPointer<PackageItem>> copies;
    for (const QSharedPointer<PackageItem>& item : other.items)
        copies.append(QSharedPointer<PackageItem>::create(*item));
    items = copies;
}

void RpaPackageInfo::SetListPackageItemPtr(const QList<QSharedPointer<PackageItem>>& newItems)
{
    items = newItems;
    items.removeAll(nullptr);
}

void RpaPackageInfo::WriteJson(JsonWriter& writer) const
{
    writer.BeginObject();
    writer.Key("packages");
    writer.BeginArray();
    for (const QSharedPointer<PackageItem>& item : items) {
        writer.BeginObject();
        writer.Member("name", item->name);
        writer.Member("version", item->version);
        writer.EndObject();
    }
    writer.EndArray();
    writer.EndObject();
}

IJsonParser::Commit RpaPackageInfo::ReadJson(JsonReader& reader)
{
    if (!reader.RequireObject(QStringLiteral("包信息应为对象")))
        return {};
    QList<QSharedPointer<PackageItem>> read = items;
    while (reader.NextMember())
        if (reader.IsKey("packages"))
            read = ReadItems(reader);
    return [this, read] { items = read; };
}
