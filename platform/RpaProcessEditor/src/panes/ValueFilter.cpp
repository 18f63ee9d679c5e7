// SPDX-License-Identifier: Apache-2.0

#include "ValueFilter_p.h"
#include "ValueModel_p.h"

ValueFilter::ValueFilter(QObject* parent) : QSortFilterProxyModel(parent)
{
    setRecursiveFilteringEnabled(true);
}

void ValueFilter::SetText(const QString& searched)
{
    text = searched.trimmed();
    invalidateFilter();
}

bool ValueFilter::Has(const QModelIndex& index) const
{
    return index.data().toString().contains(text, Qt::CaseInsensitive) ||
           index.siblingAtColumn(ValueModel::ValueColumn)
               .data()
               .toString()
               .contains(text, Qt::CaseInsensitive);
}

bool ValueFilter::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    if (text.isEmpty() || Has(sourceModel()->index(row, 0, parent)))
        return true;
    for (QModelIndex above = parent; above.isValid(); above = above.parent())
        if (above.parent().isValid() && Has(above)) // not a heading's: everything is below one
            return true;
    return false;
}
