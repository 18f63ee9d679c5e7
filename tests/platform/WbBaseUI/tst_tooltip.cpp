// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"

#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbTheme.h>

#include <QApplication>
#include <QLabel>
#include <QToolTip>
#include <QtTest>

#include <RpaResources.h>

namespace
{
QLabel* ShownTip()
{
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->inherits("QTipLabel"))
            return qobject_cast<QLabel*>(window);
    return nullptr;
}
} // namespace

class tst_ToolTip : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        RpaResources::Init();
        WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    }
    void cleanup() { QToolTip::hideText(); }
    void looksTheSameOverEveryWidget_data();
    void looksTheSameOverEveryWidget();
};

void tst_ToolTip::looksTheSameOverEveryWidget_data()
{
    QTest::addColumn<int>("buttonType");
    QTest::newRow("general") << 0;
    QTest::newRow("primary") << 1;
    QTest::newRow("danger") << 2;
    QTest::newRow("secondary") << 3;
}

void tst_ToolTip::looksTheSameOverEveryWidget()
{
    QFETCH(const int, buttonType);
    const QString text = QStringLiteral("运行流程“导出牌价”");
    QWidget window;
    QLabel plain(QStringLiteral("文字"), &window);
    WbPushButton button(&window, buttonType);
    button.setText(QStringLiteral("开始"));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QToolTip::showText(QPoint(40, 40), text, &plain);
    QTRY_VERIFY(ShownTip());
    const QSize size = ShownTip()->size();
    const QFont font = ShownTip()->font();
    QToolTip::hideText();
    QTRY_VERIFY(!ShownTip());
    QToolTip::showText(QPoint(40, 40), text, &button);
    QTRY_VERIFY(ShownTip());

    QCOMPARE(ShownTip()->font().weight(), font.weight());
    QCOMPARE(ShownTip()->size(), size);
    // Little more than its text: it lies over what it is about.
    const QRect ink = ShownTip()->fontMetrics().boundingRect(QRect(0, 0, 1000, 1000), 0, text);
    QVERIFY(size.height() <= ink.height() + 16);
    QVERIFY(size.width() <= ink.width() + 26);
    QVERIFY(size.width() >= ink.width() + 12);
}

RPA_TEST_MAIN(tst_ToolTip)
#include "tst_tooltip.moc"
