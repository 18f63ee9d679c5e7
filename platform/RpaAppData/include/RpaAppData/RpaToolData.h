// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppDataExport.h>
#include <RpaAppData/RpaRecordList.h>

#include <QByteArray>
#include <QMetaType>
#include <QString>

#include <functional>

class JsonReader;
class JsonWriter;

// One tool of a UI page: a button that runs a process.
struct RPAAPPDATA_EXPORT RpaToolItem
{
    QString id; // stable; made by RpaToolData when empty
    QString text;
    QString icon; // resource name without path; empty for the default
    QString processName;
    QByteArray unknown; // members written by a newer client, kept as they came

    // Of everything, the foreign members included.
    bool operator==(const RpaToolItem& other) const;
    bool operator!=(const RpaToolItem& other) const { return !(*this == other); }
};
Q_DECLARE_METATYPE(RpaToolItem)

// The tools of a UI page, in order. Each has an id that no other has and that stays; an empty or taken one is
// replaced. GUI thread only.
class RPAAPPDATA_EXPORT RpaToolData : public RpaRecordList<RpaToolItem>
{
    Q_OBJECT

public:
    explicit RpaToolData(QObject* parent = nullptr);

    // The value in an app; see RpaAppData.
    void WriteJson(JsonWriter& writer) const;
    std::function<void()> ReadJson(JsonReader& reader);

protected:
    bool Settle(RpaToolItem& item, int index) const override;
    void SettleAll(Content& all) const override;
};
