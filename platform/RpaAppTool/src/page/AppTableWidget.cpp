// SPDX-License-Identifier: Apache-2.0

#include "AppTableWidget_p.h"
#include "CsvText_p.h"
#include "CutTextDelegate_p.h"
#include "TableExchange_p.h"
#include "TableFind_p.h"
#include "TableWidths_p.h"
#include "TransferBar_p.h"

#include <OxBase/DpiFollower.h>
#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbEditHistory.h>
#include <WbBaseUI/WbFindBar.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbToast.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QTableView>

namespace
{

QVector<int> RowsOf(const QModelIndexList& cells)
{
    QVector<int> rows;
    for (const QModelIndex& cell : cells)
        rows << cell.row();
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

} // namespace

IAppTableWidget::IAppTableWidget(QWidget* parent) : QWidget(parent) {}

IAppTableWidget::~IAppTableWidget() = default;

IAppTableWidget* IAppTableWidget::CreateTableWidget(QWidget* parent)
{
    return new AppTableWidget(parent);
}

AppTableWidget::AppTableWidget(QWidget* parent)
    : IAppTableWidget(parent), model(new TableModel(undoStack, this)), view(new QTableView)
{
    ui.setupUi(this);
    ui.layoutTable->setContentsMargins(0, 0, 0, DpiTool::ScaleDefault(4));
    ui.layoutTable->setSpacing(DpiTool::ScaleDefault(4));
    ui.layoutBar->setSpacing(DpiTool::ScaleDefault(4));
    ConnectBar();
    BuildView();
    BuildHint();
    auto* findBar = new WbFindBar(QStringLiteral("在表格中查找"));
    auto* transferBar = new TransferBar;
    ui.layoutTable->addWidget(findBar);
    ui.layoutTable->addWidget(transferBar);
    ui.layoutTable->addWidget(view, 1);
    find = new TableFind(*model, *view, *findBar, this);
    exchange = new TableExchange(*model, *transferBar, this);

    connect(exchange, &TableExchange::SigBusyChanged, this, &AppTableWidget::UpdateState);
    connect(find, &TableFind::SigModelChanged, this, &AppTableWidget::FollowSelection);
    WbEditHistory::Instance()->Watch(&undoStack, this);
    connect(model, &TableModel::SigRefused, this,
            [](const QString& reason) { WbToast::Show(reason, ToastWarning); });
    for (const auto signal : {&QAbstractItemModel::columnsInserted, &QAbstractItemModel::columnsRemoved})
        connect(model, signal, this, &AppTableWidget::UpdateState);
    // A run may append thousands of rows at once: their number is shown when it lets the user see it.
    stateTimer.setSingleShot(true);
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(model, signal, &stateTimer, [this] {
            if (!stateTimer.isActive())
                stateTimer.start();
        });
    connect(&stateTimer, &QTimer::timeout, this, &AppTableWidget::UpdateState);
    connect(model, &QAbstractItemModel::modelReset, this, &AppTableWidget::UpdateState);
    FollowSelection();
}

void AppTableWidget::FollowSelection()
{
    connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &AppTableWidget::UpdateState);
    UpdateState();
}

void AppTableWidget::ConnectBar()
{
    const auto set = [this](QToolButton* button, const QString& icon, auto slot) {
        button->setIcon(WbIcons::Get(icon));
        connect(button, &QToolButton::clicked, this, slot);
    };
    set(ui.tableAddRow, QStringLiteral("table-row-add"), &AppTableWidget::AddRow);
    set(ui.tableDeleteRows, QStringLiteral("delete"), &AppTableWidget::RemoveRows);
    set(ui.tableImport, QStringLiteral("import"), [this] { exchange->Import(); });
    set(ui.tableExport, QStringLiteral("export"), [this] { exchange->Export(); });
    set(ui.tableFind, QStringLiteral("search"), [this] { find->Open(); });
}

void AppTableWidget::BuildView()
{
    view->setObjectName(QStringLiteral("tableView"));
    view->setAccessibleName(QStringLiteral("表格"));
    view->setModel(model);
    view->setItemDelegate(new CutTextDelegate(view));
    view->setWordWrap(false);
    view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                          QAbstractItemView::AnyKeyPressed);
    DpiFollower::Follow(view, [view = view] {
        view->verticalHeader()->setDefaultSectionSize(DpiTool::ScaleDefault(28));
        view->setMinimumHeight(DpiTool::ScaleDefault(120));
    });
    // Sizes measured row by row would make a long table slow.
    view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view->horizontalHeader()->setHighlightSections(false);
    view->verticalHeader()->setHighlightSections(false);
    new TableWidths(view, model);
    view->installEventFilter(this);
}

void AppTableWidget::BuildHint()
{
    hint = new WbLabel;
    hint->setObjectName(QStringLiteral("emptyHint"));
    hint->setAlignment(Qt::AlignCenter);
    hint->setWordWrap(true);
    hint->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* layout = new QVBoxLayout(view->viewport());
    layout->addWidget(hint);
}

void AppTableWidget::SetTableData(RpaTableData* pageData)
{
    if (RpaTableData* const former = model->GetData())
        former->disconnect(this);
    exchange->EndImport(QStringLiteral("表格已不在页面上，导入已取消"));
    find->ShowAll();
    model->SetData(pageData);
    if (pageData)
        connect(pageData, &RpaTableData::SigResultsChanged, this, &AppTableWidget::UpdateState);
    UpdateState();
}

void AppTableWidget::SetUserEditable(bool editable)
{
    userEditable = editable;
    if (!userEditable)
        exchange->EndImport(QStringLiteral("流程开始运行，导入已取消"));
    UpdateState();
}

