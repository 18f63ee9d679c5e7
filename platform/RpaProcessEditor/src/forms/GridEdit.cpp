// SPDX-License-Identifier: Apache-2.0

#include "GridCell_p.h"
#include "GridEdit_p.h"
#include "ValueEdit_p.h"
#include "ValuePicker_p.h"
#include "ValueText_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbFocusForward.h>
#include <WbBaseUI/WbToast.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QToolButton>

namespace
{
constexpr int mostRowsShown = 8;

bool IsTable(RpaArgumentForm form)
{
    return form == RpaArgumentForm::Table;
}
} // namespace

GridEdit::GridEdit(const RpaArgumentInfo& argument, const FieldOffers& fieldOffers, QWidget* parent)
    : FormEditor(parent), form(argument.form), offers(fieldOffers), table(new QTableWidget),
      picker(new ValuePicker(offers, argument.title, this))
{
    BuildTable();
    table->setAccessibleName(argument.title);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(table);
    layout->addWidget(BuildButtons());
    new WbFocusForward(this, table);
    connect(table, &QTableWidget::cellChanged, this, &GridEdit::Tell);
    connect(picker, &ValuePicker::SigPicked, this, &GridEdit::Pick);
}

void GridEdit::BuildTable()
{
    table->setObjectName(QStringLiteral("valueGrid"));
    table->setItemDelegate(new GridCell(offers.variables, table));
    table->setTabKeyNavigation(false);
    table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                           QAbstractItemView::AnyKeyPressed);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table->horizontalHeader()->setMinimumSectionSize(DpiTool::ScaleDefault(50));
    table->horizontalHeader()->setVisible(form == RpaArgumentForm::Dictionary || IsTable(form));
    table->verticalHeader()->setDefaultSectionSize(DpiTool::ScaleDefault(32));
    table->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    table->installEventFilter(this);
}

QWidget* GridEdit::BuildButtons()
{
    auto* bar = new QWidget;
    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    AddButton(bar, "addRow", QStringLiteral("add"), QStringLiteral("添加一行（Ctrl+Enter）"),
              &GridEdit::AddRow);
    AddButton(bar, "removeRow", QStringLiteral("delete"), QStringLiteral("删除这一行（Ctrl+Delete）"),
              &GridEdit::RemoveRow);
    AddButton(bar, "rowUp", QStringLiteral("move-up"), QStringLiteral("上移（Alt+↑）"), &GridEdit::RaiseRow);
    AddButton(bar, "rowDown", QStringLiteral("move-down"), QStringLiteral("下移（Alt+↓）"),
              &GridEdit::LowerRow);
    if (IsTable(form)) {
        AddButton(bar, "addColumn", QStringLiteral("table-column"), QStringLiteral("添加一列"),
                  &GridEdit::AddColumn);
        AddButton(bar, "removeColumn", QStringLiteral("minus"), QStringLiteral("删除最后一列"),
                  &GridEdit::RemoveColumn);
    }
    layout->addStretch();
    layout->addWidget(picker->MakeButton());
    return bar;
}

void GridEdit::AddButton(QWidget* bar, const char* name, const QString& icon, const QString& tip,
                         void (GridEdit::*act)())
{
    auto* button = UIUtils::IconButton(QLatin1String(name), icon, tip);
    bar->layout()->addWidget(button);
    connect(button, &QToolButton::clicked, this, act);
}

void GridEdit::Show(const QString& python)
{
    grid = RpaGrid::Read(form, python).value_or(RpaGrid());
    Fill();
}

// One more row than there are columns of the page is never needed: their names stand before the rows.
void GridEdit::Fill()
{
    const QSignalBlocker quiet(table);
    const QVector<RpaGrid::Row>& rows = grid.GetRows();
    int columns = IsTable(form)                         ? qMax(1, offers.columns.size())
                  : form == RpaArgumentForm::Dictionary ? 2
                                                        : 1;
    for (const RpaGrid::Row& row : rows)
        columns = qMax(columns, row.size());
    const bool named = form == RpaArgumentForm::Columns;
    table->setColumnCount(columns);
    table->setRowCount(qMax(rows.size(), named ? qMax(1, offers.columns.size()) : 1));
    for (int row = 0; row < table->rowCount(); ++row)
        for (int column = 0; column < columns; ++column)
            FillCell(row, column, rows.value(row).value(column));
    QStringList names;
    for (int row = 0; row < table->rowCount(); ++row)
        names.append(named ? offers.columns.value(row, QString::number(row + 1)) : QString::number(row + 1));
    table->setVerticalHeaderLabels(names);
    if (form == RpaArgumentForm::Dictionary)
        table->setHorizontalHeaderLabels({QStringLiteral("名称"), QStringLiteral("值")});
    FitHeight();
}

void GridEdit::FillCell(int row, int column, const RpaValue& value)
{
    auto* item = new QTableWidgetItem(ValueText::Line(value, offers.variables));
    item->setData(GridCell::valueRole, QVariant::fromValue(value));
    table->setItem(row, column, item);
}

RpaValue GridEdit::CellValue(int row, int column) const
{
    const QTableWidgetItem* item = table->item(row, column);
    return item ? item->data(GridCell::valueRole).value<RpaValue>() : RpaValue();
}

void GridEdit::FitHeight()
{
    const int rows = qMin(table->rowCount(), mostRowsShown);
    const int header =
        table->horizontalHeader()->isHidden() ? 0 : table->horizontalHeader()->sizeHint().height();
    table->setFixedHeight(rows * table->verticalHeader()->defaultSectionSize() + header +
                          2 * table->frameWidth() + 2);
}

