// SPDX-License-Identifier: Apache-2.0

#include "RpaAppEditorNaviWidget.h"
#include "RpaAppNotify.h"
#include "TestApp.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbIconButtonWidget.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

class TestRpaAppEditorNaviWidget : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void startsWithTheUIButtonAndNoSignal();
    void announcesThePressedPage_data();
    void announcesThePressedPage();
    void announcesTheSelectedPageAgain();
    void keepsItsMeasuresAtEveryScale();
    void showsItsTexts();
    void keepsTheMeasuresOfItsForm();
    void selectsBeforeItAnnounces();
    void picksTheProcessPageForOthers();
    void isNotScaledAnyMoreOnceItIsGone();

private:
    WbIconButtonWidget* Button(const char* name) const
    {
        return navi->findChild<WbIconButtonWidget*>(QLatin1String(name));
    }
    QStringList Selected() const;

    std::unique_ptr<RpaAppEditorNaviWidget> navi;
    std::unique_ptr<QSignalSpy> announced;
};

void TestRpaAppEditorNaviWidget::init()
{
    announced = std::make_unique<QSignalSpy>(RpaAppNotify::Instance(), &RpaAppNotify::SigEditorTabChanged);
    navi = std::make_unique<RpaAppEditorNaviWidget>();
    navi->show();
}

void TestRpaAppEditorNaviWidget::cleanup()
{
    navi.reset();
    announced.reset();
    DpiTool::SetScale(1.0);
}

QStringList TestRpaAppEditorNaviWidget::Selected() const
{
    QStringList names;
    for (const auto* button : navi->findChildren<WbIconButtonWidget*>())
        if (button->bSelected)
            names.append(button->objectName());
    return names;
}

void TestRpaAppEditorNaviWidget::startsWithTheUIButtonAndNoSignal()
{
    QCOMPARE(Selected(), QStringList{QStringLiteral("pushButtonUI")});
    QCOMPARE(announced->size(), 0);
}

void TestRpaAppEditorNaviWidget::announcesThePressedPage_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("index");

    QTest::newRow("UI design") << QStringLiteral("pushButtonUI") << 0;
    QTest::newRow("process") << QStringLiteral("pushButtonProcess") << 1;
    QTest::newRow("usage instructions") << QStringLiteral("pushButtonExtend") << 2;
}

void TestRpaAppEditorNaviWidget::announcesThePressedPage()
{
    QFETCH(QString, name);
    QFETCH(int, index);

    QTest::mouseClick(navi->findChild<WbIconButtonWidget*>(name), Qt::LeftButton);

    QCOMPARE(announced->size(), 1);
    QCOMPARE(announced->constFirst().constFirst().toInt(), index);
    QCOMPARE(Selected(), QStringList{name});
}

void TestRpaAppEditorNaviWidget::announcesTheSelectedPageAgain()
{
    QTest::mouseClick(Button("pushButtonProcess"), Qt::LeftButton);
    QTest::mouseClick(Button("pushButtonProcess"), Qt::LeftButton);

    QCOMPARE(announced->size(), 2);
    QCOMPARE(announced->constLast().constFirst().toInt(), 1);
    QCOMPARE(Selected(), QStringList{QStringLiteral("pushButtonProcess")});
}

void TestRpaAppEditorNaviWidget::keepsItsMeasuresAtEveryScale()
{
    auto* layout = navi->findChild<QHBoxLayout*>(QStringLiteral("horizontalLayout"));

    for (qreal scale : {1.0, 1.5, 2.0}) {
        DpiTool::SetScale(scale);
        const int scaled = DpiTool::ScaleDefault(28);
        QCOMPARE(layout->contentsMargins(), QMargins(scaled, 0, scaled, 0));
        QCOMPARE(layout->spacing(), scaled);
    }
}

void TestRpaAppEditorNaviWidget::showsItsTexts()
{
    QCOMPARE(Button("pushButtonUI")->GetLabelText()->text(), QString::fromUtf8("界面设计"));
    QCOMPARE(Button("pushButtonProcess")->GetLabelText()->text(), QString::fromUtf8("流程设计"));
    QCOMPARE(Button("pushButtonExtend")->GetLabelText()->text(), QString::fromUtf8("使用说明设计"));
    for (const auto* button : navi->findChildren<WbIconButtonWidget*>())
        QCOMPARE(button->focusPolicy(), Qt::NoFocus);
}

void TestRpaAppEditorNaviWidget::keepsTheMeasuresOfItsForm()
{
    RpaAppEditorNaviWidget fresh;
    auto* layout = fresh.findChild<QHBoxLayout*>(QStringLiteral("horizontalLayout"));

    QCOMPARE(fresh.objectName(), QStringLiteral("RpaAppEditorNaviWidget"));
    QCOMPARE(fresh.windowTitle(), QStringLiteral("RpaAppEditorNaviWidget"));
    QCOMPARE(fresh.size(), QSize(600, 50));
    QCOMPARE(layout->count(), 4);
    QCOMPARE(layout->itemAt(0)->widget()->objectName(), QStringLiteral("pushButtonUI"));
    QCOMPARE(layout->itemAt(1)->widget()->objectName(), QStringLiteral("pushButtonProcess"));
    QCOMPARE(layout->itemAt(2)->widget()->objectName(), QStringLiteral("pushButtonExtend"));
    const QSpacerItem* spacer = layout->itemAt(3)->spacerItem();
    QCOMPARE(spacer->sizeHint(), QSize(40, 20));
    QCOMPARE(spacer->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(spacer->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
}

void TestRpaAppEditorNaviWidget::selectsBeforeItAnnounces()
{
    QStringList then;
    const auto connection = connect(RpaAppNotify::Instance(), &RpaAppNotify::SigEditorTabChanged, this,
                                    [&] { then = Selected(); });

    QTest::mouseClick(Button("pushButtonExtend"), Qt::LeftButton);

    QCOMPARE(then, QStringList{QStringLiteral("pushButtonExtend")});
    disconnect(connection);
}

void TestRpaAppEditorNaviWidget::picksTheProcessPageForOthers()
{
    navi->PickProcessPage();

    QCOMPARE(announced->size(), 1);
    QCOMPARE(announced->constFirst().constFirst().toInt(), 1);
    QCOMPARE(Selected(), QStringList{QStringLiteral("pushButtonProcess")});
}

void TestRpaAppEditorNaviWidget::isNotScaledAnyMoreOnceItIsGone()
{
    navi.reset();

    DpiTool::SetScale(2.0);

    QCOMPARE(DpiTool::GetScale(), 2.0);
}

RPA_TEST_MAIN(TestRpaAppEditorNaviWidget)

#include "tst_rpaappeditornaviwidget.moc"
