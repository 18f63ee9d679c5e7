// SPDX-License-Identifier: Apache-2.0

#include "AppListModel.h"
#include "AppListPage.h"
#include "PageFixture.h"
#include "TestApp.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>
#include <QToolButton>
#include <QtTest>

#include <memory>

namespace
{
AppRecord App(const QString& id, const QString& name)
{
    AppRecord app;
    app.id = id;
    app.name = name;
    app.changedAt = QDateTime(QDate(2026, 3, 5), QTime(14, 7));
    return app;
}
} // namespace

class tst_AppListPage : public PageFixture
{
    Q_OBJECT

private slots:
    void listOpensTheAppThatIsClicked();
    void listOpensTheCurrentAppOnReturn();
    void listGetsTheKeysOnceItsAppsAreThere();
    void listRenamesTheCurrentAppOnF2();
    void listFindsAppsByAPartOfTheirName();
    void listFindsAppsByATag_data();
    void listFindsAppsByATag();
    void listOffersItsTags();
    void listFitsTheSmallestWindow();
    void listSaysWhenNothingIsFound();
    void listOffersToCreateTheFirstApp();
    void listShowsWhyItCouldNotBeReadAndTriesAgain();
    void listRenamesByTheMenuOfACard();
    void listDoesEveryActWithTheCurrentApp_data();
    void listDoesEveryActWithTheCurrentApp();
    void listIsTakenAwayWhileTheMenuOfACardIsOpen();

private:
    // The menu of the first card, as the right mouse button opens it.
    static QMenu* OpenMenu(AppListPage& page)
    {
        auto* cards = Child<QListView>(page, "listApps");
        const QPoint place = cards->visualRect(cards->model()->index(0, 0)).center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, cards->viewport()->mapToGlobal(place));
        QApplication::sendEvent(cards->viewport(), &event);
        return page.findChild<QMenu*>(QStringLiteral("menuCard"));
    }
};

void tst_AppListPage::listOpensTheAppThatIsClicked()
{
    AppListModel model;
    AppListPage page(&model);
    page.resize(1280, 640);
    page.show();
    model.SetApps(
        {App(QStringLiteral("a"), QStringLiteral("开票")), App(QStringLiteral("b"), QStringLiteral("对账"))});
    page.ShowApps();
    auto* cards = Child<QListView>(page, "listApps");
    QSignalSpy opened(&page, &AppListPage::SigOpen);

    QTest::mouseClick(cards->viewport(), Qt::LeftButton, Qt::NoModifier,
                      cards->visualRect(cards->model()->index(1, 0)).center());

    QCOMPARE(opened.size(), 1);
    QCOMPARE(opened.first().first().value<AppRecord>().id, QStringLiteral("b"));
}

void tst_AppListPage::listOpensTheCurrentAppOnReturn()
{
    AppListModel model;
    AppListPage page(&model);
    page.show();
    model.SetApps(
        {App(QStringLiteral("a"), QStringLiteral("开票")), App(QStringLiteral("b"), QStringLiteral("对账"))});
    page.ShowApps();
    page.SelectApp(QStringLiteral("b"));
    QSignalSpy opened(&page, &AppListPage::SigOpen);

    QTest::keyClick(Child<QListView>(page, "listApps"), Qt::Key_Return);

    QCOMPARE(opened.size(), 1);
    QCOMPARE(opened.first().first().value<AppRecord>().id, QStringLiteral("b"));
}

void tst_AppListPage::listGetsTheKeysOnceItsAppsAreThere()
{
    AppListModel model;
    AppListPage page(&model);
    page.show();
    QVERIFY(QTest::qWaitForWindowActive(&page));
    Child<QToolButton>(page, "tabMine")->setFocus(); // as when the page before goes away
    model.SetApps({App(QStringLiteral("a"), QStringLiteral("开票"))});

    page.ShowApps();

    QVERIFY(Child<QListView>(page, "listApps")->hasFocus());
}

void tst_AppListPage::listRenamesTheCurrentAppOnF2()
{
    AppListModel model;
    AppListPage page(&model);
    page.show();
    QVERIFY(QTest::qWaitForWindowActive(&page));
    model.SetApps({App(QStringLiteral("a"), QStringLiteral("开票"))});
    page.ShowApps();
    page.SelectApp(QStringLiteral("a"));
    QSignalSpy renamed(&page, &AppListPage::SigRename);

    QTest::keyClick(Child<QListView>(page, "listApps"), Qt::Key_F2);

    QCOMPARE(renamed.size(), 1);
    QCOMPARE(renamed.first().first().value<AppRecord>().id, QStringLiteral("a"));
}