void GridEdit::Tell()
{
    QVector<RpaGrid::Row> rows;
    for (int row = 0; row < table->rowCount(); ++row) {
        RpaGrid::Row values;
        for (int column = 0; column < table->columnCount(); ++column)
            values.append(CellValue(row, column));
        // Rows of a table keep their own lengths.
        const int least = grid.GetRows().value(row).size();
        while (IsTable(form) && least > 0 && values.size() > least && values.last().IsEmpty())
            values.removeLast();
        rows.append(values);
    }
    const bool nothing = rows.size() == 1 && rows.first() == RpaGrid::Row(table->columnCount());
    grid.SetRows(nothing ? QVector<RpaGrid::Row>() : rows);
    emit SigEdited(grid.ToPython());
}

// An act of its own: one step to undo.
void GridEdit::TellWhole(int row, int column)
{
    emit SigFinished();
    Tell();
    Fill();
    table->setCurrentCell(qBound(0, row, table->rowCount() - 1), qMax(0, column));
    table->setFocus();
    emit SigFinished();
}

void GridEdit::AddRow()
{
    const int row = table->currentRow() < 0 ? table->rowCount() : table->currentRow() + 1;
    {
        const QSignalBlocker quiet(table);
        table->insertRow(row);
    }
    TellWhole(row, 0);
}

void GridEdit::RemoveRow()
{
    const int row = table->currentRow();
    if (row < 0)
        return;
    {
        const QSignalBlocker quiet(table);
        table->removeRow(row);
    }
    TellWhole(row, table->currentColumn());
}

void GridEdit::MoveRow(int direction)
{
    const int row = table->currentRow();
    const int other = row + direction;
    if (row < 0 || other < 0 || other >= table->rowCount())
        return;
    {
        const QSignalBlocker quiet(table);
        for (int column = 0; column < table->columnCount(); ++column) {
            const RpaValue moved = CellValue(row, column);
            FillCell(row, column, CellValue(other, column));
            FillCell(other, column, moved);
        }
    }
    TellWhole(other, table->currentColumn());
}

void GridEdit::AddColumn()
{
    const QSignalBlocker quiet(table);
    table->insertColumn(table->columnCount());
    table->setCurrentCell(qMax(0, table->currentRow()), table->columnCount() - 1);
}

void GridEdit::RemoveColumn()
{
    if (table->columnCount() < 2)
        return;
    {
        const QSignalBlocker quiet(table);
        table->removeColumn(table->columnCount() - 1);
    }
    TellWhole(table->currentRow(), table->currentColumn());
}

void GridEdit::ClearCells()
{
    const QList<QTableWidgetItem*> items = table->selectedItems();
    {
        const QSignalBlocker quiet(table);
        for (const QTableWidgetItem* item : items)
            FillCell(item->row(), item->column(), RpaValue());
    }
    TellWhole(table->currentRow(), table->currentColumn());
}

// What a spreadsheet copies: cells between tabs, rows between lines.
void GridEdit::Paste()
{
    QStringList lines = QGuiApplication::clipboard()->text().split(QLatin1Char('\n'));
    if (lines.size() > 1 && lines.last().isEmpty())
        lines.removeLast();
    const int most =
        qMin(RpaGrid::mostRows, RpaGrid::mostCells / qMax(1, lines.first().count(QLatin1Char('\t')) + 1));
    if (lines.size() > most) {
        WbToast::Show(QStringLiteral("这里最多粘贴 %1 行，更多的内容请放在文件里").arg(most), ToastWarning);
        return;
    }
    const int top = qMax(0, table->currentRow());
    const int left = qMax(0, table->currentColumn());
    const QSignalBlocker quiet(table);
    for (int i = 0; i < lines.size(); ++i) {
        const QStringList cells = lines.at(i).split(QLatin1Char('\t'));
        table->setRowCount(qMax(table->rowCount(), top + i + 1));
        for (int k = 0; k < cells.size() && (left + k < table->columnCount() || IsTable(form)); ++k) {
            table->setColumnCount(qMax(table->columnCount(), left + k + 1));
            const RpaValuePart text{RpaValuePart::Kind::Text, cells.at(k).trimmed()};
            FillCell(top + i, left + k, ValueText::Meant({text}, offers.variables));
        }
    }
    TellWhole(top, left);
}

void GridEdit::Pick(const RpaValuePart& part)
{
    const int row = qMax(0, table->currentRow());
    const int column = qMax(0, table->currentColumn());
    {
        const QSignalBlocker quiet(table);
        FillCell(row, column, RpaValue{{part}, false});
    }
    TellWhole(row, column);
}

bool GridEdit::eventFilter(QObject* watched, QEvent* event)
{
    struct Key
    {
        int key;
        Qt::KeyboardModifiers modifiers;
        void (GridEdit::*act)();
    };
    static const Key keys[] = {{Qt::Key_Return, Qt::ControlModifier, &GridEdit::AddRow},
                               {Qt::Key_Delete, Qt::ControlModifier, &GridEdit::RemoveRow},
                               {Qt::Key_Up, Qt::AltModifier, &GridEdit::RaiseRow},
                               {Qt::Key_Down, Qt::AltModifier, &GridEdit::LowerRow},
                               {Qt::Key_V, Qt::ControlModifier, &GridEdit::Paste},
                               {Qt::Key_Delete, Qt::NoModifier, &GridEdit::ClearCells}};
    if (watched == table && event->type() == QEvent::KeyPress) {
        const auto* pressed = static_cast<QKeyEvent*>(event);
        for (const Key& key : keys) {
            if (pressed->key() == key.key && pressed->modifiers() == key.modifiers) {
                (this->*key.act)();
                return true;
            }
        }
        if (pressed->key() == Qt::Key_Space && pressed->modifiers() == Qt::ControlModifier) {
            picker->Open();
            return true;
        }
    }
    return FormEditor::eventFilter(watched, event);
}
