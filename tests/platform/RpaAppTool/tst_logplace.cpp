// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"

#include <RpaAppTool/IAppLogWidget.h>
#include <WbBaseUI/WbBaseWidget.h>

#include <QAction>
#include <QLineEdit>
#include <QPointer>
#include <QSplitter>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include <memory>

namespace
{
// A page in a larger one: above a field, below it the log.
struct Pages
{
    Pages()
    {
        auto* outerLayout = new QVBoxLayout(&outer);
        page = new WbBaseWidget;
        outerLayout->addWidget(page);
        splitter = new QSplitter(Qt::Vertical);
        (new QVBoxLayout(page))->addWidget(splitter);
        field = new QLineEdit;
        splitter->addWidget(field);
        log = IAppLogWidget::CreateDevelopLog(splitter);
        splitter->addWidget(log);
        window.resize(700, 500);
        (new QVBoxLayout(&window))->addWidget(&outer);
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window))
            QTest::qFail("the window never became active", __FILE__, __LINE__);
        splitter->setSizes({300, 150});
        sizes = splitter->sizes();
    }
    ~Pages() { outer.setParent(nullptr); }

    void Press(const char* name) const
    {
        QTest::mouseClick(log->findChild<QToolButton*>(QLatin1String(name)), Qt::LeftButton);
    }
    QRect PlaceOnPage() const { return {log->mapTo(page, QPoint()), log->size()}; }
    bool IsHome() const
    {
        return splitter->indexOf(log) == 1 && log->isVisible() && splitter->sizes() == sizes;
    }

    QWidget window;
    WbBaseWidget outer;
    WbBaseWidget* page = nullptr;
    QSplitter* splitter = nullptr;
    QLineEdit* field = nullptr;
    IAppLogWidget* log = nullptr;
    QList<int> sizes;
};
} // namespace

// A log that is larger than its place, or elsewhere.
class tst_LogPlace : public QObject
{
    Q_OBJECT

private slots:
    void takesTheWholePageAndComesBack();
    void followsThePageWhileItIsLarge();
    void comesBackByEscape();
    void makesWayForAFieldThatIsAskedFor();
    void hasAWindowOfItsOwnAndComesBack_data();
    void hasAWindowOfItsOwnAndComesBack();
    void staysInItsWindowWhileItsPageIsTurned();
    void comesBackWhenItsPageIsLeft();
    void goesFromOneToTheOther();
    void goesWithItsPage();
    void goesWithTheOutermostPageThatIsShown();
};

void tst_LogPlace::takesTheWholePageAndComesBack()
{
    const Pages pages;
    QVERIFY(pages.IsHome());
    QVERIFY(pages.PlaceOnPage().height() < pages.page->height() / 2);

    pages.Press("logEnlarge");
    QVERIFY(pages.log->isVisible());
    QCOMPARE(pages.PlaceOnPage(), pages.page->rect()); // the page has margins of its own
    QVERIFY(!pages.log->isWindow() && !pages.IsHome());

    pages.Press("logEnlarge");
    QVERIFY(pages.IsHome());
    QVERIFY(!pages.page->findChild<QWidget*>(QStringLiteral("logCover"))->isVisible());
}

void tst_LogPlace::followsThePageWhileItIsLarge()
{
    Pages pages;
    pages.Press("logEnlarge");

    pages.window.resize(900, 650);

    QTRY_VERIFY(pages.page->width() > 800);
    QTRY_VERIFY(pages.PlaceOnPage().width() > pages.page->width() * 9 / 10);
}

void tst_LogPlace::comesBackByEscape()
{
    const Pages pages;
    auto* view = pages.log->findChild<QWidget*>(QStringLiteral("logView"));
    view->setFocus();
    QTest::keyClick(view, Qt::Key_Escape); // at home there is nothing to come back from
    QVERIFY(pages.IsHome());
    pages.Press("logEnlarge");
    QTRY_VERIFY(view->hasFocus());

    QTest::keyClick(view, Qt::Key_Escape);

    QVERIFY(pages.IsHome());
    QVERIFY(view->hasFocus());
}

