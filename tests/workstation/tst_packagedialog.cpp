#include "MainWindow.h"
#include "ModalDriver.h"
#include "PackageDialog.h"

#include <RpaPackage/PackageService.h>

#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

namespace
{
// Types a package into the dialog and closes it, answering its question with that button.
void CloseWithEdits(PackageService* service, const QString& button, bool isClosed)
{
    PackageDialog dialog(service, nullptr);
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
};

void tst_PackageDialog::packagesAreOfferedWithTheirPageOnly()
{
    MainWindow window;
    auto* const list = new QWidget;
    auto* const editor = new QWidget;
    window.OfferPackages(editor);
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
    PackageDialog dialog(&service, nullptr);
    dialog.show();

    dialog.reject();

    QVERIFY(!dialog.isVisible());
}

QTEST_MAIN(tst_PackageDialog)
#include "tst_packagedialog.moc"
