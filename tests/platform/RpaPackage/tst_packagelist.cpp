// SPDX-License-Identifier: Apache-2.0

#include "PanelFixture.h"

#include <QPointer>
#include <QProgressBar>

namespace
{
const QString one = QStringLiteral("one");
const QString two = QStringLiteral("two");
const QString three = QStringLiteral("three");

QString ThreePackages()
{
    return PackageFixture::ListOf({PackageItem{one, QStringLiteral("1.0")},
                                   PackageItem{two, QStringLiteral("2.0")}, PackageItem{three, QString()}});
}
} // namespace

// The list that an author edits in the panel.
class PackageListTest : public QObject
{
    Q_OBJECT

private slots:
    void aCellIsEditedWhereItStands();
    void theStateIsNobodysToEdit();
    void anEditAsksForANewLook();
    void takingAnEditBackLeavesNothingToSave();
    void goesOnWithTheNextWhenOneIsRemoved();
    void removesOnlyWhatIsSelected();
    void savesByKeyOnceOnly();
    void takesNoMoreThanAListMayHold();
    void readsTheSamePackageOnce();
    void anotherVersionThanTheWantedOneIsMissing();
    void isLockedWhileItInstalls();
    void showsAnInstallationThatWasUnderWay();
    void whatNobodyWouldKeepIsNotOffered();

private:
    static void DoubleClick(const QTableView* table, int row, int column)
    {
        const QPoint place = table->visualRect(table->model()->index(row, column)).center();
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, place);
    }

    static void Edit(const PanelFixture& f, int row, int column, const QString& text)
    {
        const QTableView* const table = f.Table();
        DoubleClick(table, row, column);
        const QPointer<QLineEdit> editor = table->viewport()->findChild<QLineEdit*>();
        if (!editor)
            return;
        editor->selectAll();
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        QVERIFY(QTest::qWaitFor([&editor] { return !editor; }));
    }
};

void PackageListTest::aCellIsEditedWhereItStands()
{
    PanelFixture f(ThreePackages());
    QCOMPARE(f.Cell(2, 1), QStringLiteral("任意版本"));

    Edit(f, 0, 0, QStringLiteral(" four "));
    Edit(f, 1, 1, QStringLiteral("2.5"));
    Edit(f, 2, 1, QStringLiteral(">=3"));

    QCOMPARE(f.Cell(0, 0), QStringLiteral("four"));
    QCOMPARE(f.Cell(0, 1), QStringLiteral("1.0"));
    QCOMPARE(f.Cell(1, 0), two);
    QCOMPARE(f.Cell(1, 1), QStringLiteral("2.5"));
    QCOMPARE(f.Cell(2, 1), QStringLiteral("任意版本"));
    QCOMPARE(f.Note(), PackageService::VersionProblem(QStringLiteral(">=3")));
}

void PackageListTest::theStateIsNobodysToEdit()
{
    PanelFixture f(ThreePackages());

    DoubleClick(f.Table(), 1, 2);
    QVERIFY(!f.Table()->viewport()->findChild<QLineEdit*>());

    DoubleClick(f.Table(), 1, 1);
    QVERIFY(f.Table()->viewport()->findChild<QLineEdit*>());
}

void PackageListTest::anEditAsksForANewLook()
{
    PanelFixture f(PackageFixture::ListOf(QStringLiteral("openpyxl")));
    QTRY_VERIFY(f.Cell(0, 2).startsWith(QStringLiteral("已安装")));

    Edit(f, 0, 1, QStringLiteral("99.0"));

    QCOMPARE(f.Cell(0, 2), QStringLiteral("未检查"));
    // What is looked at is the saved list, which wants any version: the state is not that of this row.
    QSignalSpy states(&f.service, &PackageService::SigStatesChanged);
    f.service.Refresh();
    QTRY_VERIFY(!states.isEmpty());
    QCOMPARE(f.Cell(0, 2), QStringLiteral("未检查"));
}