void tst_AppListPage::listFindsAppsByAPartOfTheirName()
{
    AppListModel model;
    AppListPage page(&model);
    page.show();
    model.SetApps({App(QStringLiteral("a"), QStringLiteral("Invoice 汇总")),
                   App(QStringLiteral("b"), QStringLiteral("对账"))});
    page.ShowApps();

    QTest::keyClicks(Child<QLineEdit>(page, "editSearch"), QStringLiteral("INV"));

    const QAbstractItemModel* shown = Child<QListView>(page, "listApps")->model();
    QCOMPARE(shown->rowCount(), 1);
    QCOMPARE(shown->index(0, 0).data().toString(), QStringLiteral("Invoice 汇总"));
}

void tst_AppListPage::listFindsAppsByATag_data()
{
    QTest::addColumn<QString>("searched");
    QTest::addColumn<QString>("found");
    QTest::newRow("a part of a tag") << QStringLiteral("务") << QStringLiteral("ab");
    QTest::newRow("a whole tag") << QStringLiteral("#财务") << QStringLiteral("a");
    QTest::newRow("a tag of another case") << QStringLiteral("# OPS") << QStringLiteral("b");
    QTest::newRow("a tag that nobody has") << QStringLiteral("#财") << QString();
    QTest::newRow("no tag yet") << QStringLiteral("#") << QStringLiteral("ab");
}

void tst_AppListPage::listFindsAppsByATag()
{
    QFETCH(QString, searched);
    AppListModel model;
    AppListPage page(&model);
    page.show();
    QVector<AppRecord> apps{App(QStringLiteral("a"), QStringLiteral("甲")),
                            App(QStringLiteral("b"), QStringLiteral("乙"))};
    apps[0].tags = QStringList{QStringLiteral("财务")};
    apps[1].tags = QStringList{QStringLiteral("财务处"), QStringLiteral("ops")};
    model.SetApps(apps);
    page.ShowApps();

    Child<QLineEdit>(page, "editSearch")->setText(searched);

    const QAbstractItemModel* shown = Child<QListView>(page, "listApps")->model();
    QString found;
    for (int row = 0; row < shown->rowCount(); ++row)
        found += shown->index(row, 0).data(AppListModel::IdRole).toString();
    QTEST(found, "found");
}

void tst_AppListPage::listOffersItsTags()
{
    AppListModel model;
    AppListPage page(&model);
    page.resize(1200, 600);
    page.show();
    QVector<AppRecord> apps{App(QStringLiteral("a"), QStringLiteral("甲")),
                            App(QStringLiteral("b"), QStringLiteral("乙"))};
    apps[1].tags = QStringList{QStringLiteral("月结")};
    model.SetApps(apps);
    page.ShowApps();
    auto* menu = page.findChild<QMenu*>(QStringLiteral("menuMore"));
    Press(page, "buttonMore");
    QVERIFY(menu->isVisible());

    for (QAction* action : menu->actions())
        if (action->text() == QStringLiteral("#月结"))
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());

    QCOMPARE(Child<QLineEdit>(page, "editSearch")->text(), QStringLiteral("#月结"));
    QCOMPARE(Child<QListView>(page, "listApps")->model()->rowCount(), 1);
}

void tst_AppListPage::listDoesEveryActWithTheCurrentApp_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QByteArray>("signal");
    QTest::newRow("copy") << int(Qt::CTRL + Qt::Key_D) << QByteArray("SigCopy(AppRecord)");
    QTest::newRow("tags") << int(Qt::CTRL + Qt::Key_T) << QByteArray("SigTags(AppRecord)");
    QTest::newRow("export") << int(Qt::CTRL + Qt::Key_E) << QByteArray("SigExport(AppRecord)");
    QTest::newRow("delete") << int(Qt::Key_Delete) << QByteArray("SigDelete(AppRecord)");
    QTest::newRow("import") << int(Qt::CTRL + Qt::Key_I) << QByteArray("SigImport()");
    QTest::newRow("bin") << int(Qt::CTRL + Qt::SHIFT + Qt::Key_Delete) << QByteArray("SigBin()");
}

