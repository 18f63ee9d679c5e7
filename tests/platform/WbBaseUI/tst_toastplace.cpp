// SPDX-License-Identifier: Apache-2.0

#include "ShownToasts.h"
#include "TestApp.h"

#include <WbBaseUI/RequestStatusBaseWidget.h>
#include <WbBaseUI/WbToast.h>

#include <QComboBox>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

namespace
{
constexpr int patienceMs = 8000;
} // namespace

class TestToastPlace : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void coversNothingThatIsInUse();
    void standsBesideTheButtonsOfASmallDialog();
    void keepsClearOfControlsThatAreDisabledForAMoment();
    void keepsADistanceFromControlsOnEverySide();
    void standsOnOneAxisWhereItMakesRoom();
    void leavesWhatComesBackWhenTheWaitIsOver();
    void showsTheLatestWhereThereIsNoRoomForAll();
    void letsTheMouseThroughWhereItMustCoverSomething();
    void standsOneBelowTheOther();
    void wrapsALongTextInsideTheWindow();
    void staysAtTheTopWhenTheWindowGrows();

private:
    // Through the window system, so that widgets are entered and left.
    void MoveMouseTo(const QPoint& place)
    {
        QCursor::setPos(window->mapToGlobal(place));
        QTest::mouseMove(window->windowHandle(), place);
    }

    std::unique_ptr<QWidget> window;
};

void TestToastPlace::init()
{
    window = std::make_unique<QWidget>();
    window->resize(800, 600);
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
}

void TestToastPlace::cleanup()
{
    window.reset();
}

void TestToastPlace::coversNothingThatIsInUse()
{
    auto* head = new QPushButton(QStringLiteral("保存"), window.get());
    head->setGeometry(300, 4, 220, 40);
    auto* field = new QLineEdit(window.get());
    field->setGeometry(20, 60, 760, 32);
    for (QWidget* widget : {static_cast<QWidget*>(head), static_cast<QWidget*>(field)})
        widget->show();

    WbToast::Show(QStringLiteral("一"), ToastError);
    WbToast::Show(QStringLiteral("保存失败：该版本已被其他人修改，请刷新后重试。"), ToastError);

    const QList<QWidget*> shown = ToastsIn(*window);
    QCOMPARE(shown.size(), 2);
    for (const QWidget* toast : shown) {
        QVERIFY(!toast->geometry().intersects(head->geometry()));
        QVERIFY(!toast->geometry().intersects(field->geometry()));
        QVERIFY(window->rect().contains(toast->geometry()));
        QVERIFY(!toast->testAttribute(Qt::WA_TransparentForMouseEvents));
    }
}

void TestToastPlace::standsBesideTheButtonsOfASmallDialog()
{
    QDialog dialog(window.get());
    dialog.setModal(true);
    dialog.resize(400, 170);
    auto* field = new QLineEdit(&dialog);
    field->setGeometry(100, 60, 280, 32);
    auto* button = new QPushButton(QStringLiteral("确定"), &dialog);
    button->setGeometry(160, 116, 80, 32);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));

    WbToast::Show(QStringLiteral("界面名称不能为空"), ToastError);

    const QRect place = ToastsIn(dialog).constFirst()->geometry();
    QVERIFY(!place.intersects(field->geometry()));
    QVERIFY(!place.intersects(button->geometry()));
}

void TestToastPlace::keepsClearOfControlsThatAreDisabledForAMoment()
{
    auto* field = new QLineEdit(window.get());
    field->setGeometry(300, 4, 220, 40);
    field->setEnabled(false);
    field->show();

    WbToast::Show(QStringLiteral("“应用”已上线"), ToastSuccess);

    QVERIFY(!ToastsIn(*window).constFirst()->geometry().intersects(field->geometry()));
}

void TestToastPlace::keepsADistanceFromControlsOnEverySide()
{
    QVector<QPushButton*> buttons;
    for (const QRect& place : {QRect(20, 4, 250, 40), QRect(530, 4, 250, 40), QRect(20, 50, 760, 30)}) {
        buttons.append(new QPushButton(window.get()));
        buttons.last()->setGeometry(place);
        buttons.last()->show();
    }

    WbToast::Show(QStringLiteral("版本服务意外停止，正在重新启动，请稍候"), ToastWarning);

    const QRect place = ToastsIn(*window).constFirst()->geometry();
    for (const QPushButton* button : qAsConst(buttons))
        QVERIFY2(!place.adjusted(-5, -5, 5, 5).intersects(button->geometry()), "touches a button");
}

void TestToastPlace::standsOnOneAxisWhereItMakesRoom()
{
    auto* field = new QLineEdit(window.get());
    field->setGeometry(300, 50, 220, 32);
    field->show();

    const QStringList texts{QStringLiteral("一"), QStringLiteral("邀请码已复制到剪贴板"),
                            QStringLiteral("“键盘应用”的使用者现在使用“候选版”")};
    for (const QString& text : texts)
        WbToast::Show(text, ToastSuccess);

    const QList<QWidget*> shown = ToastsIn(*window);
    QCOMPARE(shown.size(), 3);
    for (const QWidget* toast : shown) {
        const QRect place = toast->geometry();
        QVERIFY(!place.intersects(field->geometry()));
        QVERIFY(qAbs(place.center().x() - shown.constFirst()->geometry().center().x()) <= 1);
    }
    for (int i = 1; i < shown.size(); ++i)
        QCOMPARE(shown.at(i)->y() - shown.at(i - 1)->geometry().bottom() - 1, 8);
}

