// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "TestFolder.h"
#include "ToastWatcher.h"

#include <RpaAppTool/IAppLogWidget.h>
#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <WbBaseUI/WbTheme.h>
#include <WbBaseUI/WbToast.h>

#include <QAbstractItemModelTester>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QScopeGuard>
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
    void aLineIsShownOnceThoughTheFilterReadItFirst();
    void clearingEmptiesTheLog();
    void saysWhyItIsEmpty();
    void showsTimesInFull();
    void copyTakesAllLinesWhenNoneIsSelected();
    void aDoubleClickShowsTheStatement();
    void aDoubleClickShowsTheLineOfAProgram();
    void theNumberOfTheLineStandsFirst();
    void theFocusFramesTheWholeRow();
    void aLineOfNoPlaceShowsNothing();
    void anErrorLeadsToHowTheRunFailed();
    void textsAreShownWholeWhenWanted();
    void theNewestLineStaysInSightWhenTextsAreWhole();
    void savesAllLines();
    void savesTheLinesThatPassTheFilter();
    void aFolderThatCannotBeWrittenIsSaid();
    void aFloodStaysBounded();

private:
    static IRpaLogManager* Log() { return RpaEngineModule::Instance()->GetLogManager(); }
    QTableView* View() { return host->findChild<QTableView*>(QStringLiteral("logView")); }
    void DoubleClick(int row);
    void Save(const char* action, const QString& path);
    QString Text(int row) { return View()->model()->index(row, 3).data().toString(); }

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

void LogWidget::aLineIsShownOnceThoughTheFilterReadItFirst()
{
    QSignalSpy announced(Log()->GetLogDataSource(), &IRpaLogDataSource::SigLinesAdded);
    Log()->Append(RpaLogLevel::Info, QStringLiteral("x"));

    QTest::keyClicks(host->findChild<QLineEdit*>(QStringLiteral("logFilter")), QStringLiteral("x"));
    QCOMPARE(View()->model()->rowCount(), 1);
    QTRY_COMPARE(announced.size(), 1);

    QCOMPARE(View()->model()->rowCount(), 1);
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

    for (const int column : {0, 1, 2})
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
    DoubleClick(0);

    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.first().first().toString(), QStringLiteral("s-7"));
}

void LogWidget::DoubleClick(int row)
{
    const QPoint where = View()->visualRect(View()->model()->index(row, 3)).center();
    QTest::mouseClick(View()->viewport(), Qt::LeftButton, {}, where);
    QTest::mouseDClick(View()->viewport(), Qt::LeftButton, {}, where);
}

void LogWidget::aDoubleClickShowsTheLineOfAProgram()
{
    Log()->Append(RpaLogLevel::Error, QStringLiteral("x"), QString(), 17);
    Log()->Append(RpaLogLevel::Error, QStringLiteral("y"), QStringLiteral("s-7"), 18);
    QTRY_COMPARE(View()->model()->rowCount(), 2);
    QSignalSpy lines(widget, &IAppLogWidget::SigShowLine);

    DoubleClick(0);
    DoubleClick(1); // a statement has its own way

    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines.first().first().toInt(), 17);
}

void LogWidget::theFocusFramesTheWholeRow()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    const auto back = qScopeGuard([] { qApp->setStyleSheet(QString()); });
    Log()->Append(RpaLogLevel::Info, QStringLiteral("a"));
    QTRY_COMPARE(View()->model()->rowCount(), 1);
    host->activateWindow();
    View()->setFocus();
    QTRY_VERIFY(View()->hasFocus());
    View()->selectionModel()->setCurrentIndex(View()->model()->index(0, 0), QItemSelectionModel::NoUpdate);

    const QImage picture = View()->viewport()->grab().toImage();

    const int y = View()->rowViewportPosition(0) + View()->rowHeight(0) / 2;
    const QColor ring = WbTheme::Instance()->Color(WbColor::FocusRing);
    QCOMPARE(picture.pixelColor(0, y), ring);
    QCOMPARE(picture.pixelColor(picture.width() - 1, y), ring);
    const int endOfFirst = View()->columnWidth(0) - 1;
    QVERIFY(picture.pixelColor(endOfFirst, y) != ring);
}

void LogWidget::aLineOfNoPlaceShowsNothing()
{
    Log()->Append(RpaLogLevel::Info, QStringLiteral("x"));
    QTRY_COMPARE(View()->model()->rowCount(), 1);
    QSignalSpy lines(widget, &IAppLogWidget::SigShowLine);
    QSignalSpy statements(widget, &IAppLogWidget::SigShowStatement);

    DoubleClick(0);

    QCOMPARE(lines.size() + statements.size(), 0);
}

void LogWidget::anErrorLeadsToHowTheRunFailed()
{
    Log()->Append(RpaLogLevel::Info, QStringLiteral("x"));
    Log()->Append(RpaLogLevel::Error, QStringLiteral("y"));
    QTRY_COMPARE(View()->model()->rowCount(), 2);
    auto* action = host->findChild<QAction*>(QStringLiteral("actionLogFailure"));
    const auto pick = [this](int row) { View()->setCurrentIndex(View()->model()->index(row, 0)); };
    pick(1);
    QVERIFY(!action->isVisible()); // nobody could show it

    QSignalSpy asked(widget, &IAppLogWidget::SigShowFailure);
    pick(0);
    QVERIFY(!action->isVisible());
    pick(1);
    QVERIFY(action->isVisible());
    action->trigger();

    QCOMPARE(asked.size(), 1);
}

