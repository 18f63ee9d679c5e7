// SPDX-License-Identifier: Apache-2.0

#include "FormEditor_p.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QTableWidget>
#include <QTextEdit>

QList<QWidget*> FormEditor::StopsIn(const QWidget* part)
{
    QList<QWidget*> stops;
    const auto children = part->findChildren<QWidget*>();
    for (QWidget* child : children) {
        const bool known = qobject_cast<QAbstractButton*>(child) || qobject_cast<QComboBox*>(child) ||
                           qobject_cast<QTextEdit*>(child) || qobject_cast<QTableWidget*>(child);
        // The list of a combo box is in a window of its own.
        if (known && (child->focusPolicy() & Qt::TabFocus) != 0 && child->window() == part->window())
            stops.append(child);
    }
    return stops;
}
