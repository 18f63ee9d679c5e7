// SPDX-License-Identifier: Apache-2.0

#include "TextFit.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <QTextDocument>

namespace
{
constexpr int cursorRoom = 4; // a line edit keeps some beside its text

QSize TextSize(const QWidget& widget, const QString& text)
{
    return widget.fontMetrics().size(Qt::TextShowMnemonic, text);
}

bool IsLabelCut(const QLabel& label)
{
    if (label.text().isEmpty() || label.inherits("ElidedLabelEx"))
        return false;
    if (label.wordWrap())
        return label.heightForWidth(label.width()) > label.height();
    const QSize least = label.minimumSizeHint();
    return label.width() < least.width() || label.height() < least.height();
}

bool IsButtonCut(const QAbstractButton& button)
{
    if (button.text().isEmpty())
        return false;
    return button.width() < button.minimumSizeHint().width() ||
           button.height() < TextSize(button, button.text()).height();
}

bool IsPlaceholderCut(const QLineEdit& edit)
{
    const QString text = edit.text().isEmpty() ? edit.placeholderText() : QString();
    const bool told = edit.toolTip().contains(text) || edit.accessibleName().contains(text);
    return !told && edit.contentsRect().width() - cursorRoom < TextSize(edit, text).width();
}

bool IsComboCut(const QComboBox& combo)
{
    QStyleOptionComboBox option;
    option.initFrom(&combo);
    option.editable = combo.isEditable();
    const QRect field =
        combo.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &combo);
    return field.width() < TextSize(combo, combo.currentText()).width() && combo.toolTip().isEmpty();
}

bool IsHeaderCut(const QHeaderView& header)
{
    for (int section = 0; header.model() && section < header.count(); ++section) {
        const QString text = header.model()->headerData(section, header.orientation()).toString();
        const bool across = header.orientation() == Qt::Horizontal;
        if (across && !header.isSectionHidden(section) &&
            header.sectionSize(section) < TextSize(header, text).width())
            return true;
    }
    return false;
}

bool IsTabCut(const QTabBar& bar)
{
    for (int tab = 0; tab < bar.count(); ++tab)
        if (bar.tabRect(tab).width() < TextSize(bar, bar.tabText(tab)).width())
            return true;
    return false;
}

bool IsCut(const QWidget& widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return IsLabelCut(*label);
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        return IsButtonCut(*button);
    if (const auto* edit = qobject_cast<const QLineEdit*>(&widget))
        return IsPlaceholderCut(*edit);
    if (const auto* combo = qobject_cast<const QComboBox*>(&widget))
        return IsComboCut(*combo);
    if (const auto* header = qobject_cast<const QHeaderView*>(&widget))
        return IsHeaderCut(*header);
    const auto* tabs = qobject_cast<const QTabBar*>(&widget);
    return tabs && IsTabCut(*tabs);
}

bool IsText(const QWidget& widget)
{
    return qobject_cast<const QLabel*>(&widget) || qobject_cast<const QAbstractButton*>(&widget) ||
           qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QComboBox*>(&widget) ||
           qobject_cast<const QTabBar*>(&widget);
}

// Reaches beyond what it stands on, up to the window or to something that scrolls.
bool IsOutside(const QWidget& widget)
{
    for (const QWidget* on = widget.parentWidget(); on && !widget.isWindow(); on = on->parentWidget()) {
        const QRect place(widget.mapTo(const_cast<QWidget*>(on), QPoint()), widget.size());
        const auto* area = qobject_cast<const QAbstractScrollArea*>(on->parentWidget());
        if (area && area->viewport() == on)
            return false;
        if (!on->rect().contains(place))
            return true;
        if (on->isWindow())
            return false;
    }
    return false;
}
} // namespace

QStringList TextFit::CutTexts(const QWidget& window)
{
    QStringList cut;
    const auto widgets = window.findChildren<QWidget*>();
    for (const QWidget* widget : widgets) {
        const bool inScroller = qobject_cast<const QTabBar*>(widget->parentWidget());
        if (widget->isVisible() && !inScroller &&
            (IsCut(*widget) || (IsText(*widget) && IsOutside(*widget)))) {
            cut.append(
                QStringLiteral("%1 “%2”").arg(widget->objectName(), widget->property("text").toString()));
        }
    }
    return cut;
}