void LogWidget::theNumberOfTheLineStandsFirst()
{
    Log()->Append(RpaLogLevel::Info, QStringLiteral("x"), QStringLiteral("s"), 12);
    Log()->Append(RpaLogLevel::Info, QStringLiteral("y"));
    QTRY_COMPARE(View()->model()->rowCount(), 2);
    const auto number = [this](int row) { return View()->model()->index(row, 0).data().toString(); };
    QCOMPARE(number(0), QStringLiteral("12"));
    QCOMPARE(number(1), QString());
    QCOMPARE(View()->horizontalHeader()->visualIndex(0), 0);

    Log()->Append(RpaLogLevel::Info, QStringLiteral("z"), QString(), 123456);
    QTRY_COMPARE(View()->model()->rowCount(), 3);
    QVERIFY(View()->sizeHintForIndex(View()->model()->index(2, 0)).width() <= View()->columnWidth(0));
}

void LogWidget::textsAreShownWholeWhenWanted()
{
    Log()->Append(RpaLogLevel::Info, QStringLiteral("first\nsecond"));
    Log()->Append(RpaLogLevel::Info, QString(300, QLatin1Char('x'))); // a word that fits into no line
    QTRY_COMPARE(View()->model()->rowCount(), 2);
    const int usual = View()->rowHeight(0);
    QCOMPARE(Text(0), QStringLiteral("first"));
    auto* wrap = host->findChild<QToolButton*>(QStringLiteral("logWrap"));

    QTest::mouseClick(wrap, Qt::LeftButton);
    QCOMPARE(Text(0), QStringLiteral("first\nsecond"));
    const int lineHeight = View()->fontMetrics().height();
    QTRY_VERIFY(View()->rowHeight(0) >= 2 * lineHeight);
    const int perLine = View()->columnWidth(3) / View()->fontMetrics().horizontalAdvance(QLatin1Char('x'));
    QTRY_VERIFY(View()->rowHeight(1) >= 300 / perLine * lineHeight);

    QTest::mouseClick(wrap, Qt::LeftButton);
    QCOMPARE(View()->rowHeight(0), usual);
    QCOMPARE(View()->rowHeight(1), usual);
    QCOMPARE(Text(0), QStringLiteral("first"));
}

void LogWidget::theNewestLineStaysInSightWhenTextsAreWhole()
{
    QTest::mouseClick(host->findChild<QToolButton*>(QStringLiteral("logWrap")), Qt::LeftButton);
    for (int i = 0; i < 200; ++i)
        Log()->Append(RpaLogLevel::Info, QStringLiteral("line\n%1").arg(i));
    QTRY_COMPARE(View()->model()->rowCount(), 200);

    const QModelIndex last = View()->model()->index(199, 3);
    QTRY_VERIFY(View()->rowHeight(199) >= 2 * View()->fontMetrics().height());
    QTRY_COMPARE(View()->visualRect(last).bottom(), View()->viewport()->rect().bottom());
}

void LogWidget::Save(const char* action, const QString& path)
{
    ModalDriver modals;
    modals.ThenIn<QFileDialog>([&path](QFileDialog* files) {
        QCOMPARE(files->acceptMode(), QFileDialog::AcceptSave);
        QCOMPARE(QFileInfo(files->selectedFiles().value(0)).fileName(), QStringLiteral("运行日志.txt"));
        files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(path);
        QTest::keyClick(files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")), Qt::Key_Return);
    });
    host->findChild<QAction*>(QLatin1String(action))->trigger();
}

void LogWidget::savesAllLines()
{
    Log()->Append(RpaLogLevel::Debug, QStringLiteral("hidden"));
    Log()->Append(RpaLogLevel::Error, QStringLiteral("金额\n为空"), QStringLiteral("s"), 12);
    QTRY_COMPARE(View()->model()->rowCount(), 1);
    TestFolder folder;
    const QString path = folder.filePath(QStringLiteral("a.txt"));
    ToastWatcher toasts;

    Save("actionLogSave", path);

    QTRY_COMPARE(toasts.GetToasts(),
                 QVector<SeenToast>({{QStringLiteral("已保存 2 行日志"), int(ToastSuccess)}}));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    QVERIFY(text.contains(QStringLiteral("[调试] hidden\n")));
    QVERIFY(text.endsWith(QStringLiteral("[错误] 第 12 行 金额\n为空\n")));
}

void LogWidget::savesTheLinesThatPassTheFilter()
{
    Log()->Append(RpaLogLevel::Info, QStringLiteral("one"));
    Log()->Append(RpaLogLevel::Info, QStringLiteral("two"));
    Log()->Append(RpaLogLevel::Debug, QStringLiteral("two, too"));
    QTest::keyClicks(host->findChild<QLineEdit*>(QStringLiteral("logFilter")), QStringLiteral("TWO"));
    QTRY_COMPARE(View()->model()->rowCount(), 1);
    TestFolder folder;
    const QString path = folder.filePath(QStringLiteral("b.txt"));
    ToastWatcher toasts;

    Save("actionLogSaveFiltered", path);

    QTRY_COMPARE(toasts.GetToasts().size(), 1);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    QCOMPARE(text.count('\n'), 1);
    QVERIFY(text.endsWith("two\n"));
}

void LogWidget::aFolderThatCannotBeWrittenIsSaid()
{
    Log()->Append(RpaLogLevel::Info, QStringLiteral("one"));
    QTRY_COMPARE(View()->model()->rowCount(), 1);
    TestFolder folder;
    const QString path = folder.filePath(QStringLiteral("none/a.txt"));
    ToastWatcher toasts;

    Save("actionLogSave", path);

    QTRY_COMPARE(toasts.GetToasts(),
                 QVector<SeenToast>({{QStringLiteral("日志无法保存，请换一个位置再试"), int(ToastError)}}));
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
