// SPDX-License-Identifier: Apache-2.0

#include "ColumnFitter_p.h"
#include "RecordModel_p.h"
#include "RecordPanel_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbComboBox.h>
#include <WbBaseUI/WbEditHistory.h>
#include <WbBaseUI/WbEditableCombo.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbToast.h>

#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QStackedLayout>
#include <QTableView>
#include <QToolButton>

namespace
{

const RecordModel* RecordModelOf(const QModelIndex& index)
{
    return qobject_cast<const RecordModel*>(index.model());
}

void ShowIn(QComboBox& combo, const QVariant& value)
{
    combo.setCurrentIndex(combo.findData(value));
    if (combo.isEditable())
        combo.setEditText(value.toString());
}

// A text that was typed counts as it stands, unless it is the title of a row.
QVariant PickedIn(const QComboBox& combo)
{
    if (!combo.isEditable())
        return combo.currentData();
    const int row = combo.findText(combo.currentText());
    return row < 0 ? QVariant(combo.currentText()) : combo.itemData(row);
}

} // namespace

QWidget* RecordDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                      const QModelIndex& index) const
{
    const QVector<RecordModel::Choice> choices = RecordModelOf(index)->GetChoices(index);
    if (choices.isEmpty())
        return CutTextDelegate::createEditor(parent, option, index);
    const bool takesText = RecordModelOf(index)->TakesOtherText(index);
    WbComboBox* const combo = takesText ? new WbEditableCombo(parent) : new WbComboBox(parent);
    for (const RecordModel::Choice& choice : choices)
        combo->addItem(choice.icon.isEmpty() ? QIcon() : WbIcons::Get(choice.icon), choice.title,
                       choice.value);
    // One click picks: nobody wants to confirm a choice by leaving the cell.
    auto* self = const_cast<RecordDelegate*>(this);
    connect(combo, qOverload<int>(&QComboBox::activated), self, [self, combo] {
        emit self->commitData(combo);
        emit self->closeEditor(combo);
    });
    return combo;
}

void RecordDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    if (auto* combo = qobject_cast<QComboBox*>(editor))
        ShowIn(*combo, index.data(Qt::EditRole));
    else
        CutTextDelegate::setEditorData(editor, index);
}

void RecordDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    if (auto* combo = qobject_cast<QComboBox*>(editor))
        model->setData(index, PickedIn(*combo));
    else
        CutTextDelegate::setModelData(editor, model, index);
}

// The text's place, where an editor stands by default, may be next to nothing beside an icon.
void RecordDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                          const QModelIndex& index) const
{
    if (!qobject_cast<QComboBox*>(editor)) {
        CutTextDelegate::updateEditorGeometry(editor, option, index);
        return;
    }
    QRect place = option.rect;
    place.setWidth(qMax(place.width(), editor->sizeHint().width()));
    place.moveRight(qMin(place.right(), editor->parentWidget()->rect().right()));
    editor->setGeometry(place);
}

QSize RecordDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QSize hint = CutTextDelegate::sizeHint(option, index);
    return {hint.width(), qMax(hint.height(), DpiTool::ScaleDefault(30))};
}

void RecordDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const
{
    const bool cut = option.rect.width() < sizeHint(option, index).width();
    if (!cut || index.data(Qt::DecorationRole).isNull()) {
        CutTextDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem iconOnly = option;
    initStyleOption(&iconOnly, index);
    iconOnly.features &= ~QStyleOptionViewItem::HasDisplay;
    iconOnly.text.clear();
    iconOnly.widget->style()->drawControl(QStyle::CE_ItemViewItem, &iconOnly, painter, iconOnly.widget);
}

RecordPanel::RecordPanel(const QString& panelTitle, const QString& recordName, const QString& emptyHint,
                         QWidget* parent)
    : ShrinkPanel(panelTitle, parent), view(new QTableView), emptyLabel(new WbLabel(emptyHint)),
      stack(new QStackedLayout)
{
    addButton = AddAction(QStringLiteral("add"), QStringLiteral("添加%1").arg(recordName));
    addButton->setObjectName(QStringLiteral("recordAdd"));
    upButton = AddAction(QStringLiteral("move-up"), QStringLiteral("上移（Alt+↑）"));
    downButton = AddAction(QStringLiteral("move-down"), QStringLiteral("下移（Alt+↓）"));
    removeButton =
        AddAction(QStringLiteral("delete"), QStringLiteral("删除选中的%1 (Delete)").arg(recordName));
    removeButton->setObjectName(QStringLiteral("recordDelete"));

    view->setObjectName(QStringLiteral("recordView"));
    view->setAccessibleName(panelTitle);
    view->setItemDelegate(new RecordDelegate(view));
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                          QAbstractItemView::AnyKeyPressed | QAbstractItemView::SelectedClicked);
    view->setTabKeyNavigation(false);
    view->setWordWrap(false);
    view->verticalHeader()->hide();
    view->verticalHeader()->setDefaultSectionSize(DpiTool::ScaleDefault(32));
    view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->horizontalHeader()->setHighlightSections(false);
    view->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    view->setMinimumHeight(DpiTool::ScaleDefault(58));
    view->installEventFilter(this);
    emptyLabel->setAlignment(Qt::AlignCenter);
    emptyLabel->setWordWrap(true);
    emptyLabel->setObjectName(QStringLiteral("emptyHint"));

    auto* holder = new QWidget;
    holder->setLayout(stack);
    stack->addWidget(view);
    stack->addWidget(emptyLabel);
    SetContent(holder);

    WbEditHistory::Instance()->Watch(&undoStack, this);
    connect(addButton, &QToolButton::clicked, this, &RecordPanel::Add);
    connect(removeButton, &QToolButton::clicked, this, &RecordPanel::RemoveSelected);
    connect(upButton, &QToolButton::clicked, this, [this] { MoveCurrent(-1); });
    connect(downButton, &QToolButton::clicked, this, [this] { MoveCurrent(1); });
}

void RecordPanel::SetModel(RecordModel* given)
{
    model = given;
    view->setModel(model);
    new ColumnFitter(view);
    connect(model, &RecordModel::SigRefused, this,
            [](const QString& reason) { WbToast::Show(reason, ToastWarning); });
    connect(model, &QAbstractItemModel::modelReset, this, &RecordPanel::UpdateState);
    connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this, &RecordPanel::UpdateState);
    UpdateState();
}

int RecordPanel::GetRecordCount() const
{
    return model ? model->rowCount() : 0;
}

void RecordPanel::Add()
{
    if (!model->AddRecord())
        return;
    const QModelIndex fresh = model->index(model->rowCount() - 1, 0);
    SetShrink(false);
    view->setFocus();
    view->setCurrentIndex(fresh);
    view->scrollTo(fresh);
    view->edit(fresh);
}

void RecordPanel::RemoveSelected()
{
    const QVector<int> rows = SelectedRows();
    if (rows.isEmpty() || !model->RemoveRecords(rows))
        return;
    view->selectRow(qMin(rows.first(), model->rowCount() - 1));
}

void RecordPanel::MoveCurrent(int by)
{
    const int from = view->currentIndex().row();
    const int to = from + by;
    if (from < 0 || to < 0 || to >= model->rowCount())
        return;
    if (model->MoveRecord(from, to))
        view->selectRow(to);
}

QVector<int> RecordPanel::SelectedRows() const
{
    QVector<int> rows;
    const QModelIndexList indexes = view->selectionModel()->selectedRows();
    for (const QModelIndex& index : indexes)
        rows << index.row();
    std::sort(rows.begin(), rows.end());
    return rows;
}

void RecordPanel::UpdateState()
{
    SetCount(model->rowCount());
    stack->setCurrentIndex(model->rowCount() > 0 ? 0 : 1);
    const QVector<int> rows = SelectedRows();
    removeButton->setEnabled(!rows.isEmpty());
    upButton->setEnabled(rows.size() == 1 && rows.first() > 0);
    downButton->setEnabled(rows.size() == 1 && rows.first() < model->rowCount() - 1);
}

// The view would take arrows and Delete for itself.
bool RecordPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == view && event->type() == QEvent::KeyPress && HandleKey(static_cast<QKeyEvent*>(event)))
        return true;
    return ShrinkPanel::eventFilter(watched, event);
}

bool RecordPanel::HandleKey(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Undo))
        undoStack.undo();
    else if (event->matches(QKeySequence::Redo))
        undoStack.redo();
    else if (event->matches(QKeySequence::Delete))
        RemoveSelected();
    else if (event->modifiers() == Qt::AltModifier && event->key() == Qt::Key_Up)
        MoveCurrent(-1);
    else if (event->modifiers() == Qt::AltModifier && event->key() == Qt::Key_Down)
        MoveCurrent(1);
    else
        return false;
    return true;
}
