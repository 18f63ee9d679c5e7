// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>

#include <QAbstractItemModelTester>
#include <QLineEdit>
#include <QTableView>
#include <QTest>
#include <QToolButton>

#include <memory>

// A new app and the editor panels of its page on the screen. Made anew for each test.
class PanelForm
{
protected:
    void Start()
    {
        tester.reset();
        app = RpaAppDataPtr::create();
        app->InitDefault();
    }

    RpaUIData* Page() { return app->GetUIDataManager()->GetUIData(0); }
    template <typename Panel, typename Data>
    void Bind(Panel& panel, Data* data)
    {
        panel.SetAppDataPtr(app);
        panel.Init(data);
        panel.resize(400, 300);
        panel.show();
        app->SetModified(false);
        model = View(panel)->model();
        tester = std::make_unique<QAbstractItemModelTester>(
            model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    }
    static QTableView* View(QWidget& panel)
    {
        return panel.findChild<QTableView*>(QStringLiteral("recordView"));
    }
    static void Click(QWidget& panel, const char* name)
    {
        QTest::mouseClick(panel.findChild<QToolButton*>(QLatin1String(name)), Qt::LeftButton);
    }
    // Adds a record and leaves its first cell as it is.
    static void Add(QWidget& panel)
    {
        Click(panel, "recordAdd");
        QTest::keyClick(View(panel)->findChild<QLineEdit*>(), Qt::Key_Escape);
        QTRY_VERIFY(!View(panel)->findChild<QLineEdit*>());
    }
    QVariant Shown(int row, int column, int role = Qt::DisplayRole)
    {
        return model->index(row, column).data(role);
    }
    bool Write(int row, int column, const QVariant& value, int role = Qt::EditRole)
    {
        return model->setData(model->index(row, column), value, role);
    }

    RpaAppDataPtr app;
    QAbstractItemModel* model = nullptr;
    std::unique_ptr<QAbstractItemModelTester> tester;
};
