// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaTableData.h>
#include <RpaAppTool/IAppTableWidget.h>

#include <QAbstractItemModelTester>
#include <QTableView>
#include <QTest>
#include <QToolButton>

#include <memory>

// The table of a page on the screen: a column of texts, one of numbers, one row. Made anew for each test.
class TableForm
{
protected:
    void Show()
    {
        tester.reset();
        host = std::make_unique<QWidget>();
        widget = IAppTableWidget::CreateTableWidget(host.get());
        table = std::make_unique<RpaTableData>();
        RpaTableColumn name;
        name.name = QStringLiteral("姓名");
        RpaTableColumn amount;
        amount.name = QStringLiteral("金额");
        amount.type = RpaColumnType::Number;
        table->InsertColumn(-1, name);
        table->InsertColumn(-1, amount);
        table->AppendRow({QStringLiteral("王"), 1});
        widget->SetTableData(table.get());
        tester = std::make_unique<QAbstractItemModelTester>(
            Model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        host->resize(500, 300);
        host->show();
    }

    QWidget* Part(const char* name) { return host->findChild<QWidget*>(QLatin1String(name)); }
    QTableView* View() { return host->findChild<QTableView*>(QStringLiteral("tableView")); }
    QAbstractItemModel* Model() { return View()->model(); }
    void PressTool(const char* name)
    {
        QTest::mouseClick(host->findChild<QToolButton*>(QLatin1String(name)), Qt::LeftButton);
    }

    std::unique_ptr<RpaTableData> table;
    std::unique_ptr<QWidget> host;
    IAppTableWidget* widget = nullptr;
    std::unique_ptr<QAbstractItemModelTester> tester;
};