void PackageListTest::takingAnEditBackLeavesNothingToSave()
{
    PanelFixture f(ThreePackages());
    Edit(f, 1, 1, QStringLiteral("2.5"));
    QVERIFY(f.Find<QPushButton>("buttonSavePackages")->isEnabled());

    Edit(f, 1, 1, QStringLiteral("2.0"));

    QVERIFY(!f.panel->IsChanged());
    QVERIFY(!f.Find<QPushButton>("buttonSavePackages")->isEnabled());
}

void PackageListTest::goesOnWithTheNextWhenOneIsRemoved()
{
    PanelFixture f(ThreePackages());
    f.Table()->selectRow(1);

    f.Press("buttonRemovePackage");
    QCOMPARE(f.Rows(), 2);
    QCOMPARE(f.Cell(f.Table()->currentIndex().row(), 0), three);
    f.Press("buttonRemovePackage");
    QCOMPARE(f.Cell(f.Table()->currentIndex().row(), 0), one);
    f.Press("buttonRemovePackage");

    QCOMPARE(f.Rows(), 0);
    QVERIFY(!f.Find<QPushButton>("buttonRemovePackage")->isEnabled());
    QVERIFY(!f.Find<QPushButton>("buttonInstallPackages")->isEnabled());
    QVERIFY(f.Find<QPushButton>("buttonSavePackages")->isEnabled());
}

void PackageListTest::removesOnlyWhatIsSelected()
{
    PanelFixture f(ThreePackages());

    QVERIFY(!f.Find<QPushButton>("buttonRemovePackage")->isEnabled());
    f.Table()->selectRow(2);
    QVERIFY(f.Find<QPushButton>("buttonRemovePackage")->isEnabled());
}

void PackageListTest::savesByKeyOnceOnly()
{
    PanelFixture f(ThreePackages());
    QSignalSpy saved(&f.service, &IPackageService::SigSaveConfig);
    f.panel->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(f.panel.get()));
    f.Table()->setFocus();
    QTest::keySequence(f.panel.get(), QKeySequence::Save);
    QCOMPARE(saved.size(), 0); // there is nothing to save
    f.Table()->selectRow(0);
    f.Press("buttonRemovePackage");

    QTest::keySequence(f.panel.get(), QKeySequence::Save);
    QTest::keySequence(f.panel.get(), QKeySequence::Save);

    QCOMPARE(saved.size(), 1);
    QCOMPARE(saved.at(0).at(0).toString(), f.service.GetConfiguration());
    QCOMPARE(f.service.GetStates().size(), 2);
    QCOMPARE(f.Note(), QStringLiteral("已保存到应用，请记得保存应用"));
}

void PackageListTest::takesNoMoreThanAListMayHold()
{
    QList<PackageItem> items;
    for (int i = 0; i < 200; ++i)
        items << PackageItem{QStringLiteral("p%1").arg(i), QString()};
    PanelFixture f(PackageFixture::ListOf(items));
    QCOMPARE(f.Rows(), 200);

    f.Type(QStringLiteral("p200"));
    QCOMPARE(f.Rows(), 200);
    QCOMPARE(f.Note(), QStringLiteral("扩展包不能超过 200 个"));
    f.Type(QStringLiteral("p7"), QStringLiteral("7.7")); // one that is there
    QCOMPARE(f.Cell(7, 1), QStringLiteral("7.7"));

    items << PackageItem{QStringLiteral("p200"), QString()};
    f.service.Reset(PackageFixture::ListOf(items));
    QCOMPARE(f.Rows(), 0);
}

