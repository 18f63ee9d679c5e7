// SPDX-License-Identifier: Apache-2.0

#include "StyleRefresh_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbComboBox.h>

#include <QEvent>
#include <QListView>
#include <QScrollBar>
#include <QStyledItemDelegate>

namespace
{
constexpr int visibleRows = 10;
// Rows whose width is looked at when the popup opens; more would make opening depend on the number of rows.
constexpr int measuredRows = 64;
constexpr int widestPopup = 480;
constexpr int minimumCharacters = 4;

int WidestOfFirstRows(const QAbstractItemView& view)
{
    const QAbstractItemModel* model = view.model();
    const int rows = qMin(measuredRows, model->rowCount(view.rootIndex()));
    int widest = 0;
    for (int row = 0; row < rows; ++row) {
        const QModelIndex index = model->index(row, 0, view.rootIndex());
        // A row shown by a widget of its own elides by itself; only rows drawn by the delegate ask for room.
        if (!view.indexWidget(index))
            widest = qMax(widest, view.sizeHintForIndex(index).width());
    }
    return widest;
}

// The popup takes the mouse away from the box, so it gets the release of the very press that opened it and
// would close on it. QComboBox knows only of presses that it took itself, not of those on its line edit.
class OpeningClick : public QObject
{
public:
    explicit OpeningClick(QWidget* popupWindow) : QObject(popupWindow), popup(popupWindow)
    {
        popup->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const bool release = event->type() == QEvent::MouseButtonRelease;
        if (watched != popup ||
            !(release || event->type() == QEvent::MouseButtonPress || event->type() == QEvent::Hide))
            return false;
        popup->removeEventFilter(this);
        deleteLater();
        return release; // one over a row goes to the list and picks that row
    }

private:
    QWidget* const popup;
};
} // namespace

WbComboBox::WbComboBox(QWidget* parent) : QComboBox(parent)
{
    // With the default policy every row is measured for the size hint.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(minimumCharacters);
    setMaxVisibleItems(visibleRows);
}

void WbComboBox::SetBusinessStyle(int style)
{
    businessStyle = style;
    RefreshStyle(this);
}

void WbComboBox::showPopup()
{
    QAbstractItemView* list = view();
    list->ensurePolished(); // the style sheet's paddings count in what the rows ask for
    if (!qobject_cast<QStyledItemDelegate*>(list->itemDelegate())) {
        // The combo box's own delegate does not know the style sheet's row height.
        list->setItemDelegate(new QStyledItemDelegate(list));
    }
    if (auto* listView = qobject_cast<QListView*>(list)) {
        // Otherwise the list measures every row before it paints the first.
        listView->setUniformItemSizes(true);
    }
    const int bar = count() > maxVisibleItems() ? list->verticalScrollBar()->sizeHint().width() : 0;
    const int wanted =
        qMin(WidestOfFirstRows(*list) + bar + 2 * list->frameWidth(), DpiTool::ScaleDefault(widestPopup));
    list->setMinimumWidth(qMax(wanted, width()));
    QComboBox::showPopup();
    if (list->isVisible())
        new OpeningClick(list->window()); // the popup owns it
}
