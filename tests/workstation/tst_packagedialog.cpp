// SPDX-License-Identifier: Apache-2.0

#include "MainWindow.h"
#include "ModalDriver.h"
#include "PackageDialog.h"
#include "TestFolder.h"

#include <RpaPackage/PackageService.h>

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QtTest>

#include <algorithm>

namespace
{
// Types a package into the dialog and closes it, answering its question with that button.
void CloseWithEdits(PackageService* service, const QString& button, bool isClosed)
{
    PackageDialog dialog(service, QString(), nullptr);
    dialog.show();
    auto* const name = dialog.findChild<QLineEdit*>(QStringLiteral("editPackageName"));
    QTest::keyClicks(name, QStringLiteral("openpyxl"));
    QTest::keyClick(name, Qt::Key_Return);
    ModalDriver modals;
    modals.Then([&](QWidget* box) { QVERIFY(ModalDriver::Press(box, button)); });

    dialog.reject();

    QCOMPARE(!dialog.isVisible(), isClosed);
}
} // namespace

class tst_PackageDialog : public QObject
{
    Q_OBJECT

private slots:
    void packagesAreOfferedWithTheirPageOnly();
    void editsAreSavedWhenTheUserSaysSo();
    void editsAreDroppedWhenTheUserSaysSo();
    void theDialogStaysWhenTheUserThinksAgain();
    void nothingIsAskedWithoutEdits();
    void offersNothingThatNoAppWouldKeep();
    void aFolderOfWheelsIsNamedByTyping();
    void aFolderOfWheelsIsTakenBack();
    void whatIsNoFolderOfWheelsIsRefusedInWords_data();
    void whatIsNoFolderOfWheelsIsRefusedInWords();
};

void tst_PackageDialog::packagesAreOfferedWithTheirPageOnly()
{
    MainWindow window;
    auto* const list = new QWidget;
    auto* const editor = new QWidget;
    window.OfferEditing(editor);
    window.AddPage(list, QString());
    window.AddPage(editor, QStringLiteral("返回应用列表"));
    window.show();
    auto* const button = window.findChild<QPushButton*>(QStringLiteral("buttonPackages"));
    QSignalSpy asked(&window, &MainWindow::SigPackages);

    QVERIFY(!button->isVisible());
    window.ShowPage(editor);
    QVERIFY(button->isVisible());
    QTest::mouseClick(button, Qt::LeftButton);

    QCOMPARE(asked.size(), 1);
}

void tst_PackageDialog::editsAreSavedWhenTheUserSaysSo()
{
    PackageService service;
    QSignalSpy saved(&service, &IPackageService::SigSaveConfig);

    CloseWithEdits(&service, QStringLiteral("保存"), true);

    QCOMPARE(saved.size(), 1);
    QVERIFY(saved.first().first().toString().contains(QStringLiteral("openpyxl")));
}

void tst_PackageDialog::editsAreDroppedWhenTheUserSaysSo()
{
    PackageService service;
    QSignalSpy saved(&service, &IPackageService::SigSaveConfig);

    CloseWithEdits(&service, QStringLiteral("不保存"), true);

    QCOMPARE(saved.size(), 0);
}

void tst_PackageDialog::theDialogStaysWhenTheUserThinksAgain()
{
    PackageService service;
    QSignalSpy saved(&service, &IPackageService::SigSaveConfig);

    CloseWithEdits(&service, QStringLiteral("取消"), false);

    QCOMPARE(saved.size(), 0);
}

void tst_PackageDialog::nothingIsAskedWithoutEdits()
{
    PackageService service;
    PackageDialog dialog(&service, QString(), nullptr);
    dialog.show();

    dialog.reject();

    QVERIFY(!dialog.isVisible());
}

