// SPDX-License-Identifier: Apache-2.0

#include "ShownToasts.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <WbBaseUI/WbToast.h>

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QtTest>

#include <memory>

namespace
{
constexpr int patienceMs = 8000;
} // namespace

class TestToast : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void showsTextAndType_data();
    void showsTextAndType();
    void goesAwayByItself_data();
    void goesAwayByItself();
    void staysWhileTheMouseMovesOverIt();
    void goesThoughTheMouseLiesWhereItAppears();
    void goesAwayWhenClicked();
    void replacesTheSameNotice();
    void keepsAtMostFour();
    void keepsOneInADialog();
    void letsAllGoAtOnce();
    void leavesTheFocusWhereItIs();
    void isQuietWithoutAWindow();
    void showsOverTheModalDialog();
    void movesOnWhenItsDialogCloses();
    void goesWithItsWindow();
    void showsHostileTextAsText();
    void shortensAnEndlessText();

private:
    // Through the window system, so that widgets are entered and left.
    void MoveMouseTo(const QPoint& place)
    {
        QCursor::setPos(window->mapToGlobal(place));
        QTest::mouseMove(window->windowHandle(), place);
    }

    std::unique_ptr<QWidget> window;
};

void TestToast::init()
{
    window = std::make_unique<QWidget>();
    window->resize(800, 600);
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
}

void TestToast::cleanup()
{
    window.reset();
}

void TestToast::showsTextAndType_data()
{
    QTest::addColumn<int>("type");

    QTest::newRow("success") << int(ToastSuccess);
    QTest::newRow("warning") << int(ToastWarning);
    QTest::newRow("error") << int(ToastError);
    QTest::newRow("done") << int(ToastDone);
    QTest::newRow("information") << int(ToastInformation);
}

void TestToast::showsTextAndType()
{
    QFETCH(int, type);
    ToastWatcher toasts;

    WbToast::Show(QStringLiteral("保存成功"), static_cast<ENUM_TOAST_TYPE>(type));

    QCOMPARE(toasts.GetToasts(), (QVector<SeenToast>{{QStringLiteral("保存成功"), type}}));
    const QList<QWidget*> shown = ToastsIn(*window);
    QCOMPARE(shown.size(), 1);
    QCOMPARE(shown.constFirst()->accessibleName(), QStringLiteral("保存成功"));
}

void TestToast::goesAwayByItself_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("atLeast");
    QTest::addColumn<int>("atMost");

    QTest::newRow("notice") << int(ToastSuccess) << 2900 << 4500;
    QTest::newRow("error") << int(ToastError) << 4900 << 6500;
}

void TestToast::goesAwayByItself()
{
    QFETCH(int, type);
    QFETCH(int, atLeast);
    QFETCH(int, atMost);
    QElapsedTimer clock;
    clock.start();

    WbToast::Show(QStringLiteral("提示"), static_cast<ENUM_TOAST_TYPE>(type));
    const QPointer<QWidget> toast = ToastsIn(*window).constFirst();
    QTRY_VERIFY_WITH_TIMEOUT(toast.isNull(), patienceMs);

    const auto lived = int(clock.elapsed());
    QVERIFY2(lived >= atLeast && lived <= atMost, qPrintable(QString::number(lived)));
}

void TestToast::staysWhileTheMouseMovesOverIt()
{
    WbToast::Show(QStringLiteral("有鼠标"));
    const QPointer<QWidget> hovered = ToastsIn(*window).constFirst();
    MoveMouseTo(hovered->geometry().center());
    MoveMouseTo(hovered->geometry().center() + QPoint(8, 0));
    WbToast::Show(QStringLiteral("没有鼠标"));
    const QPointer<QWidget> other = ToastsIn(*window).constLast();

    QTRY_VERIFY_WITH_TIMEOUT(other.isNull(), patienceMs);
    QVERIFY(hovered && hovered->isVisible());

    MoveMouseTo(window->rect().bottomRight() - QPoint(4, 4));
    QTRY_VERIFY_WITH_TIMEOUT(hovered.isNull(), patienceMs);
}

void TestToast::goesThoughTheMouseLiesWhereItAppears()
{
    WbToast::Show(QStringLiteral("提示"));
    const QPointer<QWidget> toast = ToastsIn(*window).constFirst();

    // What the window system tells about a mouse that has not moved.
    QEvent enter(QEvent::Enter);
    QApplication::sendEvent(toast, &enter);
    MoveMouseTo(toast->geometry().center());

    QTRY_VERIFY_WITH_TIMEOUT(toast.isNull(), 4500);
}

void TestToast::goesAwayWhenClicked()
{
    WbToast::Show(QStringLiteral("提示"), ToastError);
    const QPointer<QWidget> toast = ToastsIn(*window).constFirst();

    QTest::mouseClick(toast, Qt::LeftButton);

    QTRY_VERIFY_WITH_TIMEOUT(toast.isNull(), 1000);
}

