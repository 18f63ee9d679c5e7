// SPDX-License-Identifier: Apache-2.0

#include "RichFormats_p.h"
#include "RichTableActions_p.h"
#include "RichTextView_p.h"

#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QTextTable>
#include <QWidgetAction>

namespace
{
constexpr int pickRows = 8;
constexpr int pickColumns = 8;
constexpr int pickCell = 22;

// Asks for the size of a new table by pointing or with the arrow keys.
class TableSizePicker : public QWidget
{
    Q_OBJECT

public:
    explicit TableSizePicker(QWidget* parent = nullptr) : QWidget(parent)
    {
        setObjectName(QStringLiteral("tableSizePicker"));
        setMouseTracking(true);
        setFocusPolicy(Qt::StrongFocus);
        setFixedSize(pickColumns * pickCell + 16, pickRows * pickCell + 38);
        setAccessibleName(QStringLiteral("选择表格大小，方向键调整，回车插入"));
    }

signals:
    void SigPicked(int rows, int columns);

protected:
    void mouseMoveEvent(QMouseEvent* event) override { Point(event->pos()); }

    void mouseReleaseEvent(QMouseEvent* event) override
    {
        Point(event->pos());
        emit SigPicked(rows, columns);
    }

    void keyPressEvent(QKeyEvent* event) override
    {
        switch (event->key()) {
        case Qt::Key_Left:
            SetSize(rows, columns - 1);
            break;
        case Qt::Key_Right:
            SetSize(rows, columns + 1);
            break;
        case Qt::Key_Up:
            SetSize(rows - 1, columns);
            break;
        case Qt::Key_Down:
            SetSize(rows + 1, columns);
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            emit SigPicked(rows, columns);
            break;
        default:
            QWidget::keyPressEvent(event);
        }
    }

    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        QColor line = palette().color(QPalette::Text);
        line.setAlphaF(0.35);
        QColor chosen = palette().color(QPalette::Highlight);
        painter.setPen(line);
        for (int row = 0; row < pickRows; ++row) {
            for (int column = 0; column < pickColumns; ++column) {
                chosen.setAlphaF(row < rows && column < columns ? 0.5 : 0.0);
                painter.setBrush(chosen);
                painter.drawRect(8 + column * pickCell, 8 + row * pickCell, pickCell - 4, pickCell - 4);
            }
        }
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(rect().adjusted(0, 0, 0, -6), Qt::AlignHCenter | Qt::AlignBottom,
                         QStringLiteral("%1 行 × %2 列").arg(rows).arg(columns));
    }

private:
    void Point(const QPoint& at) { SetSize((at.y() - 8) / pickCell + 1, (at.x() - 8) / pickCell + 1); }

    void SetSize(int newRows, int newColumns)
    {
        rows = qBound(1, newRows, pickRows);
        columns = qBound(1, newColumns, pickColumns);
        update();
    }

    int rows = 3;
    int columns = 3;
};

void InsertTable(RichTextView& view, int rows, int columns)
{
    QTextTableFormat format;
    format.setBorder(1);
    format.setBorderCollapse(true);
    format.setCellSpacing(0);
    format.setCellPadding(6);
    format.setTopMargin(6);
    format.setBottomMargin(6);
    format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
    QTextCursor cursor = view.textCursor();
    cursor.beginEditBlock();
    QTextTable* table = cursor.insertTable(rows, columns, format);
    QTextBlockFormat paragraph;
    RichFormats::SetParagraphMargins(paragraph);
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column)
            table->cellAt(row, column).firstCursorPosition().setBlockFormat(paragraph);
    cursor.endEditBlock();
    view.setTextCursor(table->cellAt(0, 0).firstCursorPosition());
    view.ensureCursorVisible();
}

using TableAct = void (*)(QTextTable& table, const QTextTableCell& cell);

struct TableEntry
{
    const char* name;
    const char* text;
    TableAct act;
};

const TableEntry entries[] = {
    {"tableRowAbove", "在上方插入行",
     [](QTextTable& t, const QTextTableCell& c) { t.insertRows(c.row(), 1); }},
    {"tableRowBelow", "在下方插入行",
     [](QTextTable& t, const QTextTableCell& c) { t.insertRows(c.row() + c.rowSpan(), 1); }},
    {"tableColumnLeft", "在左侧插入列",
     [](QTextTable& t, const QTextTableCell& c) { t.insertColumns(c.column(), 1); }},
    {"tableColumnRight", "在右侧插入列",
     [](QTextTable& t, const QTextTableCell& c) { t.insertColumns(c.column() + c.columnSpan(), 1); }},
    {"tableRemoveRow", "删除行",
     [](QTextTable& t, const QTextTableCell& c) { t.removeRows(c.row(), c.rowSpan()); }},
    {"tableRemoveColumn", "删除列",
     [](QTextTable& t, const QTextTableCell& c) { t.removeColumns(c.column(), c.columnSpan()); }},
    {"tableRemove", "删除表格", [](QTextTable& t, const QTextTableCell&) { t.removeRows(0, t.rows()); }},
};

void RunOnTable(RichTextView& view, TableAct act)
{
    QTextCursor cursor = view.textCursor();
    QTextTable* table = cursor.currentTable();
    if (!table)
        return;
    const QTextTableCell cell = table->cellAt(cursor);
    const int row = cell.row();
    const int column = cell.column();
    const QPointer<QTextTable> guard(table); // the last row takes the table with it
    cursor.beginEditBlock();
    act(*table, cell);
    cursor.endEditBlock();
    if (guard && guard->rows() > 0 && guard->columns() > 0) {
        const QTextTableCell near =
            guard->cellAt(qMin(row, guard->rows() - 1), qMin(column, guard->columns() - 1));
        view.setTextCursor(near.firstCursorPosition());
    }
}
} // namespace

void FillTableMenu(QMenu& menu, RichTextView& view)
{
    auto* picker = new TableSizePicker;
    auto* pickerAction = new QWidgetAction(&menu);
    pickerAction->setDefaultWidget(picker);
    menu.addAction(pickerAction);
    QObject::connect(picker, &TableSizePicker::SigPicked, &view, [&menu, &view](int rows, int columns) {
        menu.close();
        InsertTable(view, rows, columns);
        view.setFocus();
    });
    menu.addSeparator();
    for (const TableEntry& entry : entries) {
        QAction* action = menu.addAction(QString::fromUtf8(entry.text));
        action->setObjectName(QLatin1String(entry.name));
        const TableAct act = entry.act;
        QObject::connect(action, &QAction::triggered, &view, [&view, act] { RunOnTable(view, act); });
        QObject::connect(&menu, &QMenu::aboutToShow, action, [&view, action] {
            action->setEnabled(view.textCursor().currentTable() != nullptr);
        });
    }
    QObject::connect(&menu, &QMenu::aboutToShow, picker, [picker] { picker->setFocus(); });
}

#include "RichTableActions.moc"
