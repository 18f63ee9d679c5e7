// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RecordCommand_p.h"
#include "RecordModel_p.h"

#include <QUndoStack>

#include <functional>

enum class RecordUse
{
    Edited,
    Checked,
    None, // disabled
};

// One column of the list: how a member of a record is shown and edited.
template <class Record>
struct RecordField
{
    QString title;
    std::function<QVariant(const Record&, int role)> show;
    // Gives the reason, in the user's words, when it refuses. others: the records but this one.
    std::function<QString(Record&, const QVariant&, const QVector<Record>& others)> write;
    std::function<QVector<RecordModel::Choice>(const Record&)> choices = {};
    RecordModel::Widths widths = {};
    std::function<RecordUse(const Record&)> use = {}; // Edited when it is not given
    bool takesOtherText = false;
    QString tip = {};
};

// How a model reaches the records of its data.
template <class Data>
struct RecordsOf
{
    using Record = typename Data::Item;
    static const QVector<Record>& Get(const Data& data) { return data.GetItems(); }
    static bool Append(Data& data, const Record& record) { return data.InsertItem(-1, record) >= 0; }
    static bool Set(Data& data, int row, const Record& record) { return data.SetItem(row, record); }
    static bool Remove(Data& data, int row) { return data.RemoveItem(row); }
    static bool Move(Data& data, int from, int to) { return data.MoveItem(from, to); }
};

// A list of records by a table of their fields. It keeps a copy of them, so that rows are consistent whenever
// the view asks.
template <class Data>
class RecordTable : public RecordModel
{
public:
    using Records = RecordsOf<Data>;
    using Record = typename Records::Record;
    using Maker = std::function<Record(const Data&)>;

    // recordName: what one record is called ("工具"). makeRecord: what the author begins with.
    RecordTable(const QString& recordName, const QVector<RecordField<Record>>& recordFields,
                const Maker& makeRecord, QUndoStack& stack, QObject* parent)
        : RecordModel(parent), name(recordName), fields(recordFields), maker(makeRecord), undoStack(stack)
    {
    }

    // Not owned; may go away at any time.
    void SetData(Data* given)
    {
        if (source)
            source->disconnect(this);
        source = given;
        undoStack.clear();
        if (source) {
            connect(given, &Data::SigChanged, this, &RecordTable::Refresh);
            connect(given, &Data::SigChanged, this, &RecordModel::SigDataChanged);
            connect(given, &QObject::destroyed, this, &RecordTable::Refresh);
        }
        Refresh();
    }

    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : records.size();
    }
    int columnCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : fields.size();
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation != Qt::Horizontal || section >= fields.size())
            return {};
        if (role == Qt::ToolTipRole && !fields.at(section).tip.isEmpty())
            return fields.at(section).tip;
        return role == Qt::DisplayRole ? QVariant(fields.at(section).title) : QVariant();
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        return Has(index) ? FieldOf(index).show(records.at(index.row()), role) : QVariant();
    }
    Qt::ItemFlags flags(const QModelIndex& index) const override
    {
        const Qt::ItemFlags flags = RecordModel::flags(index);
        if (!Has(index))
            return flags;
        switch (UseOf(index)) {
        case RecordUse::Edited:
            return flags | Qt::ItemIsEditable;
        case RecordUse::Checked:
            return flags | Qt::ItemIsUserCheckable;
        case RecordUse::None:
            break;
        }
        return flags & ~Qt::ItemIsEnabled;
    }
    bool setData(const QModelIndex& index, const QVariant& value, int role) override
    {
        const RecordUse use = role == Qt::CheckStateRole ? RecordUse::Checked : RecordUse::Edited;
        if (!source || !Has(index) || UseOf(index) != use)
            return false;
        const int row = index.row();
        QVector<Record> others = Records::Get(*source);
        Record record = others.takeAt(row);
        const QString refusal = FieldOf(index).write(record, value, others);
        if (!refusal.isEmpty()) {
            emit SigRefused(refusal);
            return false;
        }
        return Change(QStringLiteral("修改"), [&](Data& data) { return Records::Set(data, row, record); });
    }

    QVector<Choice> GetChoices(const QModelIndex& index) const override
    {
        return FieldOf(index).choices ? FieldOf(index).choices(records.at(index.row())) : QVector<Choice>();
    }
    bool TakesOtherText(const QModelIndex& index) const override { return FieldOf(index).takesOtherText; }
    Widths GetWidths(int column) const override { return fields.at(column).widths; }

    bool AddRecord() override
    {
        return Change(QStringLiteral("添加"),
                      [this](Data& data) { return Records::Append(data, maker(data)); });
    }
    bool RemoveRecords(const QVector<int>& rows) override
    {
        return Change(QStringLiteral("删除"), [&rows](Data& data) {
            for (int i = rows.size() - 1; i >= 0; --i)
                Records::Remove(data, rows.at(i));
            return !rows.isEmpty();
        });
    }
    bool MoveRecord(int from, int to) override
    {
        return Change(QStringLiteral("移动"), [&](Data& data) { return Records::Move(data, from, to); });
    }

private:
    bool Has(const QModelIndex& index) const { return index.isValid() && index.row() < records.size(); }
    const RecordField<Record>& FieldOf(const QModelIndex& index) const { return fields.at(index.column()); }
    RecordUse UseOf(const QModelIndex& index) const
    {
        return FieldOf(index).use ? FieldOf(index).use(records.at(index.row())) : RecordUse::Edited;
    }

    template <class Act>
    bool Change(const QString& what, const Act& act)
    {
        if (!source)
            return false;
        const typename Data::Content before = source->GetContent();
        if (!act(*source))
            return false;
        undoStack.push(new RecordCommand<Data>(what + name, source, before));
        return true;
    }

    // Changed values leave the view's selection and editor alone.
    void Refresh()
    {
        const QVector<Record> now = source ? Records::Get(*source) : QVector<Record>();
        if (now.constData() == records.constData() || (now.isEmpty() && records.isEmpty()))
            return;
        if (now.size() == records.size()) {
            records = now;
            emit dataChanged(index(0, 0), index(records.size() - 1, columnCount() - 1));
            return;
        }
        beginResetModel();
        records = now;
        endResetModel();
    }

    const QString name;
    const QVector<RecordField<Record>> fields;
    const Maker maker;
    QUndoStack& undoStack;
    QPointer<Data> source;
    QVector<Record> records;
};
