// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppDataExport.h>

#include <QObject>
#include <QVector>

// What a list of records announces; a template has no signals of its own.
class RPAAPPDATA_EXPORT RpaRecordSignals : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

signals:
    // Other records, or another order of them.
    void SigItemsChanged();
    // After each change of the list or inside it that is one of the app.
    void SigChanged();
};

// The records of one kind of a UI page, in order, as values. A record is fit to the list before it stands in
// it, or refused. Indexes count from 0. GUI thread only.
template <class Record>
class RpaRecordList : public RpaRecordSignals
{
public:
    using Item = Record;
    // Everything as a value, to be put back in one go.
    using Content = QVector<Record>;

    // All records, in their order; valid until the next change.
    int GetCount() const { return items.size(); }
    const QVector<Record>& GetItems() const { return items; }
    // An empty record outside 0 … GetCount() - 1.
    Record GetItem(int index) const { return items.value(index); }

    // Inserts before the index (-1 or beyond the end: at the end). -1 when the record is refused, else its
    // index.
    int InsertItem(int index, Record item)
    {
        if (!Settle(item, -1))
            return -1;
        const int place = index < 0 || index > items.size() ? items.size() : index;
        Change([&](Content& all) { all.insert(place, item); });
        return place;
    }
    // False outside the list, when the record is refused, or when nothing changed.
    bool SetItem(int index, Record item)
    {
        return Has(index) && Settle(item, index) && item != items.at(index) &&
               Change([&](Content& all) { all[index] = item; });
    }
    // False outside the list.
    bool RemoveItem(int index)
    {
        return Has(index) && Change([&](Content& all) { all.removeAt(index); });
    }
    // to is the index after the move.
    bool MoveItem(int from, int to)
    {
        return Has(from) && Has(to) && from != to && Change([&](Content& all) { all.move(from, to); });
    }

    // As GetItems().
    const Content& GetContent() const { return items; }
    // What does not fit, such as what comes from a file, is made to.
    void SetContent(Content all)
    {
        SettleAll(all);
        Replace(all);
    }

protected:
    explicit RpaRecordList(QObject* parent) : RpaRecordSignals(parent) {}

    bool Has(int index) const { return index >= 0 && index < items.size(); }
    // Makes the record fit to stand at the index, or anew (-1); false when it cannot.
    virtual bool Settle(Record& item, int index) const = 0;
    virtual void SettleAll(Content& all) const = 0;
    virtual void Replace(const Content& after)
    {
        items = after;
        emit SigItemsChanged();
        emit SigChanged();
    }

    Content items;

private:
    template <class Act>
    bool Change(const Act& act)
    {
        Content after = items;
        act(after);
        Replace(after);
        return true;
    }
};