void TestToastPlace::leavesWhatComesBackWhenTheWaitIsOver()
{
    auto* rows = new QVBoxLayout(window.get());
    auto* bar = new QWidget;
    auto* page = new QWidget;
    rows->addWidget(bar, 0, Qt::AlignTop);
    rows->addWidget(page, 1);
    auto* versions = new QComboBox;
    auto* inBar = new QHBoxLayout(bar);
    inBar->addWidget(versions);
    versions->setFixedWidth(240);
    auto* status = new RequestStatusBaseWidget(window.get());
    rows->addWidget(status, 1);
    status->AddSucceedWidget(bar);
    status->AddSucceedWidget(page);
    status->SetStatus(RequestStatus::Loading);
    QTRY_VERIFY(!versions->isVisible() && status->isVisible());
    WbToast::Show(QStringLiteral("“应用”已上线"), ToastSuccess);
    const QPointer<QWidget> toast = ToastsIn(*window).constFirst();
    const QRect before = toast->geometry();

    status->SetStatus(RequestStatus::Succeeded);

    QTRY_VERIFY(versions->isVisible());
    const QRect reach(versions->mapTo(window.get(), QPoint()), versions->size());
    QVERIFY(reach.intersects(before));
    QTRY_VERIFY_WITH_TIMEOUT(!toast || !toast->geometry().intersects(reach), patienceMs);
    QVERIFY(toast);
}

void TestToastPlace::showsTheLatestWhereThereIsNoRoomForAll()
{
    auto* field = new QLineEdit(window.get());
    field->setGeometry(window->rect().adjusted(0, 60, 0, 0));
    field->show();

    const QStringList texts{QStringLiteral("模板名称不能为空"), QStringLiteral("模板描述不能为空"),
                            QStringLiteral("存储路径不能为空")};
    for (const QString& text : texts)
        WbToast::Show(text, ToastError);

    const QList<QWidget*> shown = ToastsIn(*window);
    QCOMPARE(shown.size(), 1);
    QCOMPARE(TextOf(shown.constFirst()), texts.constLast());
    QVERIFY(!shown.constFirst()->geometry().intersects(field->geometry()));
}

void TestToastPlace::letsTheMouseThroughWhereItMustCoverSomething()
{
    QPushButton everywhere(QStringLiteral("按钮"), window.get());
    everywhere.setGeometry(window->rect());
    everywhere.show();
    QSignalSpy pressed(&everywhere, &QPushButton::clicked);

    WbToast::Show(QStringLiteral("提示"));
    const QPointer<QWidget> toast = ToastsIn(*window).constFirst();
    const QPoint there = toast->geometry().center();
    MoveMouseTo(there);
    MoveMouseTo(there + QPoint(8, 0));
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, there);

    QCOMPARE(pressed.size(), 1);
    QVERIFY(toast && toast->isVisible());
    QTRY_VERIFY_WITH_TIMEOUT(toast.isNull(), 4500);
}

void TestToastPlace::standsOneBelowTheOther()
{
    WbToast::Show(QStringLiteral("一"));
    WbToast::Show(QStringLiteral("二"));
    WbToast::Show(QStringLiteral("三"));

    const QList<QWidget*> shown = ToastsIn(*window);
    QCOMPARE(shown.size(), 3);
    for (int i = 1; i < shown.size(); ++i)
        QVERIFY(shown.at(i)->geometry().top() > shown.at(i - 1)->geometry().bottom());
}

void TestToastPlace::wrapsALongTextInsideTheWindow()
{
    window->resize(320, 400);
    const QString text =
        QStringLiteral("保存失败：该版本已被其他人修改，您的修改已保留在本机草稿中，请刷新后重试。");

    WbToast::Show(text, ToastError);

    const QWidget* toast = ToastsIn(*window).constFirst();
    const auto* label = toast->findChild<QLabel*>(QStringLiteral("labelToastText"));
    QVERIFY(window->rect().contains(toast->geometry()));
    QTRY_VERIFY(label->height() >= label->heightForWidth(label->width()));
    QVERIFY(label->height() > 2 * label->fontMetrics().height());
}

void TestToastPlace::staysAtTheTopWhenTheWindowGrows()
{
    WbToast::Show(QStringLiteral("提示"));
    const QWidget* toast = ToastsIn(*window).constFirst();

    window->resize(1000, 700);

    QTRY_VERIFY(qAbs(toast->geometry().center().x() - window->rect().center().x()) <= 1);
    QVERIFY(toast->geometry().bottom() < window->height() / 3);
}

RPA_TEST_MAIN(TestToastPlace)

#include "tst_toastplace.moc"