// The editor of a visual app takes no list: its process decides.
void tst_PackageDialog::offersNothingThatNoAppWouldKeep()
{
    PackageService service;
    service.Reset(QStringLiteral(R"({"packages":[{"name":"openpyxl","version":""}]})"));
    PackageDialog dialog(&service, QString(), nullptr);
    dialog.show();
    auto* const view = dialog.findChild<QTableView*>(QStringLiteral("tablePackages"));
    const QRect first = view->visualRect(view->model()->index(0, 0));
    QCOMPARE(view->model()->rowCount(), 1);

    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, first.center());
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, first.center());
    QTest::keyClick(view, Qt::Key_Delete);
    QTest::keyClick(view, Qt::Key_S, Qt::ControlModifier);

    QVERIFY(!view->findChild<QLineEdit*>());
    QCOMPARE(view->model()->rowCount(), 1);
    for (const char* name : {"editPackageName", "editPackageVersion", "buttonAddPackage",
                             "buttonRemovePackage", "buttonSavePackages"})
        QVERIFY2(!dialog.findChild<QWidget*>(QLatin1String(name))->isVisible(), name);
    QVERIFY(dialog.findChild<QPushButton*>(QStringLiteral("buttonInstallPackages"))->isVisible());
    const auto labels = dialog.findChildren<QLabel*>();
    QVERIFY(std::none_of(labels.cbegin(), labels.cend(), [](const QLabel* label) {
        return label->isVisible() && label->text().contains(QStringLiteral("已保存"));
    }));
    QVERIFY(std::any_of(labels.cbegin(), labels.cend(), [](const QLabel* label) {
        return label->isVisible() && label->text().contains(QStringLiteral("由流程中的指令决定"));
    }));
    dialog.reject();
    QVERIFY(!dialog.isVisible()); // nothing to ask
}

void tst_PackageDialog::aFolderOfWheelsIsNamedByTyping()
{
    const TestFolder folder;
    PackageService service;
    PackageDialog dialog(&service, QString(), nullptr);
    QSignalSpy chosen(&dialog, &PackageDialog::SigWheelFolderChosen);
    dialog.show();
    auto* const edit = dialog.findChild<QLineEdit*>(QStringLiteral("editWheelFolder"));

    QTest::keyClicks(edit, folder.path());
    QTest::keyClick(edit, Qt::Key_Return);

    QCOMPARE(chosen.size(), 1);
    QCOMPARE(chosen.first().first().toString(), folder.path());
    QVERIFY(dialog.isVisible());
}

void tst_PackageDialog::aFolderOfWheelsIsTakenBack()
{
    const TestFolder folder;
    PackageService service;
    PackageDialog dialog(&service, folder.path(), nullptr);
    QSignalSpy chosen(&dialog, &PackageDialog::SigWheelFolderChosen);
    dialog.show();
    auto* const edit = dialog.findChild<QLineEdit*>(QStringLiteral("editWheelFolder"));
    QCOMPARE(edit->text(), QDir::toNativeSeparators(folder.path()));

    QTest::keyClick(edit, Qt::Key_Return);
    QCOMPARE(chosen.size(), 0);
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClick(edit, Qt::Key_Return);

    QCOMPARE(chosen.size(), 1);
    QCOMPARE(chosen.first().first().toString(), QString());
}

void tst_PackageDialog::whatIsNoFolderOfWheelsIsRefusedInWords_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("problem");
    QTest::newRow("a folder that is not there")
        << QDir::rootPath() + QStringLiteral("nowhere/wheels") << QStringLiteral("找不到这个文件夹");
    QTest::newRow("a file") << QCoreApplication::applicationFilePath()
                            << QStringLiteral("请输入文件夹，而不是文件");
    QTest::newRow("a path from nowhere") << QStringLiteral("wheels") << QStringLiteral("完整路径");
    QTest::newRow("an address") << QStringLiteral("https://example.com/wheels") << QStringLiteral("完整路径");
}

void tst_PackageDialog::whatIsNoFolderOfWheelsIsRefusedInWords()
{
    QFETCH(QString, text);
    QFETCH(QString, problem);
    PackageService service;
    PackageDialog dialog(&service, QString(), nullptr);
    QSignalSpy chosen(&dialog, &PackageDialog::SigWheelFolderChosen);
    dialog.show();
    auto* const edit = dialog.findChild<QLineEdit*>(QStringLiteral("editWheelFolder"));
    auto* const label = dialog.findChild<QLabel*>(QStringLiteral("labelProblem"));

    QTest::keyClicks(edit, text);
    QTest::keyClick(edit, Qt::Key_Return);

    QCOMPARE(chosen.size(), 0);
    QVERIFY2(label->isVisible() && label->text().contains(problem), qPrintable(label->text()));
    QTest::keyClick(edit, Qt::Key_Backspace);
    QVERIFY(!label->isVisible());
}

QTEST_MAIN(tst_PackageDialog)
#include "tst_packagedialog.moc"
