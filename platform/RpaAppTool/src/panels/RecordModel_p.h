// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QAbstractTableModel>

// What the panels with a list of records see of their models.
class RecordModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    // What a cell may hold when the author picks from a list; titles and values. Empty for free text.
    struct Choice
    {
        QString title;
        QVariant value;
        QString icon = {};
    };
    virtual QVector<Choice> GetChoices(const QModelIndex& index) const = 0;
    // Whether it may hold another text than those as well.
    virtual bool TakesOtherText(const QModelIndex& index) const = 0;

    // Of a column, in pixels at 100 %.
    struct Widths
    {
        int least = 100; // what it needs to be read
        int tight =
            100; // what it makes do with where that shows all columns: its title is whole, texts are cut
        bool isNarrow = false; // has enough with its least width; the others share the rest
    };
    virtual Widths GetWidths(int column) const = 0;

    // One act each, which can be undone; false when nothing was done.
    virtual bool AddRecord() = 0;
    virtual bool RemoveRecords(const QVector<int>& rows) = 0;
    virtual bool MoveRecord(int from, int to) = 0;

signals:
    // The author typed something that is refused; the text is for him.
    void SigRefused(const QString& reason);
    // The data was changed, here or elsewhere.
    void SigDataChanged();
};
