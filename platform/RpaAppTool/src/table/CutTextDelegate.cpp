// SPDX-License-Identifier: Apache-2.0

#include "CutTextDelegate_p.h"

#include <WbBaseUI/WbLineLimit.h>

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QToolTip>

namespace
{
// A tool tip is for reading, not for a whole document.
constexpr int longestTip = 1000;
} // namespace

QWidget* CutTextDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                       const QModelIndex& index) const
{
    QWidget* const editor = QStyledItemDelegate::createEditor(parent, option, index);
    if (auto* line = qobject_cast<QLineEdit*>(editor))
        new WbLineLimit(line, QStringLiteral("这一格"));
    return editor;
}

bool CutTextDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                const QStyleOptionViewItem& option, const QModelIndex& index)
{
    const bool cut = index.isValid() && event->type() == QEvent::ToolTip &&
                     QStyledItemDelegate::sizeHint(option, index).width() > option.rect.width();
    if (!cut)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QString text = index.data().toString();
    if (text.size() > longestTip)
        text = text.left(longestTip) + QChar(0x2026);
    // Rich text, so that a long one is wrapped.
    QToolTip::showText(event->globalPos(), QStringLiteral("<span>%1</span>").arg(text.toHtmlEscaped()), view,
                       option.rect);
    return true;
}
