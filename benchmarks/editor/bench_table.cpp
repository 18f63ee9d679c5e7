// SPDX-License-Identifier: Apache-2.0

// The table of a page with 100,000 rows that a run appends one by one, beside a bare table view.

#include "FrameTimes.h"

#include <RpaAppData/RpaTableData.h>
#include <RpaAppTool/IAppTableWidget.h>
#include <WbBaseUI/WbTheme.h>

#include <QApplication>
#include <QStandardItemModel>
#include <QTableView>

#include <memory>

namespace
{
constexpr int columnCount = 6;
constexpr int frames = 400;
const QSize size(900, 700);

QString TextAt(int row, int column)
{
    return QStringLiteral("单元格 %1-%2").arg(row).arg(column);
}

void Scroll(QAbstractScrollArea& view)
{
    FrameTimes::Print("scroll by rows", FrameTimes::Scroll(view, frames, 1));
    FrameTimes::Print("jump by pages", FrameTimes::Scroll(view, frames, 1009));
}

void MeasureTable(int rows)
{
    std::printf("table of a page, %d rows\n", rows);
    RpaTableData data;
    for (int i = 0; i < columnCount; ++i) {
        RpaTableColumn column;
        column.name = QStringLiteral("列%1").arg(i + 1);
        data.InsertColumn(-1, column);
    }
    const std::unique_ptr<IAppTableWidget> table(IAppTableWidget::CreateTableWidget(nullptr));
    table->SetTableData(&data);
    table->resize(size);
    table->show();
    QCoreApplication::processEvents();
    FrameTimes::PrintTime("append row by row", FrameTimes::Measure([&] {
                              for (int row = 0; row < rows; ++row) {
                                  QVariantList cells;
                                  for (int column = 0; column < columnCount; ++column)
                                      cells << TextAt(row, column);
                                  table->AppendRow(cells);
                              }
                          }));
    Scroll(*table->findChild<QTableView*>(QStringLiteral("tableView")));
}

void MeasureBareTable(int rows)
{
    std::printf("QTableView and QStandardItemModel, %d rows\n", rows);
    QStandardItemModel model(0, columnCount);
    QTableView view;
    view.setModel(&model);
    view.setWordWrap(false);
    view.resize(size);
    view.show();
    QCoreApplication::processEvents();
    FrameTimes::PrintTime("append row by row", FrameTimes::Measure([&] {
                              for (int row = 0; row < rows; ++row) {
                                  QList<QStandardItem*> cells; // the model takes them over
                                  for (int column = 0; column < columnCount; ++column)
                                      cells << new QStandardItem(TextAt(row, column));
                                  model.appendRow(cells);
                              }
                          }));
    Scroll(view);
}
} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    for (const int rows : {10000, 100000}) {
        MeasureTable(rows);
        MeasureBareTable(rows);
    }
    return 0;
}
