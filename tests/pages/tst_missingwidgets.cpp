// SPDX-License-Identifier: Apache-2.0

#include "RpaAppUIDesignWidget.h"
#include "TestApp.h"

#include <RpaAppTool/IAppParamWidget.h>
#include <RpaAppTool/IAppTableWidget.h>
#include <RpaAppTool/IAppToolWidget.h>

#include <QLayout>
#include <QToolButton>
#include <QtTest>

// These stand in the place of the platform's: a workstation that cannot make any of them.
IAppToolWidget* IAppToolWidget::CreateToolEditor(QWidget*)
{
    return nullptr;
}

IAppParamWidget* IAppParamWidget::CreateParamWidget(QWidget*)
{
    return nullptr;
}

IAppTableWidget* IAppTableWidget::CreateTableWidget(QWidget*)
{
    return nullptr;
}

class MissingWidgetsTest : public QObject
{
    Q_OBJECT

private slots:
    void leavesTheirPlacesEmpty()
    {
        RpaAppUIDesignWidget page;
        page.show();

        for (const char* name : {"widgetTool", "widgetParam", "widgetTable"}) {
            const auto* place = page.findChild<QWidget*>(QLatin1String(name));
            QVERIFY(place->layout());
            QCOMPARE(place->layout()->count(), 0);
        }
        QVERIFY(page.findChild<QWidget*>(QStringLiteral("widgetLog"))->layout()->count() > 0);
    }

    void offersNothingToTheEngine()
    {
        const RpaAppUIDesignWidget page;

        QVERIFY(!page.GetAppParamEngine());
        QVERIFY(!page.GetAppTableEngine());
    }

    void staysAsItIsWhileAProcessRuns()
    {
        RpaAppUIDesignWidget page;
        page.show();

        page.ProcessStart(QStringLiteral("p"));
        page.ProcessFinish(QStringLiteral("p"));

        QVERIFY(page.isVisible());
    }

    void shrinksItsPanelsAllTheSame()
    {
        RpaAppUIDesignWidget page;
        page.show();
        const auto* space = page.findChild<QWidget*>(QStringLiteral("space_widget"));

        for (const char* name : {"widgetToolEditor", "widgetParamEditor", "widgetTableEditor"}) {
            QVERIFY(space->isHidden());
            QTest::mouseClick(page.findChild<QWidget*>(QLatin1String(name))->findChild<QToolButton*>(),
                              Qt::LeftButton);
        }

        QVERIFY(space->isVisible());
    }
};

RPA_TEST_MAIN(MissingWidgetsTest)

#include "tst_missingwidgets.moc"
