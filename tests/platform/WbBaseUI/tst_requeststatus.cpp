// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"

#include <WbBaseUI/RequestStatusBaseWidget.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

class TestRequestStatus : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void hidesOnlyItselfBeforeTheFirstStatus();
    void showsABusySignWhileLoading();
    void turnsTheBusySign();
    void showsTheReasonAfterAFailure();
    void takesAReasonThatComesLater();
    void asksForARefresh_data();
    void asksForARefresh();
    void showsTheOtherWidgetAfterSuccess();
    void givesTheFocusBackAfterSuccess();
    void leavesTheFocusOfOthersAlone();
    void showsTheReasonAsText();
    void survivesThatItsWidgetGoesAway();

private:
    QWidget* Part(const char* name) const { return status->findChild<QWidget*>(QLatin1String(name)); }

    std::unique_ptr<QWidget> window;
    RequestStatusBaseWidget* status = nullptr;
    QWidget* editor = nullptr;
    QLineEdit* edit = nullptr;
};

void TestRequestStatus::init()
{
    window = std::make_unique<QWidget>();
    auto* layout = new QVBoxLayout(window.get());
    status = new RequestStatusBaseWidget(window.get());
    editor = new QWidget(window.get());
    edit = new QLineEdit(editor);
    layout->addWidget(status);
    layout->addWidget(editor);
    status->AddSucceedWidget(editor);
    window->resize(600, 400);
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
}

void TestRequestStatus::hidesOnlyItselfBeforeTheFirstStatus()
{
    QVERIFY(status->isHidden());
    QVERIFY(editor->isVisible());
}

void TestRequestStatus::showsABusySignWhileLoading()
{
    status->SetStatus(RequestStatus::Loading);

    QVERIFY(status->isVisible());
    QVERIFY(editor->isHidden());
    QVERIFY(Part("statusSpinner")->isVisible());
    QVERIFY(Part("pushButtonRefresh")->isHidden());
    QCOMPARE(status->accessibleName(), QStringLiteral("正在加载…"));
}

void TestRequestStatus::turnsTheBusySign()
{
    status->SetStatus(RequestStatus::Loading);
    const QImage before = Part("statusSpinner")->grab().toImage();

    QTRY_VERIFY(Part("statusSpinner")->grab().toImage() != before);
}

void TestRequestStatus::showsTheReasonAfterAFailure()
{
    status->SetErrorMsg(QStringLiteral("连接服务器超时"));

    status->SetStatus(RequestStatus::Failed);

    QCOMPARE(status->GetStatus(), RequestStatus::Failed);
    QVERIFY(Part("statusSpinner")->isHidden());
    QVERIFY(Part("statusIcon")->isVisible());
    QCOMPARE(status->findChild<QLabel*>(QStringLiteral("statusReason"))->text(),
             QStringLiteral("连接服务器超时"));
    QVERIFY(Part("statusReason")->isVisible());
    QCOMPARE(status->accessibleDescription(), QStringLiteral("连接服务器超时"));
}

void TestRequestStatus::takesAReasonThatComesLater()
{
    status->SetStatus(RequestStatus::Failed);
    QVERIFY(Part("statusReason")->isHidden());

    status->SetErrorMsg(QStringLiteral("无权限"));

    QVERIFY(Part("statusReason")->isVisible());
}

void TestRequestStatus::asksForARefresh_data()
{
    QTest::addColumn<bool>("byKey");

    QTest::newRow("mouse") << false;
    QTest::newRow("keyboard") << true;
}

void TestRequestStatus::asksForARefresh()
{
    QFETCH(bool, byKey);
    edit->setFocus();
    status->SetStatus(RequestStatus::Failed);
    QSignalSpy refresh(status, &RequestStatusBaseWidget::SigRefresh);
    auto* button = status->findChild<QPushButton*>(QStringLiteral("pushButtonRefresh"));
    QCOMPARE(button->text(), QStringLiteral("刷新"));

    if (byKey) {
        QTRY_VERIFY(button->hasFocus());
        QTest::keyClick(button, Qt::Key_Space);
    } else {
        QTest::mouseClick(button, Qt::LeftButton);
    }

    QCOMPARE(refresh.count(), 1);
}

void TestRequestStatus::showsTheOtherWidgetAfterSuccess()
{
    status->SetStatus(RequestStatus::Loading);

    status->SetStatus(RequestStatus::Succeeded);

    QVERIFY(status->isHidden());
    QVERIFY(editor->isVisible());
}

void TestRequestStatus::givesTheFocusBackAfterSuccess()
{
    QLineEdit other(window.get());
    other.show();
    edit->setFocus();
    QTRY_VERIFY(edit->hasFocus());

    status->SetStatus(RequestStatus::Loading);
    QVERIFY(!edit->hasFocus());
    QVERIFY(!other.hasFocus());
    status->SetStatus(RequestStatus::Succeeded);

    QTRY_VERIFY(edit->hasFocus());
}

void TestRequestStatus::leavesTheFocusOfOthersAlone()
{
    QLineEdit other(window.get());
    other.show();
    edit->setFocus();
    status->SetStatus(RequestStatus::Loading);
    other.setFocus();
    QTRY_VERIFY(other.hasFocus());

    status->SetStatus(RequestStatus::Succeeded);

    QVERIFY(other.hasFocus());
}

void TestRequestStatus::showsTheReasonAsText()
{
    status->SetErrorMsg(QStringLiteral("<b>x</b>"));
    status->SetStatus(RequestStatus::Failed);

    QCOMPARE(status->findChild<QLabel*>(QStringLiteral("statusReason"))->textFormat(), Qt::PlainText);
}

void TestRequestStatus::survivesThatItsWidgetGoesAway()
{
    status->SetStatus(RequestStatus::Loading);
    delete editor;
    editor = nullptr;

    status->SetStatus(RequestStatus::Succeeded);

    QVERIFY(status->isHidden());
}

RPA_TEST_MAIN(TestRequestStatus)
#include "tst_requeststatus.moc"