// What is typed between the results of a run would go with them, or stay with them.
bool AppTableWidget::IsEditable() const
{
    return userEditable && !HasResults() && !exchange->IsBusy();
}

bool AppTableWidget::HasResults() const
{
    return model->GetData() && model->GetData()->HasResults();
}

void AppTableWidget::UpdateState()
{
    model->SetUserEditable(IsEditable());
    const QString count = QStringLiteral("共 %1 行").arg(model->rowCount());
    ui.tableCount->setText(HasResults() ? count + QStringLiteral("，运行结果") : count);
    view->setToolTip(userEditable && HasResults() ? QStringLiteral("表格中是运行结果，保留或还原后才能修改")
                                                  : QString());
    const bool hasColumns = model->columnCount() > 0;
    for (QToolButton* button : {ui.tableAddRow, ui.tableDeleteRows, ui.tableImport})
        button->setEnabled(IsEditable() && hasColumns);
    ui.tableExport->setEnabled(hasColumns && !exchange->IsBusy());
    if (!view->selectionModel()->hasSelection())
        ui.tableDeleteRows->setEnabled(false);
    hint->setVisible(hasColumns && model->rowCount() == 0);
    hint->setText(IsEditable()
                      ? QStringLiteral("还没有数据。可以用上方的按钮添加行、从文件导入，或由流程写入。")
                      : QStringLiteral("还没有数据"));
}

void AppTableWidget::AddRow()
{
    // An empty row holds nothing that is looked for.
    find->ShowAll();
    const QModelIndex current = view->currentIndex();
    const int row = current.isValid() ? current.row() + 1 : model->rowCount();
    model->InsertRow(row);
    view->setCurrentIndex(model->index(row, 0));
    view->scrollTo(model->index(row, 0));
    view->setFocus();
}

// Those of the table, which are not those of the view while it is filtered.
QModelIndexList AppTableWidget::SelectedCells() const
{
    QModelIndexList cells;
    const QModelIndexList selected = view->selectionModel()->selectedIndexes();
    for (const QModelIndex& cell : selected)
        cells << find->ToTable(cell);
    return cells;
}

void AppTableWidget::RemoveRows()
{
    model->RemoveRows(RowsOf(SelectedCells()));
}

void AppTableWidget::Copy()
{
    const QItemSelection selection = view->selectionModel()->selection();
    if (selection.isEmpty())
        return;
    QRect area;
    for (const QItemSelectionRange& range : selection)
        area |= QRect(QPoint(range.left(), range.top()), QPoint(range.right(), range.bottom()));
    QVector<QStringList> rows;
    const QVector<int> tableRows = find->RowsFrom(area.top(), area.height());
    for (const int row : tableRows) {
        QStringList cells;
        for (int column = area.left(); column <= area.right(); ++column)
            cells << model->GetText(row, column);
        rows << cells;
    }
    QGuiApplication::clipboard()->setText(CsvText::WriteClipboard(rows));
}

void AppTableWidget::Paste()
{
    const QModelIndex current = view->currentIndex();
    const QVector<QStringList> rows = CsvText::ReadClipboard(QGuiApplication::clipboard()->text());
    if (!IsEditable() || rows.isEmpty() || model->columnCount() == 0)
        return;
    const TableMisfits misfits = model->PasteTexts(find->RowsFrom(qMax(0, current.row()), rows.size()),
                                                   qMax(0, current.column()), rows, QStringLiteral("粘贴"));
    if (misfits.Any())
        WbToast::Show(QStringLiteral("%1，没有粘贴").arg(misfits.GetText()), ToastWarning);
}

bool AppTableWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == view && event->type() == QEvent::KeyPress && HandleKey(static_cast<QKeyEvent*>(event)))
        return true;
    return IAppTableWidget::eventFilter(watched, event);
}

bool AppTableWidget::HandleKey(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        Copy();
    else if (event->matches(QKeySequence::Find))
        find->Open();
    else if (event->key() == Qt::Key_F3)
        find->FindNext(event->modifiers().testFlag(Qt::ShiftModifier));
    else if (event->matches(QKeySequence::Paste))
        Paste();
    else if (event->matches(QKeySequence::Undo) && IsEditable())
        undoStack.undo();
    else if (event->matches(QKeySequence::Redo) && IsEditable())
        undoStack.redo();
    else if (event->key() == Qt::Key_Delete && IsEditable())
        model->ClearCells(SelectedCells());
    else
        return false;
    return true;
}

QStringList AppTableWidget::GetColumnNames() const
{
    return model->GetData() ? model->GetData()->GetColumnNames() : QStringList();
}

int AppTableWidget::GetRowCount() const
{
    return model->rowCount();
}

QVariant AppTableWidget::GetCell(int row, int column) const
{
    return model->GetData() ? model->GetData()->GetCell(row, column) : QVariant();
}

bool AppTableWidget::SetCell(int row, int column, const QVariant& value)
{
    RpaTableData* const table = model->GetData();
    return table && table->WriteResult([&] { return table->SetCell(row, column, value); });
}

int AppTableWidget::AppendRow(const QVariantList& values)
{
    RpaTableData* const table = model->GetData();
    int row = -1;
    if (table)
        table->WriteResult([&] { return (row = table->AppendRow(values)) >= 0; });
    return row;
}

void AppTableWidget::ClearRows()
{
    RpaTableData* const table = model->GetData();
    if (table)
        table->WriteResult([table] {
            table->ClearRows();
            return true;
        });
}
