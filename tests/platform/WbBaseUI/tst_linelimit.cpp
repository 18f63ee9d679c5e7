// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"
#include "ToastWatcher.h"

#include <WbBaseUI/WbLineLimit.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QtTest>

#include <memory>

class LineLimitTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void takesAsMuchAsMayBe();
    void keepsWhatWasTypedWhenTooMuchIsPasted();
    void keepsTheSelectionThatTooMuchWasPastedOver();
    void keepsAFullLineWhenMoreIsTyped();
    void takesTextsThatALineCutsByItself();

private:
    void Paste(const QString& text);

    std::unique_ptr<QLineEdit> edit;
};

void LineLimitTest::init()
{
    edit = std::make_unique<QLineEdit>();
    new WbLineLimit(edit.get(), QStringLiteral("姓名"));
    edit->setMaxLength(10);
    edit->show();
}

void LineLimitTest::Paste(const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
    QTest::keyClick(edit.get(), Qt::Key_V, Qt::ControlModifier);
}

void LineLimitTest::takesAsMuchAsMayBe()
{
    const ToastWatcher toasts;

    Paste(QStringLiteral("0123456789"));
    QCoreApplication::processEvents();

    QCOMPARE(edit->text(), QStringLiteral("0123456789"));
    QCOMPARE(toasts.GetTexts(), QStringList());
}

void LineLimitTest::keepsWhatWasTypedWhenTooMuchIsPasted()
{
    const ToastWatcher toasts;
    QTest::keyClicks(edit.get(), QStringLiteral("before"));

    Paste(QStringLiteral("0123456789"));

    QTRY_COMPARE(edit->text(), QStringLiteral("before"));
    QTRY_COMPARE(toasts.GetTexts(), QStringList{QStringLiteral("姓名最多 10 个字，没有插入")});
}

void LineLimitTest::keepsTheSelectionThatTooMuchWasPastedOver()
{
    QTest::keyClicks(edit.get(), QStringLiteral("before"));
    edit->selectAll();

    Paste(QStringLiteral("0123456789ABC"));

    QTRY_COMPARE(edit->text(), QStringLiteral("before"));
}

void LineLimitTest::keepsAFullLineWhenMoreIsTyped()
{
    const ToastWatcher toasts;

    QTest::keyClicks(edit.get(), QStringLiteral("0123456789AB"));
    QTRY_VERIFY(!toasts.GetTexts().isEmpty());
    QCoreApplication::processEvents();

    QCOMPARE(edit->text(), QStringLiteral("0123456789"));
}

void LineLimitTest::takesTextsThatALineCutsByItself()
{
    QLineEdit line;
    new WbLineLimit(&line, QStringLiteral("姓名"));
    const QString text(100000, QLatin1Char('x'));

    line.setText(text);

    QCOMPARE(line.text().size(), text.size());
}

RPA_TEST_MAIN(LineLimitTest)
#include "tst_linelimit.moc"
