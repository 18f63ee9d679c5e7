// SPDX-License-Identifier: Apache-2.0

#include "CommandTexts_p.h"
#include "StatementDelegate_p.h"
#include "StatementView_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbTheme.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>

namespace
{
const RpaCommandInfo* InfoOf(const QString& command)
{
    return RpaCommandCatalogue::Instance()->Find(command);
}
} // namespace

StatementView::StatementView(QWidget* parent) : QTreeView(parent), statements(new StatementModel(this))
{
    setObjectName(QStringLiteral("statementView"));
    setAccessibleName(QStringLiteral("流程语句"));
    setModel(statements);
    setItemDelegate(new StatementDelegate(this));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setTreePosition(StatementModel::StatementColumn);
    setIndentation(DpiTool::ScaleDefault(24));
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setExpandsOnDoubleClick(false);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setDragDropMode(QAbstractItemView::DragDrop);
    setDefaultDropAction(Qt::MoveAction);
    setDropIndicatorShown(true);
    setMouseTracking(true);
    header()->setStretchLastSection(true);
    header()->setMinimumSectionSize(10);
    verticalScrollBar()->setSingleStep(StatementDelegate::RowHeight() / 2);
    connect(WbTheme::Instance(), &WbTheme::SigChanged, this, [this] {
        setIndentation(DpiTool::ScaleDefault(24));
        FitGutter();
        scheduleDelayedItemsLayout(); // the height of rows follows the scale
        viewport()->update();
    });
}

void StatementView::ShowProcess(ProcessEdits* processEdits, RpaProcess* process)
{
    edits = processEdits;
    statements->SetProcess(processEdits, process);
    expandAll();
    FitGutter();
    if (statements->rowCount() > 0)
        setCurrentIndex(statements->index(0, StatementModel::StatementColumn));
    emit SigSelectionChanged();
}

void StatementView::FitGutter()
{
    const RpaProcess* process = statements->Process();
    setColumnWidth(StatementModel::GutterColumn,
                   StatementDelegate::GutterWidth(process ? process->GetStatementCount() : 0));
}

QStringList StatementView::SelectedIds() const
{
    return statements->TopIds(selectionModel()->selectedRows(StatementModel::StatementColumn));
}

void StatementView::Select(const QStringList& ids)
{
    QItemSelection selection;
    QModelIndex first;
    for (const QString& id : ids) {
        const QModelIndex index = statements->IndexOf(id);
        if (!index.isValid())
            continue;
        if (!first.isValid())
            first = index;
        for (QModelIndex above = index.parent(); above.isValid(); above = above.parent())
            expand(above);
        selection.select(index, index);
    }
    if (!first.isValid())
        return;
    selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(first);
}

const RpaStatementNode* StatementView::CurrentNode() const
{
    return currentIndex().isValid() ? statements->NodeOf(currentIndex()) : nullptr;
}

StatementView::Place StatementView::PlaceFor(const QString& command) const
{
    const RpaStatementNode* current = CurrentNode();
    if (!current)
        return {QString(), -1};
    const RpaCommandInfo* added = InfoOf(command);
    const bool branch = added && added->blockKind == RpaBlockKind::Branch;
    // "Else" belongs behind the block it continues, wherever in that block the author is.
    for (const RpaStatementNode* node = current; branch && !node->IsRoot(); node = node->GetParent())
        if (added->follows.contains(node->GetCommand()))
            return {node->GetParent()->GetId(), node->GetRow() + 1};
    const bool open = current->GetChildCount() == 0 || isExpanded(currentIndex().siblingAtColumn(0));
    if (CommandTexts::HasChildren(current->GetCommand()) && open)
        return {current->GetId(), 0};
    return {current->GetParent()->GetId(), current->GetRow() + 1};
}

void StatementView::InsertCommand(const QString& command)
{
    RpaProcess* process = statements->Process();
    const RpaCommandInfo* info = InfoOf(command);
    if (!process || !info)
        return;
    const Place place = PlaceFor(command);
    edits->Insert(*process, place.parentId, place.row, {CommandTexts::NewStatement(*info, *process)},
                  QStringLiteral("添加“%1”").arg(info->title));
}

void StatementView::Copy() const
{
    const QModelIndexList rows = selectionModel()->selectedRows(StatementModel::StatementColumn);
    if (QMimeData* mime = statements->mimeData(rows))
        QGuiApplication::clipboard()->setMimeData(mime);
}

void StatementView::Cut()
{
    Copy();
    RemoveSelected(QStringLiteral("剪切语句"));
}

void StatementView::Paste()
{
    const QMimeData* mime = QGuiApplication::clipboard()->mimeData();
    if (!statements->Process() || !mime || !mime->hasFormat(StatementModel::StatementsMime()))
        return;
    const QVector<RpaStatement> pasted = RpaStatement::FromJson(mime->data(StatementModel::StatementsMime()));
    if (pasted.isEmpty())
        return;
    const RpaStatementNode* current = CurrentNode();
    const bool intoBlock =
        current && current->GetChildCount() == 0 && CommandTexts::HasChildren(current->GetCommand());
    Place place{QString(), -1};
    if (intoBlock)
        place = {current->GetId(), 0};
    else if (current)
        place = {current->GetParent()->GetId(), current->GetRow() + 1};
    edits->Insert(*statements->Process(), place.parentId, place.row, pasted, QStringLiteral("粘贴语句"));
}

void StatementView::Delete()
{
    RemoveSelected(QStringLiteral("删除语句"));
}

