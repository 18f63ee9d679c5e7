// SPDX-License-Identifier: Apache-2.0

#include "AppFilter.h"

#include "AppListModel.h"

#include <algorithm>

void AppFilter::SetWanted(const QString& text)
{
    wanted = text;
    invalidateFilter();
}

bool AppFilter::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    const QModelIndex app = sourceModel()->index(row, 0, parent);
    const QStringList tags = app.data(AppListModel::TagsRole).toStringList();
    if (IsTag(wanted)) {
        const QString tag = wanted.mid(1).trimmed();
        return tag.isEmpty() || tags.contains(tag, Qt::CaseInsensitive);
    }
    return app.data().toString().contains(wanted, Qt::CaseInsensitive) ||
           std::any_of(tags.begin(), tags.end(),
                       [this](const QString& tag) { return tag.contains(wanted, Qt::CaseInsensitive); });
}
