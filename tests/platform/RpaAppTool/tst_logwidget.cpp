#include <RpaAppTool/IAppLogWidget.h>
#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineModule/RpaEngineModule.h>

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <QToolButton>

class LogWidget : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void newLinesAreShownAndFollowed();
    void linesBelowTheLevelAreLeftOut();
    void theTextFilterIgnoresCase();
    void clearingEmptiesTheLog();
    void saysWhyItIsEmpty();
    void showsTimesInFull();
    void copyTakesAllLinesWhenNoneIsSelected();
    void aDoubleClickShowsTheStatement();
    void aFloodStaysBounded();

private:
    static IRpaLogManager* Log() { return RpaEngineModule::Instance()->GetLogManager(); }
    QTableView* View() { return host->findChild<QTableView*>(QStringLiteral("logView")); }
    QString Text(int row) { return View()->model()->index(row, 2).data().toString(); }

    std::unique_ptr<QWidget> host;
    IAppLogWidget* widget = nullptr;
    std::unique_ptr<QAbstractItemModelTester> tester;
};

void LogWidget::init()
{
    tester.reset();
    host = std::make_unique<QWidget>();
    widget = IAppLogWidget::CreateDevelopLog(host.get());
    Log()->GetLogDataSource()->Initialize();
    widget->SetLogDataSource(Log()->GetLogDataSource());
    tester = std::make_unique<QAbstractItemModelTester>(
        View()->model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    widget->resize(600, 200);
    host->show();
}

void LogWidget::newLinesAreShownAndFollowed()
{
    for (int i = 0; i < 100; ++i)
        Log()->Append(RpaLogLevel::Info, QStringLiteral("line %1").arg(i));

    QTRY_COMPARE(View()->model()->rowCount(), 100);
    QCOMPARE(Text(99), QStringLiteral("line 99"));
    QTRY_COMPARE(View()->verticalScrollBar()->value(), View()->verticalScrollBar()->maximum());

    View()->verticalScrollBar()->setValue(0);
    Log()->Append(RpaLogLevel::Info, QStringLiteral("later"));
    QTRY_COMPARE(View()->model()->rowCount(), 101);
    QCOMPARE(View()->verticalScrollBar()->value(), 0);
}

void LogWidget::linesBelowTheLevelAreLeftOut()
{
    Log()->Append(RpaLogLevel::Debug, QStringLiteral("detail"));
    Log()->Append(RpaLogLevel::Error, QStringLiteral("broken"));
    QTRY_COMPARE(View()->model()->rowCount(), 1);

    host->findChild<QComboBox*>(QStringLiteral("logLevel"))->setCurrentIndex(0);

    QCOMPARE(View()->model()->rowCount(), 2);
}

void LogWidget::theTextFilterIgnoresCase()
{
    Log()->Append(RpaLogLevel::Info, QStringLiteral("Alpha"));
    Log()->Append(RpaLogLevel::Info, QStringLiteral("beta"));
    QTRY_COMPARE(View()->model()->rowCount(), 2);

    QTest::keyClicks(host->findChild<QLineEdit*>(QStringLiteral("logFilter")), QStringLiteral("ALP"));

    QCOMPARE(View()->model()->rowCount(), 1);
    QCOMPARE(Text(0), QStringLiteral("Alpha"));
}

void LogWidget::clearingEmptiesTheLog()
{
    Log()->Append(RpaLogLevel::Info, QStringLiteral("x"));
    QTRY_COMPARE(View()->model()->rowCount(), 1);

    QTest::mouseClick(host->findChild<QToolButton*>(QStringLiteral("logClear")), Qt::LeftButton);

    QCOMPARE(View()->model()->rowCount(), 0);
    QVERIFY(Log()->GetLogDataSource()->GetLines().isEmpty());
}

void LogWidget::saysWhyItIsEmpty()
{
    const auto* hint = host->findChild<QLabel*>(QStringLiteral("emptyHint"));
    QVERIFY(hint->isVisible());
    const QString beforeARun = hint->text();

    Log()->Append(RpaLogLevel::Info, QStringLiteral("x"));
    QTRY_COMPARE(View()->model()->rowCount(), 1);
    QVERIFY(!hint->isVisible());

    QTest::keyClicks(host->findChild<QLineEdit*>(QStringLiteral("logFilter")), QStringLiteral("y"));
    QVERIFY(hint->isVisible());
    QVERIFY(hint->text() != beforeARun);
}

void LogWidget::showsTimesInFull()
{
    Log()->Append(RpaLogLevel::Info, QStringLiteral("x"));
    QTRY_COMPARE(View()->model()->rowCount(), 1);

    for (const int column : {0, 1})
        QVERIFY(View()->sizeHintForIndex(View()->model()->index(0, column)).width() <=
                View()->columnWidth(column));
}

void LogWidget::copyTakesAllLinesWhenNoneIsSelected()
{
    Log()->Append(RpaLogLevel::Warning, QStringLiteral("first\nsecond line"));
    QTRY_COMPARE(View()->model()->rowCount(), 1);

    QTest::mouseClick(host->findChild<QToolButton*>(QStringLiteral("logCopy")), Qt::LeftButton);

    QVERIFY(QGuiApplication::clipboard()->text().endsWith(QStringLiteral("[警告] first\nsecond line")));
}

void LogWidget::aDoubleClickShowsTheStatement()
{
    Log()->Append(RpaLogLevel::Error, QStringLiteral("x"), QStringLiteral("s-7"));
    QTRY_COMPARE(View()->model()->rowCount(), 1);
    QSignalSpy spy(widget, &IAppLogWidget::SigShowStatement);
    const QPoint where = View()->visualRect(View()->model()->index(0, 2)).center();

    QTest::mouseClick(View()->viewport(), Qt::LeftButton, {}, where);
    QTest::mouseDClick(View()->viewport(), Qt::LeftButton, {}, where);

    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.first().first().toString(), QStringLiteral("s-7"));
}

void LogWidget::aFloodStaysBounded()
{
    for (int block = 0; block < 10; ++block) {
        for (int i = 0; i < 3000; ++i)
            Log()->Append(RpaLogLevel::Info, QString::number(block * 3000 + i));
        QCoreApplication::processEvents();
    }

    QTRY_VERIFY(View()->model()->rowCount() > 0 &&
                Text(View()->model()->rowCount() - 1) == QStringLiteral("29999"));
    QVERIFY(View()->model()->rowCount() <= 10000);
}

QTEST_MAIN(LogWidget)

#include "tst_logwidget.moc"
