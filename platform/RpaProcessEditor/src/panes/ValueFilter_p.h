// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QSortFilterProxyModel>

// Values that have the text in their name or value, what they are in and what is in them, as far as it was
// looked at.
class ValueFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit ValueFilter(QObject* parent = nullptr);

    void SetText(const QString& searched);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    bool Has(const QModelIndex& index) const;

    QString text;
};
