// SPDX-License-Identifier: Apache-2.0

#include "PopOutRoom.h"
#include "TestApp.h"

#include <WbBrowserLite/IBrowserBorderWindow.h>
#include <WbBrowserLite/IBrowserWidget.h>

#include <QVBoxLayout>
#include <QtTest>

namespace
{
class PlainWindow : public IBrowserBorderWindow
{
public:
    PlainWindow() { setWindowFlags(Qt::Window | Qt::FramelessWindowHint); }

    void SetTarget(QWidget*, const QRect&) override {}
    void SetContent(IBrowserWidget*) override {}
};
} // namespace

// A page with an editor of 1000 × 600 at (100, 50) of the screen.
class tst_PopOutRoom : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void leavesTheRoomThatIsCovered_data();
    void leavesTheRoomThatIsCovered();
    void takesTheRoomBackWhenTheBrowserGoes_data();
    void takesTheRoomBackWhenTheBrowserGoes();
    void followsTheMovedWindow();

private:
    std::unique_ptr<QWidget> page;
    std::unique_ptr<PlainWindow> browser;
    QWidget* editor = nullptr;
};

void tst_PopOutRoom::init()
{
    page = std::make_unique<QWidget>();
    page->setWindowFlag(Qt::FramelessWindowHint);
    editor = new QWidget;
    auto* layout = new QVBoxLayout(page.get());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(editor);
    new PopOutRoom(page.get(), 6);
    page->setGeometry(100, 50, 1000, 600);
    page->show();
    browser = std::make_unique<PlainWindow>();
}

void tst_PopOutRoom::cleanup()
{
    browser.reset();
    page.reset();
}

void tst_PopOutRoom::leavesTheRoomThatIsCovered_data()
{
    QTest::addColumn<QRect>("window");
    QTest::addColumn<int>("width");

    QTest::newRow("where it popped out") << QRect(772, 150, 300, 400) << 672;
    QTest::newRow("beside the editor") << QRect(1100, 150, 300, 400) << 1000;
    QTest::newRow("half beside the editor") << QRect(950, 150, 300, 400) << 850;
    QTest::newRow("in the middle") << QRect(400, 150, 300, 400) << 1000;
    QTest::newRow("over most of the editor") << QRect(600, 150, 500, 400) << 1000;
}

void tst_PopOutRoom::leavesTheRoomThatIsCovered()
{
    QFETCH(QRect, window);
    QFETCH(int, width);
    browser->setGeometry(window);

    browser->show();

    QTRY_COMPARE(editor->width(), width);
    const QRect shown(editor->mapToGlobal(QPoint()), editor->size());
    QCOMPARE(shown.intersects(browser->geometry()), width == 1000 && window.left() < 1000);
}

void tst_PopOutRoom::takesTheRoomBackWhenTheBrowserGoes_data()
{
    QTest::addColumn<bool>("forGood");

    QTest::newRow("hidden") << false;
    QTest::newRow("destroyed") << true;
}

void tst_PopOutRoom::takesTheRoomBackWhenTheBrowserGoes()
{
    QFETCH(bool, forGood);
    browser->setGeometry(772, 150, 300, 400);
    browser->show();
    QTRY_COMPARE(editor->width(), 672);

    if (forGood)
        browser.reset();
    else
        browser->hide();

    QTRY_COMPARE(editor->width(), 1000);
}

void tst_PopOutRoom::followsTheMovedWindow()
{
    browser->setGeometry(772, 150, 300, 400);
    browser->show();
    QTRY_COMPARE(editor->width(), 672);

    page->resize(1200, 600);
    QTRY_COMPARE(editor->width(), 1200);

    browser->move(972, 150);
    QTRY_COMPARE(editor->width(), 872);
}

RPA_TEST_MAIN(tst_PopOutRoom)
#include "tst_popoutroom.moc"
