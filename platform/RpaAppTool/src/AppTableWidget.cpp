#include "AppTableWidget_p.h"
#include "CsvText_p.h"
#include "CutTextDelegate_p.h"
#include "TableModel_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbEditHistory.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbSystemDialogs.h>
#include <WbBaseUI/WbToast.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QSaveFile>
#include <QTableView>
#include <QToolButton>

namespace
{

constexpr int LeastWidth = 40;
constexpr int UsualWidth = 140;
constexpr int MostWidth = 1200;
constexpr qint64 CsvBytesAtMost = 64 * 1024 * 1024;

QVector<int> SelectedRows(const QTableView& view)
{
    QVector<int> rows;
    const QModelIndexList cells = view.selectionModel()->selectedIndexes();
    for (const QModelIndex& cell : cells)
        rows << cell.row();
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

QString TextOf(const TableMisfits& misfits)
{
    QStringList texts;
    if (misfits.ofAnotherType > 0)
        texts << QStringLiteral("%1 个单元格与列的类型不符").arg(misfits.ofAnotherType);
    if (misfits.tooLong > 0)
        texts << QStringLiteral("%1 个单元格的文字超过 16 MB").arg(misfits.tooLong);
    return texts.join(QStringLiteral("，"));
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
    setObjectName(QStringLiteral("AppTableWidget"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, DpiTool::ScaleDefault(4));
    layout->setSpacing(DpiTool::ScaleDefault(4));
    layout->addWidget(BuildToolBar());
    BuildView();
    layout->addWidget(view, 1);

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
    connect(model, &QAbstractItemModel::modelReset, this, [this] { SetWidths(0, model->columnCount() - 1); });
    connect(model, &QAbstractItemModel::columnsInserted, this,
            [this](const QModelIndex&, int first, int last) { SetWidths(first, last); });
    connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &AppTableWidget::UpdateState);
    UpdateState();
}

AppTableWidget::~AppTableWidget() = default;

QWidget* AppTableWidget::BuildToolBar()
{
    auto* bar = new QWidget;
    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(DpiTool::ScaleDefault(4));
    const auto add = [&](const QString& name, const QString& icon, const QString& tip, auto slot) {
        auto* button = new QToolButton;
        button->setObjectName(name);
        button->setAutoRaise(true);
        button->setIcon(WbIcons::Get(icon));
        button->setToolTip(tip);
        button->setAccessibleName(tip);
        connect(button, &QToolButton::clicked, this, slot);
        layout->addWidget(button);
        return button;
    };
    editButtons << add(QStringLiteral("tableAddRow"), QStringLiteral("table-row-add"),
                       QStringLiteral("添加行"), &AppTableWidget::AddRow);
    editButtons << add(QStringLiteral("tableDeleteRows"), QStringLiteral("delete"),
                       QStringLiteral("删除选中的行"), &AppTableWidget::RemoveRows);
    editButtons << add(QStringLiteral("tableImport"), QStringLiteral("import"),
                       QStringLiteral("从 CSV 文件导入"), &AppTableWidget::ImportCsv);
    add(QStringLiteral("tableExport"), QStringLiteral("export"), QStringLiteral("导出为 CSV 文件"),
        &AppTableWidget::ExportCsv);
    layout->addStretch();
    countLabel = new QLabel;
    countLabel->setObjectName(QStringLiteral("tableCount"));
    layout->addWidget(countLabel);
    return bar;
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
    view->verticalHeader()->setDefaultSectionSize(DpiTool::ScaleDefault(28));
    // Sizes measured row by row would make a long table slow.
    view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view->horizontalHeader()->setDefaultSectionSize(DpiTool::ScaleDefault(UsualWidth));
    view->horizontalHeader()->setStretchLastSection(true);
    view->setMinimumHeight(DpiTool::ScaleDefault(120));
    view->installEventFilter(this);
}

void AppTableWidget::SetTableData(RpaTableData* pageData)
{
    if (RpaTableData* const former = model->GetData())
        former->disconnect(this);
    model->SetData(pageData);
    if (pageData)
        connect(pageData, &RpaTableData::SigResultsChanged, this, &AppTableWidget::UpdateState);
    UpdateState();
}

void AppTableWidget::SetUserEditable(bool editable)
{
    userEditable = editable;
    UpdateState();
}

// What is typed between the results of a run would go with them, or stay with them.
bool AppTableWidget::IsEditable() const
{
    return userEditable && !HasResults();
}

bool AppTableWidget::HasResults() const
{
    return model->GetData() && model->GetData()->HasResults();
}

void AppTableWidget::UpdateState()
{
    model->SetUserEditable(IsEditable());
    const QString count = QStringLiteral("共 %1 行").arg(model->rowCount());
    countLabel->setText(HasResults() ? count + QStringLiteral("，运行结果") : count);
    view->setToolTip(userEditable && HasResults() ? QStringLiteral("表格中是运行结果，保留或还原后才能修改")
                                                  : QString());
    const bool hasColumns = model->columnCount() > 0;
    for (QToolButton* button : qAsConst(editButtons))
        button->setEnabled(IsEditable() && hasColumns);
    if (!view->selectionModel()->hasSelection())
        editButtons.at(1)->setEnabled(false);
}

// The author's widths where there are any.
void AppTableWidget::SetWidths(int first, int last)
{
    for (int column = first; column <= last; ++column) {
        const int given = model->GetData()->GetColumn(column).width;
        const int width = given > 0 ? qBound(LeastWidth, given, MostWidth) : UsualWidth;
        view->setColumnWidth(column, DpiTool::ScaleDefault(width));
    }
}

void AppTableWidget::AddRow()
{
    const QModelIndex current = view->currentIndex();
    const int row = current.isValid() ? current.row() + 1 : model->rowCount();
    model->InsertRow(row);
    view->setCurrentIndex(model->index(row, 0));
    view->scrollTo(model->index(row, 0));
    view->setFocus();
}

void AppTableWidget::RemoveRows()
{
    model->RemoveRows(SelectedRows(*view));
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
    for (int row = area.top(); row <= area.bottom(); ++row) {
        QStringList cells;
        for (int column = area.left(); column <= area.right(); ++column)
            cells << TableModel::TextOf(model->GetData()->GetCell(row, column));
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
    const TableMisfits misfits =
        model->PasteTexts(qMax(0, current.row()), qMax(0, current.column()), rows, QStringLiteral("粘贴"));
    if (misfits.Any())
        WbToast::Show(QStringLiteral("%1，没有粘贴").arg(TextOf(misfits)), ToastWarning);
}

void AppTableWidget::ImportCsv()
{
    const QPointer<RpaTableData> asked = model->GetData();
    const QString path = WbSystemDialogs::OpenFile(this, QStringLiteral("导入 CSV 文件"), QString(),
                                                   QStringLiteral("CSV 文件 (*.csv *.txt);;所有文件 (*)"));
    // Another page may be shown by now; what was meant for the table before must not go into its table.
    if (path.isEmpty() || !asked || model->GetData() != asked)
        return;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        WbToast::Show(QStringLiteral("无法读取文件：%1").arg(file.errorString()), ToastError);
        return;
    }
    if (file.size() > CsvBytesAtMost) {
        WbToast::Show(QStringLiteral("文件超过 64 MB，无法导入"), ToastError);
        return;
    }
    QVector<QStringList> rows = CsvText::Read(file.readAll());
    // A first line that repeats the column names is their header, not a row.
    if (!rows.isEmpty() && rows.first() == GetColumnNames())
        rows.removeFirst();
    const TableMisfits misfits = model->PasteTexts(model->rowCount(), 0, rows, QStringLiteral("导入"));
    if (misfits.Any())
        WbToast::Show(QStringLiteral("已导入 %1 行，%2，留空").arg(rows.size()).arg(TextOf(misfits)),
                      ToastWarning);
    else
        WbToast::Show(QStringLiteral("已导入 %1 行").arg(rows.size()), ToastSuccess);
}

void AppTableWidget::ExportCsv()
{
    const QPointer<RpaTableData> asked = model->GetData();
    const QString path =
        WbSystemDialogs::SaveFile(this, QStringLiteral("导出 CSV 文件"), QStringLiteral("表格.csv"),
                                  QStringLiteral("CSV 文件 (*.csv)"));
    if (path.isEmpty() || model->GetData() != asked)
        return;
    QVector<QStringList> rows{GetColumnNames()};
    for (int row = 0; row < GetRowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model->columnCount(); ++column)
            cells << TableModel::TextOf(GetCell(row, column));
        rows << cells;
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(CsvText::Write(rows)) < 0 || !file.commit())
        WbToast::Show(QStringLiteral("无法写入文件：%1").arg(file.errorString()), ToastError);
    else
        WbToast::Show(QStringLiteral("已导出 %1 行").arg(GetRowCount()), ToastSuccess);
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
    else if (event->matches(QKeySequence::Paste))
        Paste();
    else if (event->matches(QKeySequence::Undo) && IsEditable())
        undoStack.undo();
    else if (event->matches(QKeySequence::Redo) && IsEditable())
        undoStack.redo();
    else if (event->key() == Qt::Key_Delete && IsEditable())
        model->ClearCells(view->selectionModel()->selectedIndexes());
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
