// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppDataExport.h>

#include <QByteArray>
#include <QMetaType>
#include <QObject>
#include <QString>
#include <QVector>

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

    bool operator==(const RpaToolItem& other) const;
    bool operator!=(const RpaToolItem& other) const { return !(*this == other); }
};
Q_DECLARE_METATYPE(RpaToolItem)

// The tools of a UI page, in order. GUI thread only.
class RPAAPPDATA_EXPORT RpaToolData : public QObject
{
    Q_OBJECT

public:
    explicit RpaToolData(QObject* parent = nullptr);

    int GetCount() const { return items.size(); }
    const QVector<RpaToolItem>& GetItems() const { return items; }
    // An empty item outside 0 … GetCount() - 1.
    RpaToolItem GetItem(int index) const { return items.value(index); }
    // -1 when there is none.
    int IndexOf(const QString& id) const;

    // Inserts before the index (-1 or beyond the end: at the end); an empty or taken id is replaced. Returns
    // the index.
    int InsertItem(int index, const RpaToolItem& item);
    // Replaces all but the id. False outside the list or when nothing changed.
    bool SetItem(int index, const RpaToolItem& item);
    bool RemoveItem(int index);
    // to is the index after the move.
    bool MoveItem(int from, int to);
    void SetItems(const QVector<RpaToolItem>& newItems);

    void WriteJson(JsonWriter& writer) const;
    std::function<void()> ReadJson(JsonReader& reader);

signals:
    void SigInserted(int index);
    void SigItemChanged(int index);
    void SigRemoved(int index);
    void SigMoved(int from, int to);
    void SigReset();
    // After each of the above.
    void SigChanged();

private:
    QVector<RpaToolItem> items;
};
