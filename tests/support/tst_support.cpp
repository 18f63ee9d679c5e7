// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "OrderRecorder.h"
#include "TestApp.h"
#include "TestFolder.h"
#include "ToastWatcher.h"

#include <QDialog>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QProcess>
#include <QTimer>
#include <QtTest>

#include <memory>

// The helpers themselves: a helper that misses something would let every test that uses it pass.
class TestSupport : public QObject
{
    Q_OBJECT

private slots:
    void drivesModalWindowsInTheOrderOfTheSteps();
    void drivesAWindowThatOpensFromAWindow();
    void recordsEachToastOnceInOrder();
    void letsAnAnnouncedWarningPass();
    void removesATestFolderOnceItsFilesAreFree();
    void failsATestThatBreaksARule_data();
    void failsATestThatBreaksARule();
};

// Tests that must fail; run by the tests above in a process of their own.
class BrokenTests : public QObject
{
    Q_OBJECT

private slots:
    void meetsAModalWindowNobodyExpects();
    void leavesAModalWindowOpen();
    void neverOpensTheExpectedWindow();
    void opensAWindowOfAnotherClass();
    void warnsUnannounced();
};

void TestSupport::drivesModalWindowsInTheOrderOfTheSteps()
{
    // given
    OrderRecorder order;
    ModalDriver modals;
    modals.ThenIn<QDialog>([&order](QDialog* dialog) {
        order.Note(QStringLiteral("first"));
        dialog->accept();
    });
    modals.Then([&order](QWidget* box) {
        order.Note(QStringLiteral("second"));
        QVERIFY(ModalDriver::Press(box, QStringLiteral("No")));
    });

    // when
    QDialog dialog;
    const int first = dialog.exec();
    const int second =
        QMessageBox::question(nullptr, QString(), QStringLiteral("?"), QMessageBox::Yes | QMessageBox::No);

    // then
    QCOMPARE(first, int(QDialog::Accepted));
    QCOMPARE(second, int(QMessageBox::No));
    QCOMPARE(order.GetEvents(), QStringList({QStringLiteral("first"), QStringLiteral("second")}));
    QCOMPARE(modals.GetPendingCount(), 0);
}

void TestSupport::drivesAWindowThatOpensFromAWindow()
{
    ModalDriver modals;
    modals.ThenIn<QDialog>([](QDialog* outer) {
        QDialog inner(outer);
        QCOMPARE(inner.exec(), int(QDialog::Rejected));
        outer->accept();
    });
    modals.ThenIn<QDialog>([](QDialog* inner) { ModalDriver::Reject(inner); });

    QDialog outer;
    QCOMPARE(outer.exec(), int(QDialog::Accepted));
}

static std::unique_ptr<QWidget> MakeToast(const QString& text, int type)
{
    auto toast = std::make_unique<QWidget>();
    toast->setObjectName(QStringLiteral("WbToast"));
    toast->setProperty("toastType", type);
    auto* label = new QLabel(text, toast.get());
    label->setObjectName(QStringLiteral("labelToastText"));
    return toast;
}

void TestSupport::recordsEachToastOnceInOrder()
{
    // given
    ToastWatcher toasts;

    // when
    for (int type : {2, 0}) {
        const auto toast = MakeToast(QString::number(type), type);
        toast->show();
        toast->hide();
        toast->show();
    }

    // then
    const QVector<SeenToast> expected{{QStringLiteral("2"), 2}, {QStringLiteral("0"), 0}};
    QCOMPARE(toasts.GetToasts(), expected);
}

void TestSupport::letsAnAnnouncedWarningPass()
{
    TestApp::ExpectWarning(QStringLiteral("announced"));
    qWarning("this one was announced");
    QVERIFY(!QTest::currentTestFailed());
}

void TestSupport::removesATestFolderOnceItsFilesAreFree()
{
    // given
    auto folder = std::make_unique<TestFolder>();
    const QString path = folder->path();
    QFile held(folder->filePath(QStringLiteral("held")));
    QVERIFY(held.open(QIODevice::WriteOnly));
    QTimer::singleShot(100, &held, [&held] { held.close(); });

    // when
    folder.reset();

    // then
    QVERIFY(!QFileInfo::exists(path));
}

void TestSupport::failsATestThatBreaksARule_data()
{
    QTest::addColumn<QString>("function");
    QTest::addColumn<QString>("complaint");

    const auto row = [](const char* function, const char* complaint) {
        QTest::newRow(function) << QString::fromLatin1(function) << QString::fromLatin1(complaint);
    };
    row("meetsAModalWindowNobodyExpects", "unexpected modal window QDialog");
    row("leavesAModalWindowOpen", "modal window QDialog \"\" stayed open");
    row("neverOpensTheExpectedWindow", "1 expected modal window(s) never appeared");
    row("opensAWindowOfAnotherClass", "expected a QMessageBox, met a QDialog");
    row("warnsUnannounced", "unexpected warning: nobody announced this");
}

void TestSupport::failsATestThatBreaksARule()
{
    QFETCH(QString, function);
    QFETCH(QString, complaint);

    // given: a report in a file, since on Windows not every console shows it
    QProcess broken;
    TestFolder folder;
    QFile report(folder.filePath(QStringLiteral("report.txt")));

    // when
    broken.start(QCoreApplication::applicationFilePath(),
                 {QStringLiteral("--broken"), function, QStringLiteral("-o"),
                  report.fileName() + QStringLiteral(",txt")});
    QVERIFY(broken.waitForFinished());

    // then
    QCOMPARE(broken.exitCode(), 1);
    QVERIFY(report.open(QIODevice::ReadOnly));
    const QString output = QString::fromUtf8(report.readAll());
    QVERIFY2(output.contains(complaint), qPrintable(output));
}

void BrokenTests::meetsAModalWindowNobodyExpects()
{
    ModalDriver modals;
    QDialog dialog;
    QCOMPARE(dialog.exec(), int(QDialog::Rejected));
}

void BrokenTests::leavesAModalWindowOpen()
{
    ModalDriver modals(std::chrono::milliseconds(50));
    modals.Then([](QWidget*) {});
    QDialog dialog;
    QCOMPARE(dialog.exec(), int(QDialog::Rejected));
}

void BrokenTests::neverOpensTheExpectedWindow()
{
    ModalDriver modals;
    modals.Then([](QWidget*) {});
}

void BrokenTests::opensAWindowOfAnotherClass()
{
    ModalDriver modals;
    modals.ThenIn<QMessageBox>([](QMessageBox*) {});
    QDialog dialog;
    QCOMPARE(dialog.exec(), int(QDialog::Rejected));
}

void BrokenTests::warnsUnannounced()
{
    qWarning("nobody announced this");
}

int main(int argc, char** argv)
{
    TestApp app(argc, argv);
    if (argc > 2 && qstrcmp(argv[1], "--broken") == 0) {
        BrokenTests broken;
        return TestApp::Run(&broken, argc - 1, argv + 1);
    }
    TestSupport test;
    return TestApp::Run(&test, argc, argv);
}

#include "tst_support.moc"
