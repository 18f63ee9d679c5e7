// SPDX-License-Identifier: Apache-2.0

#include "RpaVersionCombo.h"

#include "RpaVersionItem.h"
#include "RpaVersionList.h"

#include <WbBaseUI/UIUtils.h>

#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QTimer>

namespace
{

// Long enough for the press that closed the popup from outside to reach the line edit.
constexpr int hideGraceMs = 100;

} // namespace

RpaVersionCombo::RpaVersionCombo(QWidget* parent) : WbComboBox(parent), nameEdit(new QLineEdit(this))
{
    nameEdit->setContextMenuPolicy(Qt::NoContextMenu);
    nameEdit->setReadOnly(true);
    nameEdit->setPlaceholderText(QStringLiteral("还没有版本"));
    nameEdit->setCursor(Qt::PointingHandCursor); // a read-only edit takes the arrow by itself

    list = new RpaVersionList(this);
    list->setFocusPolicy(Qt::NoFocus);

    hideTimer = new QTimer(this);

    setContextMenuPolicy(Qt::NoContextMenu);
    setModel(list->model());
    setView(list);
    setLineEdit(nameEdit);
    // A completer has nothing to complete here, and when the edit gains the focus it puts its own event
    // filter in front of ours in the middle of a press, which would then reach us twice.
    setCompleter(nullptr);
    view()->setObjectName(QStringLiteral("VersionComboBoxView"));

    nameEdit->installEventFilter(this);

    connect(nameEdit, &QLineEdit::selectionChanged, this, &RpaVersionCombo::SlotSelectionChanged);
    connect(list, &QListWidget::itemPressed, this, &RpaVersionCombo::SlotItemClicked);
    connect(hideTimer, &QTimer::timeout, this, &RpaVersionCombo::SlotHideTimer);
    // A row of the open popup picked by key.
    connect(this, qOverload<int>(&QComboBox::activated), this, &RpaVersionCombo::Pick);
}

RpaVersionCombo::~RpaVersionCombo() = default;

void RpaVersionCombo::AddRow(const QString& name, const QString& tip, const QVariant& versionData, int state)
{
    auto* row = new RpaVersionItem(list);
    auto* entry = new QListWidgetItem(list);
    row->SetName(name);
    row->SetData(versionData);
    row->SetState(state);
    row->SetTip(tip);
    connect(row, &RpaVersionItem::SigDelete, this, &RpaVersionCombo::SlotDeleteVersion);
    row->SetInSight(false);
    list->setItemWidget(entry, row);
}

void RpaVersionCombo::Clear()
{
    currentName.clear();
    currentData.clear();
    currentRow = QModelIndex();
    clear();
    UpdateToolTip();
}

int RpaVersionCombo::GetRowCount() const
{
    return list->count();
}

void RpaVersionCombo::RemoveRow(const QString& name)
{
    for (int i = 0; i < list->count(); ++i) {
        const RpaVersionItem* row = RowAt(i);
        if (row && row->GetName() == name) {
            delete list->takeItem(i);
            // QComboBox answers the removal with a text of its own.
            ShowCurrentName();
            return;
        }
    }
}

int RpaVersionCombo::GetIndexOfData(const QVariant& versionData) const
{
    for (int i = 0; i < list->count(); ++i) {
        const RpaVersionItem* row = RowAt(i);
        if (row && row->GetData() == versionData)
            return i;
    }
    return -1;
}

QVariant RpaVersionCombo::GetDataAt(int index) const
{
    const RpaVersionItem* row = RowAt(index);
    return row ? row->GetData() : QVariant(QString());
}

QString RpaVersionCombo::GetNameAt(int index) const
{
    const RpaVersionItem* row = RowAt(index);
    return row ? row->GetName() : QString();
}

void RpaVersionCombo::SetCurrentIndex(int index)
{
    MakeCurrent(index);
}

void RpaVersionCombo::showPopup()
{
    hideTimer->stop();
    popupOpen = true;
    WbComboBox::showPopup();
    MarkCurrentRow();
}

void RpaVersionCombo::hidePopup()
{
    list->scrollToTop();
    QComboBox::hidePopup();
    if (popupOpen)
        hideTimer->start(hideGraceMs);
}

bool RpaVersionCombo::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == nameEdit && isEnabled() && event->type() == QEvent::MouseButtonPress &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        if (popupOpen) {
            popupOpen = false;
            hidePopup();
        } else {
            showPopup();
        }
    }
    return QObject::eventFilter(watched, event);
}

void RpaVersionCombo::wheelEvent(QWheelEvent*)
{
    // A version is picked on purpose, never by scrolling past.
}

void RpaVersionCombo::keyPressEvent(QKeyEvent* event)
{
    // QComboBox would step through its own rows, whose texts are empty, and blank the name.
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_F4:
    case Qt::Key_Space:
        showPopup();
        break;
    default:
        event->ignore();
        break;
    }
}

void RpaVersionCombo::resizeEvent(QResizeEvent* event)
{
    QComboBox::resizeEvent(event);
    UpdateToolTip();
}

void RpaVersionCombo::SlotItemClicked(QListWidgetItem* item)
{
    Pick(list->row(item));
}

void RpaVersionCombo::MakeCurrent(int index)
{
    const RpaVersionItem* row = RowAt(index);
    currentName = row ? row->GetName() : QString();
    currentData = row ? row->GetData() : QVariant(QString());
    currentRow = row ? list->model()->index(index, 0) : QModelIndex();
    ShowCurrentName();
}

void RpaVersionCombo::Pick(int index)
{
    if (!RowAt(index))
        return;
    const QVariant previousData = currentData;
    MakeCurrent(index);
    popupOpen = false;
    hidePopup();
    if (currentData != previousData)
        emit SigSelectVersion(currentData);
}

// QComboBox marks the row that it takes for the current one. The list stays at its top.
void RpaVersionCombo::MarkCurrentRow()
{
    list->setAutoScroll(false);
    list->selectionModel()->setCurrentIndex(currentRow, QItemSelectionModel::ClearAndSelect);
    list->setAutoScroll(true);
}

void RpaVersionCombo::SlotSelectionChanged()
{
    nameEdit->setSelection(0, 0);
}

void RpaVersionCombo::SlotDeleteVersion(QVariant versionData)
{
    popupOpen = false;
    hidePopup();
    emit SigDeleteVersion(versionData);
}

void RpaVersionCombo::SlotHideTimer()
{
    hideTimer->stop();
    popupOpen = false;
}

RpaVersionItem* RpaVersionCombo::RowAt(int index) const
{
    QListWidgetItem* entry = list->item(index);
    return entry ? qobject_cast<RpaVersionItem*>(list->itemWidget(entry)) : nullptr;
}

void RpaVersionCombo::ShowCurrentName()
{
    nameEdit->setText(currentName);
    nameEdit->home(false);
    UpdateToolTip();
}

// The closed box has no more room than its neighbours in the bar leave it.
void RpaVersionCombo::UpdateToolTip()
{
    constexpr int textMargins = 4; // those of every line edit
    const bool cut = nameEdit->fontMetrics().horizontalAdvance(currentName) + textMargins > nameEdit->width();
    nameEdit->setToolTip(cut ? UIUtils::PlainToolTip(currentName) : QString());
}