void PackageListTest::readsTheSamePackageOnce()
{
    const PanelFixture f(
        PackageFixture::ListOf({PackageItem{QStringLiteral("My.Package"), QStringLiteral("1")},
                                PackageItem{QStringLiteral("my__package"), QStringLiteral("1")},
                                PackageItem{QStringLiteral("my-package"), QStringLiteral("2")}}));

    QCOMPARE(f.Rows(), 2);
    QCOMPARE(f.Cell(0, 0), QStringLiteral("My.Package"));
    QCOMPARE(f.Cell(1, 1), QStringLiteral("2"));
}

void PackageListTest::anotherVersionThanTheWantedOneIsMissing()
{
    PanelFixture any(PackageFixture::ListOf(QStringLiteral("openpyxl")));
    QTRY_VERIFY(any.Cell(0, 2).startsWith(QStringLiteral("已安装 ")));
    const QString there = any.Cell(0, 2).mid(4);

    const PanelFixture wanted(PackageFixture::ListOf(QStringLiteral("openpyxl"), QStringLiteral("99.0")));

    QTRY_COMPARE(wanted.Cell(0, 2), QStringLiteral("未安装（现有 %1）").arg(there));
}

void PackageListTest::isLockedWhileItInstalls()
{
    PanelFixture f(ThreePackages());
    QTRY_COMPARE(f.Cell(0, 2), QStringLiteral("未安装"));
    f.UsePython(PackageFixture::OddPython("sleeps"));
    f.Table()->selectRow(1);
    QVERIFY(f.Find<QProgressBar>("progressPackages")->isHidden());

    f.Press("buttonInstallPackages");
    QTRY_COMPARE(f.Note(), QStringLiteral("正在检查扩展包…"));
    for (const char* name : {"editPackageName", "editPackageVersion", "buttonAddPackage", "tablePackages",
                             "buttonRemovePackage", "buttonInstallPackages", "buttonSavePackages"})
        QVERIFY2(!f.Find<QWidget>(name)->isEnabled(), name);
    QVERIFY(f.Find<QProgressBar>("progressPackages")->isVisible());

    f.service.Cancel();
    QTRY_COMPARE(f.Note(), QStringLiteral("已取消安装扩展包"));
    QVERIFY(f.Find<QProgressBar>("progressPackages")->isHidden());
    for (const char* name :
         {"editPackageName", "tablePackages", "buttonRemovePackage", "buttonInstallPackages"})
        QVERIFY2(f.Find<QWidget>(name)->isEnabled(), name);
}

void PackageListTest::showsAnInstallationThatWasUnderWay()
{
    PanelFixture f(ThreePackages());
    f.UsePython(PackageFixture::OddPython("sleeps"));
    f.service.InstallCurrent();

    const RpaPackagePanel later(&f.service);

    QVERIFY(!later.findChild<QPushButton*>(QStringLiteral("buttonInstallPackages"))->isEnabled());
    QVERIFY(!later.findChild<QProgressBar*>(QStringLiteral("progressPackages"))->isHidden());
}

void PackageListTest::whatNobodyWouldKeepIsNotOffered()
{
    PackageFixture f;
    f.service.Reset(ThreePackages());
    RpaPackagePanel panel(&f.service); // no app listens
    panel.resize(620, 460);
    panel.show();

    QVERIFY(!panel.IsEditable());
    for (const char* name : {"editPackageName", "editPackageVersion", "buttonAddPackage",
                             "buttonRemovePackage", "buttonSavePackages"})
        QVERIFY2(!panel.findChild<QWidget*>(QLatin1String(name))->isVisible(), name);
    QVERIFY(panel.findChild<QPushButton*>(QStringLiteral("buttonInstallPackages"))->isEnabled());

    auto* table = panel.findChild<QTableView*>();
    panel.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&panel));
    table->setFocus();
    table->selectRow(0);
    QTest::keyClick(table, Qt::Key_Delete);
    QCOMPARE(table->model()->rowCount(), 3);
    DoubleClick(table, 1, 1);
    QVERIFY(!table->viewport()->findChild<QLineEdit*>());
}

QTEST_MAIN(PackageListTest)
#include "tst_packagelist.moc"
