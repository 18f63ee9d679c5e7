// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QAbstractTableModel>
#include <QStringList>

// Base of the small models behind the editor panels: a list of records, a column per field. The derived class
// keeps a copy of the records, so that rows are consistent whenever the view asks.
class RecordModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    RecordModel(const QStringList& titles, QObject* parent)
        : QAbstractTableModel(parent), columnTitles(titles)
    {
    }

    int columnCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : columnTitles.size();
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (role == Qt::DisplayRole && orientation == Qt::Horizontal)
            return columnTitles.value(section);
        return {};
    }
    Qt::ItemFlags flags(const QModelIndex& index) const override
    {
        const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
        return index.isValid() ? flags | Qt::ItemIsEditable : flags;
    }

    // What a cell may hold when the author picks from a list; titles and values. Empty for free text.
    struct Choice
    {
        QString title;
        QVariant value;
        QString icon;
    };
    virtual QVector<Choice> GetChoices(const QModelIndex&) const { return {}; }
    // Whether it may hold another text than those as well.
    virtual bool TakesOtherText(const QModelIndex&) const { return false; }

    // Whether a column has enough with its least width; the others share the rest.
    virtual bool IsNarrow(int) const { return false; }
    // What a column needs to be read, in pixels at 100 %.
    virtual int GetLeastWidth(int column) const { return IsNarrow(column) ? 64 : 100; }
    // What it makes do with where that shows all columns at once: its title is whole, texts are cut.
    virtual int GetTightWidth(int column) const { return GetLeastWidth(column); }

    // One act each; false when nothing was done.
    virtual bool AddRecord() = 0;
    virtual bool RemoveRecords(const QVector<int>& rows) = 0;
    virtual bool MoveRecord(int from, int to) = 0;

protected:
    // Takes over the records as they are now. Changed values leave the view's selection and editor alone.
    template <typename Record>
    void Show(QVector<Record>& shown, const QVector<Record>& now)
    {
        if (now.size() == shown.size() && !now.isEmpty()) {
            shown = now;
            emit dataChanged(index(0, 0), index(shown.size() - 1, columnCount() - 1));
            return;
        }
        beginResetModel();
        shown = now;
        endResetModel();
    }

signals:
    // The author typed something that the data refused; the text is for him.
    void SigRefused(const QString& reason);

private:
    const QStringList columnTitles;
};