void tst_LogPlace::makesWayForAFieldThatIsAskedFor()
{
    const Pages pages;
    pages.Press("logEnlarge");

    pages.field->setFocus();

    QTRY_VERIFY(pages.IsHome());
    QVERIFY(pages.field->hasFocus());
}

void tst_LogPlace::hasAWindowOfItsOwnAndComesBack_data()
{
    QTest::addColumn<QString>("way");

    QTest::newRow("its button") << QStringLiteral("button");
    QTest::newRow("the window is closed") << QStringLiteral("close");
    QTest::newRow("the button in its place") << QStringLiteral("back");
}

void tst_LogPlace::hasAWindowOfItsOwnAndComesBack()
{
    QFETCH(QString, way);
    const Pages pages;

    pages.Press("logDetach");
    const QPointer<QWidget> own = pages.log->window();
    QVERIFY(own != &pages.window);
    QVERIFY(own->isVisible() && pages.log->isVisible());
    QCOMPARE(own->windowTitle(), QStringLiteral("运行日志"));
    QCOMPARE(pages.splitter->count(), 2); // its room is kept
    QCOMPARE(pages.splitter->sizes(), pages.sizes);

    if (way == QLatin1String("button"))
        pages.Press("logDetach");
    else if (way == QLatin1String("close"))
        own->close();
    else
        QTest::mouseClick(pages.page->findChild<QToolButton*>(QStringLiteral("logBack")), Qt::LeftButton);

    QTRY_VERIFY(pages.IsHome());
    QTRY_VERIFY(!own);
}

void tst_LogPlace::staysInItsWindowWhileItsPageIsTurned()
{
    const Pages pages;
    pages.Press("logDetach");
    const QWidget* own = pages.log->window();

    pages.page->hide();
    QCoreApplication::processEvents(); // a return would come by the queue

    QVERIFY(own->isVisible());
    QCOMPARE(pages.log->window(), own);
}

void tst_LogPlace::comesBackWhenItsPageIsLeft()
{
    Pages pages;
    pages.Press("logDetach");

    pages.outer.hide();
    pages.outer.show();

    QTRY_VERIFY(pages.IsHome());
}

void tst_LogPlace::goesFromOneToTheOther()
{
    const Pages pages;
    pages.Press("logEnlarge");

    pages.Press("logDetach");
    QVERIFY(pages.log->window() != &pages.window);
    QVERIFY(!pages.log->findChild<QToolButton*>(QStringLiteral("logEnlarge"))->isVisible());

    pages.Press("logDetach");
    QTRY_VERIFY(pages.IsHome());
    QVERIFY(pages.log->findChild<QToolButton*>(QStringLiteral("logEnlarge"))->isVisible());
}

void tst_LogPlace::goesWithItsPage()
{
    const Pages pages;
    pages.Press("logDetach");
    const QPointer<QWidget> own = pages.log->window();
    const QPointer<QWidget> log = pages.log;

    delete pages.page;

    QVERIFY(!own && !log);
}

void tst_LogPlace::goesWithTheOutermostPageThatIsShown()
{
    auto outer = std::make_unique<WbBaseWidget>();
    auto* page = new WbBaseWidget;
    auto* log = IAppLogWidget::CreateDevelopLog(page);
    (new QVBoxLayout(page))->addWidget(log);
    (new QVBoxLayout(outer.get()))->addWidget(page);
    outer->show();
    QTest::mouseClick(log->findChild<QToolButton*>(QStringLiteral("logDetach")), Qt::LeftButton);
    const QPointer<QWidget> own = log->window();
    QVERIFY(own && own != outer.get());

    outer.reset();

    QVERIFY(!own);
}

RPA_TEST_MAIN(tst_LogPlace)

#include "tst_logplace.moc"