void TestToast::replacesTheSameNotice()
{
    ToastWatcher toasts;
    WbToast::Show(QStringLiteral("版本名称不能为空"), ToastError);
    WbToast::Show(QStringLiteral("版本名称不能为空"), ToastError);

    QCOMPARE(ToastsIn(*window).size(), 1);
    QCOMPARE(toasts.GetCount(), 2);
}

void TestToast::keepsAtMostFour()
{
    for (int i = 0; i < 20; ++i)
        WbToast::Show(QStringLiteral("提示 %1").arg(i));

    const QList<QWidget*> shown = ToastsIn(*window);
    QCOMPARE(shown.size(), 4);
    QCOMPARE(TextOf(shown.constFirst()), QStringLiteral("提示 16"));
    QCOMPARE(TextOf(shown.constLast()), QStringLiteral("提示 19"));
}

void TestToast::keepsOneInADialog()
{
    QDialog dialog(window.get());
    dialog.setModal(true);
    dialog.resize(400, 400);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));

    WbToast::Show(QStringLiteral("模板描述不能为空"), ToastError);
    WbToast::Show(QStringLiteral("存储路径不能为空"), ToastError);

    QCOMPARE(ToastsIn(dialog).size(), 1);
    QCOMPARE(TextOf(ToastsIn(dialog).constFirst()), QStringLiteral("存储路径不能为空"));
}

void TestToast::letsAllGoAtOnce()
{
    WbToast::Show(QStringLiteral("保存成功"));
    WbToast::Show(QStringLiteral("已上线"));
    QDialog dialog(window.get());
    dialog.setModal(true);
    dialog.resize(400, 400);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    WbToast::Show(QStringLiteral("邀请码已复制"));
    QCOMPARE(ToastsIn(*window).size(), 3); // those of its dialogs with them
    QCOMPARE(ToastsIn(dialog).size(), 1);

    WbToast::Clear();

    QCOMPARE(ToastsIn(*window).size(), 0);
}

void TestToast::leavesTheFocusWhereItIs()
{
    QLineEdit edit(window.get());
    edit.show();
    edit.setFocus();
    QTRY_VERIFY(edit.hasFocus());

    WbToast::Show(QStringLiteral("提示"));
    QTest::mouseClick(ToastsIn(*window).constFirst(), Qt::LeftButton);

    QVERIFY(edit.hasFocus());
    QCOMPARE(QApplication::activeWindow(), window.get());
}

void TestToast::isQuietWithoutAWindow()
{
    window.reset();
    ToastWatcher toasts;

    WbToast::Show(QStringLiteral("没有人看见"), ToastError);

    QCOMPARE(toasts.GetCount(), 0);
}

void TestToast::showsOverTheModalDialog()
{
    QDialog dialog(window.get());
    dialog.setModal(true);
    dialog.resize(400, 240);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));

    WbToast::Show(QStringLiteral("界面名称不能为空"), ToastError);

    QCOMPARE(ToastsIn(dialog).size(), 1);
    QVERIFY(dialog.rect().contains(ToastsIn(dialog).constFirst()->geometry()));
}

void TestToast::movesOnWhenItsDialogCloses()
{
    auto dialog = std::make_unique<QDialog>(window.get());
    dialog->setModal(true);
    dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
    ToastWatcher toasts;
    WbToast::Show(QStringLiteral("版本数据为空，无法保存"));

    dialog->reject();
    dialog.reset();

    QCOMPARE(ToastsIn(*window).size(), 1);
    QCOMPARE(TextOf(ToastsIn(*window).constFirst()), QStringLiteral("版本数据为空，无法保存"));
    QCOMPARE(toasts.GetCount(), 1);
}

void TestToast::goesWithItsWindow()
{
    WbToast::Show(QStringLiteral("提示"));
    const QPointer<QWidget> toast = ToastsIn(*window).constFirst();

    window.reset();

    QTRY_VERIFY(toast.isNull());
}

void TestToast::showsHostileTextAsText()
{
    const QString hostile = QStringLiteral("<a href='http://x'>点我</a>");

    WbToast::Show(hostile, ToastError);

    const auto* label = ToastsIn(*window).constFirst()->findChild<QLabel*>(QStringLiteral("labelToastText"));
    QCOMPARE(label->text(), hostile);
    QCOMPARE(label->textFormat(), Qt::PlainText);
}

void TestToast::shortensAnEndlessText()
{
    WbToast::Show(QString(10000, QLatin1Char('x')), ToastError);
    WbToast::Show(QString(10000, QLatin1Char('x')), ToastError);

    QCOMPARE(ToastsIn(*window).size(), 1);
    QVERIFY(window->rect().contains(ToastsIn(*window).constFirst()->geometry()));
    QVERIFY(TextOf(ToastsIn(*window).constFirst()).endsWith(QChar(0x2026)));
}

RPA_TEST_MAIN(TestToast)

#include "tst_toast.moc"