void StatementView::RemoveSelected(const QString& step)
{
    const QStringList ids = SelectedIds();
    if (!statements->Process() || ids.isEmpty())
        return;
    const QString next = NextAfter(ids);
    edits->Remove(*statements->Process(), ids, step);
    Select({next});
}

QString StatementView::NextAfter(const QStringList& removed) const
{
    const auto stays = [this, &removed](const QModelIndex& index) {
        return index.isValid() && !removed.contains(statements->NodeOf(index)->GetId());
    };
    const QModelIndex last = statements->IndexOf(removed.last());
    QModelIndex below = last;
    while (below.isValid() && !stays(below))
        below = below.siblingAtRow(below.row() + 1);
    QModelIndex above = last;
    while (above.isValid() && !stays(above))
        above = above.row() > 0 ? above.siblingAtRow(above.row() - 1) : above.parent();
    const QModelIndex next = below.isValid() ? below : above;
    return next.isValid() ? statements->NodeOf(next)->GetId() : QString();
}

void StatementView::Duplicate()
{
    RpaProcess* process = statements->Process();
    const QStringList ids = SelectedIds();
    if (!process || ids.isEmpty())
        return;
    QVector<RpaStatement> copies;
    for (const QString& id : ids)
        copies.append(process->Find(id)->ToStatement());
    const RpaStatementNode* last = process->Find(ids.last());
    edits->Insert(*process, last->GetParent()->GetId(), last->GetRow() + 1, copies,
                  QStringLiteral("复制语句"));
}

void StatementView::ToggleEnabled()
{
    RpaProcess* process = statements->Process();
    const QStringList ids = SelectedIds();
    if (!process || ids.isEmpty())
        return;
    const bool anyEnabled = std::any_of(ids.begin(), ids.end(), [process](const QString& id) {
        return process->Find(id)->GetValues().enabled;
    });
    edits->SetEnabled(*process, ids, !anyEnabled);
}

// Past the neighbour; at the edge of a block, out of it.
void StatementView::Step(int direction)
{
    RpaProcess* process = statements->Process();
    const QStringList ids = SelectedIds();
    if (!process || ids.isEmpty())
        return;
    const RpaStatementNode* edge = process->Find(direction < 0 ? ids.first() : ids.last());
    const RpaStatementNode* parent = edge->GetParent();
    const int row = edge->GetRow() + direction;
    if (row >= 0 && row < parent->GetChildCount())
        edits->Move(*process, ids, parent->GetId(), direction < 0 ? row : row + 1);
    else if (!parent->IsRoot())
        edits->Move(*process, ids, parent->GetParent()->GetId(), parent->GetRow() + (direction < 0 ? 0 : 1));
}

void StatementView::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit SigQuickPickAsked();
        return;
    case Qt::Key_F2:
        emit SigPropertiesAsked();
        return;
    default:
        QTreeView::keyPressEvent(event);
    }
}

void StatementView::paintEvent(QPaintEvent* event)
{
    QTreeView::paintEvent(event);
    if (statements->rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(WbTheme::Instance()->Color(WbColor::TextSecondary));
    const QString text = statements->Process()
                             ? QStringLiteral("这个流程还没有语句\n\n从左侧把指令拖到这里，或双击指令添加\n"
                                              "也可以按回车键，输入几个字直接查找指令")
                             : QStringLiteral("没有打开的流程");
    painter.drawText(viewport()->rect().adjusted(24, 24, -24, -24), Qt::AlignCenter | Qt::TextWordWrap, text);
}

void StatementView::drawRow(QPainter* painter, const QStyleOptionViewItem& options,
                            const QModelIndex& index) const
{
    // The style would paint its selection behind the whole row; the card shows it.
    QStyleOptionViewItem plain = options;
    plain.showDecorationSelected = false;
    plain.palette.setColor(QPalette::Highlight, Qt::transparent);
    QTreeView::drawRow(painter, plain, index);
}

void StatementView::drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const int step = indentation();
    painter->setPen(QPen(WbTheme::Instance()->Color(WbColor::BorderStrong), 1));
    for (int x = rect.right() - step - step / 2; x > rect.left(); x -= step)
        painter->drawLine(QPointF(x + 0.5, rect.top()), QPointF(x + 0.5, rect.bottom() + 1));
    if (model()->hasChildren(index.siblingAtColumn(0))) {
        const QPointF centre(rect.right() - step / 2.0, rect.center().y() + 0.5);
        const qreal half = step / 6.0;
        QPolygonF arrow({QPointF(-half / 2, -half), QPointF(half / 2, 0), QPointF(-half / 2, half)});
        if (isExpanded(index.siblingAtColumn(0)))
            arrow = QPolygonF({QPointF(-half, -half / 2), QPointF(0, half / 2), QPointF(half, -half / 2)});
        painter->setPen(
            QPen(WbTheme::Instance()->Color(WbColor::TextSecondary), 1.6, Qt::SolidLine, Qt::RoundCap));
        painter->drawPolyline(arrow.translated(centre));
    }
    painter->restore();
}

void StatementView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QTreeView::selectionChanged(selected, deselected);
    emit SigSelectionChanged();
}

void StatementView::rowsInserted(const QModelIndex& parent, int start, int end)
{
    QTreeView::rowsInserted(parent, start, end);
    for (int row = start; row <= end; ++row)
        expandRecursively(statements->index(row, 0, parent));
    if (parent.isValid())
        expand(parent);
    FitGutter();
}
