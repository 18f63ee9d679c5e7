// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "TestApp.h"

#include <WbBaseUI/PackagedMsgBox.h>

#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QtTest>

#include <memory>

namespace
{
QPushButton* ButtonOf(QWidget* box, const char* name)
{
    return box->findChild<QPushButton*>(QLatin1String(name));
}
} // namespace

class TestMessageBox : public QObject
{
    Q_OBJECT

private slots:
    void returnsThePressedButton_data();
    void returnsThePressedButton();
    void countsEscapeAsCancel_data();
    void countsEscapeAsCancel();
    void countsTheCloseButtonAsCancel();
    void countsClosingTheWindowAsCancel();
    void agreesToAQuestionWithReturn();
    void refusesAWarningWithReturn();
    void offersOkWhenNoButtonIsNamed();
    void showsOtherButtonTexts();
    void showsTextAsPlainText();
    void givesTheExtraWidgetBack();
    void survivesThatItsParentGoesAway();
    void standsOverItsParent();
    void blocksTheApplicationOnlyWhenAsked_data();
    void blocksTheApplicationOnlyWhenAsked();
    void letsTheTextBeSelectedOnRequest();
    void staysOnTheScreenWithAnyText_data();
    void staysOnTheScreenWithAnyText();
};

void TestMessageBox::returnsThePressedButton_data()
{
    QTest::addColumn<int>("buttons");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("answer");

    const int yesNo = QMessageBox::Yes | QMessageBox::No;
    QTest::newRow("yes") << yesNo << "msgBoxYes" << QStringLiteral("是") << int(QMessageBox::Yes);
    QTest::newRow("no") << yesNo << "msgBoxNo" << QStringLiteral("否") << int(QMessageBox::No);
    QTest::newRow("ok") << int(QMessageBox::Ok) << "msgBoxOk" << QStringLiteral("确定")
                        << int(QMessageBox::Ok);
    QTest::newRow("cancel") << int(yesNo | QMessageBox::Cancel) << "msgBoxCancel" << QStringLiteral("取消")
                            << int(QMessageBox::Cancel);
}

void TestMessageBox::returnsThePressedButton()
{
    QFETCH(int, buttons);
    QFETCH(QString, name);
    QFETCH(QString, text);
    QFETCH(int, answer);
    ModalDriver modals;
    QString shownText;
    modals.Then([&](QWidget* box) {
        QCOMPARE(box->objectName(), QStringLiteral("PackagedMsgBox"));
        auto* button = box->findChild<QPushButton*>(name);
        QVERIFY(button);
        shownText = button->text();
        QTest::mouseClick(button, Qt::LeftButton);
    });

    const int result = PackagedMsgBox::question(QStringLiteral("确定开始灰度吗？"), nullptr,
                                                QMessageBox::StandardButtons(buttons));

    QCOMPARE(result, answer);
    QCOMPARE(shownText, text);
}

void TestMessageBox::countsEscapeAsCancel_data()
{
    QTest::addColumn<int>("buttons");

    QTest::newRow("only ok") << int(QMessageBox::Ok);
    QTest::newRow("yes and no") << int(QMessageBox::Yes | QMessageBox::No);
    QTest::newRow("with cancel") << int(QMessageBox::Yes | QMessageBox::Cancel);
}

void TestMessageBox::countsEscapeAsCancel()
{
    QFETCH(int, buttons);
    ModalDriver modals;
    modals.Then([](QWidget* box) { QTest::keyClick(box, Qt::Key_Escape); });

    const int result = PackagedMsgBox::information(QStringLiteral("线上版本不能灰度。"), nullptr,
                                                   QMessageBox::StandardButtons(buttons));

    QCOMPARE(result, int(QMessageBox::Cancel));
}

void TestMessageBox::countsTheCloseButtonAsCancel()
{
    ModalDriver modals;
    modals.Then([](QWidget* box) {
        auto* close = box->findChild<QAbstractButton*>(QStringLiteral("dialogClose"));
        QVERIFY(close && close->isVisible());
        QTest::mouseClick(close, Qt::LeftButton);
    });

    QCOMPARE(PackagedMsgBox::question(QStringLiteral("?"), nullptr, QMessageBox::Yes | QMessageBox::No),
             int(QMessageBox::Cancel));
}

void TestMessageBox::countsClosingTheWindowAsCancel()
{
    ModalDriver modals;
    modals.Then([](QWidget* box) { box->close(); });

    QCOMPARE(PackagedMsgBox::warn(QStringLiteral("!"), nullptr, QMessageBox::Ok), int(QMessageBox::Cancel));
}

void TestMessageBox::agreesToAQuestionWithReturn()
{
    ModalDriver modals;
    modals.Then([](QWidget* box) { QTest::keyClick(box, Qt::Key_Return); });

    QCOMPARE(PackagedMsgBox::question(QStringLiteral("?"), nullptr, QMessageBox::Yes | QMessageBox::No),
             int(QMessageBox::Yes));
}

void TestMessageBox::refusesAWarningWithReturn()
{
    ModalDriver modals;
    modals.Then([](QWidget* box) { QTest::keyClick(box, Qt::Key_Return); });

    QCOMPARE(PackagedMsgBox::warn(QStringLiteral("!"), nullptr, QMessageBox::Yes | QMessageBox::No),
             int(QMessageBox::No));
}

void TestMessageBox::offersOkWhenNoButtonIsNamed()
{
    ModalDriver modals;
    modals.Then([](QWidget* box) {
        QVERIFY(ButtonOf(box, "msgBoxOk"));
        QTest::mouseClick(ButtonOf(box, "msgBoxOk"), Qt::LeftButton);
    });

    QCOMPARE(PackagedMsgBox::information(QStringLiteral("i"), nullptr, QMessageBox::NoButton),
             int(QMessageBox::Ok));
}

