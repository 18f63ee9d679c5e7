// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaProcessDataExport.h>
#include <WbFoundation/IJsonParser.h>

#include <QList>
#include <QSharedPointer>
#include <QString>

// One package that an app needs.
struct RPAPROCESSDATA_EXPORT PackageItem
{
    QString name;
    QString version; // requirement such as "3.1.2"; empty for any
};

// The packages that an app needs.
class RPAPROCESSDATA_EXPORT RpaPackageInfo : public IJsonParser
{
    Q_OBJECT

public:
    explicit RpaPackageInfo(QObject* parent = nullptr);

    // Whether it names no package.
    bool IsEmpty() const;

    // Same names and versions, in whatever order.
    bool IsEqual(const RpaPackageInfo& other) const;

    // Copies all of the other's items.
    void SetPackageInfo(const RpaPackageInfo& other);

    // The items themselves, shared.
    QList<QSharedPointer<PackageItem>> GetListPackageItemPtr() const { return items; }
    void SetListPackageItemPtr(const QList<QSharedPointer<PackageItem>>& newItems);

    void WriteJson(JsonWriter& writer) const override;
    Commit ReadJson(JsonReader& reader) override;

private:
    QList<QSharedPointer<PackageItem>> items;
};
