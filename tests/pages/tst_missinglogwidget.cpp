// SPDX-License-Identifier: Apache-2.0

#include "RpaAppUIDesignWidget.h"
#include "TestApp.h"

#include <RpaAppData/RpaUIDataManager.h>
#include <RpaAppTool/IAppLogWidget.h>

#include <QToolButton>
#include <QtTest>

// Stands in the place of the platform's: a workstation whose log cannot be made.
IAppLogWidget* IAppLogWidget::CreateDevelopLog(QWidget*)
{
    return nullptr;
}

class MissingLogWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void leavesThePlaceOfTheLogEmpty()
    {
        RpaAppUIDesignWidget page;
        const auto app = RpaAppDataPtr::create();
        app->InitDefault();
        page.SetRpaAppData(app);
        page.show();

        const auto* place = page.findChild<QWidget*>(QStringLiteral("widgetLog"));
        QVERIFY(place->findChildren<QWidget*>().isEmpty());
        QTest::mouseClick(page.findChild<QWidget*>(QStringLiteral("widgetParamEditor"))
                              ->findChild<QToolButton*>(QStringLiteral("recordAdd")),
                          Qt::LeftButton);
        QVERIFY(app->GetModified());
    }
};

RPA_TEST_MAIN(MissingLogWidgetTest)

#include "tst_missinglogwidget.moc"