void TestMessageBox::showsOtherButtonTexts()
{
    ModalDriver modals;
    QString yes;
    QString no;
    modals.Then([&](QWidget* box) {
        yes = ButtonOf(box, "msgBoxYes")->text();
        no = ButtonOf(box, "msgBoxNo")->text();
        ModalDriver::Reject(box);
    });

    PackagedMsgBox::question(QStringLiteral("?"), nullptr, QMessageBox::Yes | QMessageBox::No, true, nullptr,
                             {{QMessageBox::Yes, QStringLiteral("放弃修改")}});

    QCOMPARE(yes, QStringLiteral("放弃修改"));
    QCOMPARE(no, QStringLiteral("否"));
}

void TestMessageBox::showsTextAsPlainText()
{
    const QString hostile = QStringLiteral("<img src='file:///etc/passwd'><b>版本</b>");
    ModalDriver modals;
    modals.Then([&](QWidget* box) {
        auto* label = box->findChild<QLabel*>(QStringLiteral("msgBoxText"));
        QCOMPARE(label->text(), hostile);
        QCOMPARE(label->textFormat(), Qt::PlainText);
        ModalDriver::Reject(box);
    });

    PackagedMsgBox::information(hostile, nullptr, QMessageBox::Ok);
}

void TestMessageBox::givesTheExtraWidgetBack()
{
    QWidget owner;
    auto* extra = new QLineEdit(&owner);
    ModalDriver modals;
    modals.Then([&](QWidget* box) {
        QVERIFY(extra->isVisible());
        QVERIFY(box->isAncestorOf(extra));
        ModalDriver::Reject(box);
    });

    PackagedMsgBox::question(QStringLiteral("?"), nullptr, QMessageBox::Yes | QMessageBox::No, true, extra);

    QCOMPARE(extra->parentWidget(), &owner);
    QVERIFY(extra->isHidden());
}

void TestMessageBox::survivesThatItsParentGoesAway()
{
    auto parent = std::make_unique<QWidget>();
    ModalDriver modals;
    modals.Then([&](QWidget*) { parent.reset(); });

    const int result =
        PackagedMsgBox::question(QStringLiteral("?"), parent.get(), QMessageBox::Yes | QMessageBox::No);

    QCOMPARE(result, int(QMessageBox::Cancel));
}

void TestMessageBox::standsOverItsParent()
{
    QWidget parent;
    parent.setGeometry(60, 40, 640, 480);
    parent.show();
    ModalDriver modals;
    QPoint offset(1000, 1000);
    modals.Then([&](QWidget* box) {
        offset = box->frameGeometry().center() - parent.frameGeometry().center();
        ModalDriver::Reject(box);
    });

    PackagedMsgBox::question(QStringLiteral("?"), &parent, QMessageBox::Yes | QMessageBox::No);

    QVERIFY2(offset.manhattanLength() <= 4,
             qPrintable(QStringLiteral("%1,%2").arg(offset.x()).arg(offset.y())));
}

void TestMessageBox::blocksTheApplicationOnlyWhenAsked_data()
{
    QTest::addColumn<bool>("modal");
    QTest::addColumn<Qt::WindowModality>("modality");

    QTest::newRow("modal") << true << Qt::ApplicationModal;
    QTest::newRow("window only") << false << Qt::WindowModal;
}

void TestMessageBox::blocksTheApplicationOnlyWhenAsked()
{
    QFETCH(bool, modal);
    QFETCH(Qt::WindowModality, modality);
    QWidget parent;
    parent.show();
    ModalDriver modals;
    Qt::WindowModality met = Qt::NonModal;
    modals.Then([&](QWidget* box) {
        met = box->windowModality();
        ModalDriver::Reject(box);
    });

    PackagedMsgBox::information(QStringLiteral("i"), &parent, QMessageBox::Ok, modal);

    QCOMPARE(met, modality);
}

void TestMessageBox::letsTheTextBeSelectedOnRequest()
{
    ModalDriver modals;
    Qt::TextInteractionFlags flags = Qt::NoTextInteraction;
    modals.Then([&](QWidget* box) {
        flags = box->findChild<QLabel*>(QStringLiteral("msgBoxText"))->textInteractionFlags();
        ModalDriver::Reject(box);
    });

    PackagedMsgBox::information(QStringLiteral("i"), nullptr, QMessageBox::Ok, true, nullptr, {}, 1);

    QVERIFY(flags.testFlag(Qt::TextSelectableByMouse));
}

void TestMessageBox::staysOnTheScreenWithAnyText_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("many characters") << QString(20000, QChar(0x7248));
    QTest::newRow("many lines") << QString(500, QLatin1Char('\n'));
    QTest::newRow("one endless word") << QString(500, QLatin1Char('x'));
    QTest::newRow("nothing") << QString();
}

void TestMessageBox::staysOnTheScreenWithAnyText()
{
    QFETCH(QString, text);
    ModalDriver modals;
    QRect place;
    modals.Then([&](QWidget* box) {
        place = box->geometry();
        ModalDriver::Reject(box);
    });

    PackagedMsgBox::warn(text, nullptr, QMessageBox::Ok);

    QVERIFY(!place.isEmpty());
    QVERIFY(QGuiApplication::primaryScreen()->availableGeometry().contains(place));
    QVERIFY2(place.width() < 640, qPrintable(QString::number(place.width())));
}

RPA_TEST_MAIN(TestMessageBox)
#include "tst_messagebox.moc"