void tst_AppListPage::listDoesEveryActWithTheCurrentApp()
{
    QFETCH(int, key);
    QFETCH(QByteArray, signal);
    AppListModel model;
    AppListPage page(&model);
    page.show();
    QVERIFY(QTest::qWaitForWindowActive(&page));
    model.SetApps(
        {App(QStringLiteral("a"), QStringLiteral("甲")), App(QStringLiteral("b"), QStringLiteral("乙"))});
    page.ShowApps();
    page.SelectApp(QStringLiteral("b"));
    const QMetaObject& type = *page.metaObject();
    QSignalSpy done(&page, type.method(type.indexOfSignal(signal.constData())));

    QTest::keyClick(Child<QListView>(page, "listApps"), Qt::Key(key & ~Qt::KeyboardModifierMask),
                    Qt::KeyboardModifiers(key & Qt::KeyboardModifierMask));

    QCOMPARE(done.size(), 1);
    if (!done.first().isEmpty())
        QCOMPARE(done.first().first().value<AppRecord>().id, QStringLiteral("b"));
}

void tst_AppListPage::listFitsTheSmallestWindow()
{
    constexpr int smallestWindow = 960;
    AppListModel model;
    AppListPage page(&model);

    QVERIFY2(page.minimumSizeHint().width() <= smallestWindow,
             qPrintable(QString::number(page.minimumSizeHint().width())));
}

void tst_AppListPage::listSaysWhenNothingIsFound()
{
    AppListModel model;
    AppListPage page(&model);
    page.show();
    model.SetApps({App(QStringLiteral("a"), QStringLiteral("开票"))});
    page.ShowApps();

    Child<QLineEdit>(page, "editSearch")->setText(QStringLiteral("工资"));

    QVERIFY(Child<QLabel>(page, "labelEmpty")->isVisible());
    QCOMPARE(Child<QLabel>(page, "labelEmpty")->text(), QStringLiteral("没有找到名称包含“工资”的应用"));
    QVERIFY(!Child<QPushButton>(page, "buttonEmptyVisual")->isVisible());
}

void tst_AppListPage::listOffersToCreateTheFirstApp()
{
    AppListModel model;
    AppListPage page(&model);
    page.show();
    model.SetApps({});
    page.ShowApps();
    QSignalSpy created(&page, &AppListPage::SigCreate);

    Press(page, "buttonEmptyVisual");
    Press(page, "buttonEmptyProgram");

    QCOMPARE(Child<QLabel>(page, "labelEmpty")->text(), QStringLiteral("还没有应用"));
    QCOMPARE(created.size(), 2);
    QCOMPARE(created.at(0).first().toInt(), int(AppKindVisual));
    QCOMPARE(created.at(1).first().toInt(), int(AppKindProgram));
}

void tst_AppListPage::listShowsWhyItCouldNotBeReadAndTriesAgain()
{
    AppListModel model;
    AppListPage page(&model);
    page.show();
    QSignalSpy refreshed(&page, &AppListPage::SigRefresh);

    page.ShowFailed(QStringLiteral("无法连接服务器"));

    auto* status = Child<QWidget>(page, "statusApps");
    QVERIFY(status->isVisible());
    QVERIFY(!Child<QWidget>(page, "stackApps")->isVisible());
    const auto buttons = status->findChildren<QAbstractButton*>();
    QCOMPARE(buttons.size(), 1);
    QTest::mouseClick(buttons.first(), Qt::LeftButton);
    QCOMPARE(refreshed.size(), 1);
}

void tst_AppListPage::listRenamesByTheMenuOfACard()
{
    AppListModel model;
    AppListPage page(&model);
    page.show();
    model.SetApps({App(QStringLiteral("a"), QStringLiteral("开票"))});
    page.ShowApps();
    QSignalSpy renamed(&page, &AppListPage::SigRename);
    QSignalSpy opened(&page, &AppListPage::SigOpen);

    QMenu* const menu = OpenMenu(page);
    QVERIFY(menu && menu->isVisible());
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().at(1)).center());

    QCOMPARE(renamed.size(), 1);
    QCOMPARE(renamed.first().first().value<AppRecord>().id, QStringLiteral("a"));
    QCOMPARE(opened.size(), 0);
}

void tst_AppListPage::listIsTakenAwayWhileTheMenuOfACardIsOpen()
{
    AppListModel model;
    auto page = std::make_unique<AppListPage>(&model);
    page->show();
    model.SetApps({App(QStringLiteral("a"), QStringLiteral("开票"))});
    page->ShowApps();
    QTimer::singleShot(0, this, [&page] { page.reset(); });

    OpenMenu(*page);
    QTRY_VERIFY(!page);

    QVERIFY(!QApplication::activePopupWidget());
}

RPA_TEST_MAIN(tst_AppListPage)

#include "tst_applistpage.moc"
