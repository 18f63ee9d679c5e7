// SPDX-License-Identifier: Apache-2.0

// What the dialog of the runs tells of one: timeline, failure, comparison, and the run as a file.

#include "RunCompareDialog.h"
#include "RunFailureView.h"
#include "RunFileDialog.h"
#include "RunHistoryDialog.h"
#include "RunLogSource.h"
#include "RunTimeline.h"
#include "RunView.h"
#include "TestApp.h"
#include "TestFolder.h"
#include "WorkstationSettings.h"

#include <RpaEngineCore/IProcessLifeCycle.h>
#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>
#include <RpaRunHistory/RpaRunHistory.h>

#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabBar>
#include <QTreeView>
#include <QTreeWidget>
#include <QtTest>

#include <memory>

namespace
{
RpaRunSpan SpanOf(int line, const QString& input, const QString& error = QString())
{
    RpaRunSpan span;
    span.kind = RpaSpanKind::File;
    span.start = line * 1000;
    span.duration = 500;
    span.place = {QStringLiteral("主流程"), QStringLiteral("s%1").arg(line), line,
                  QStringLiteral("读取文本文件")};
    span.call = QStringLiteral("open");
    span.input = input;
    span.error = error;
    return span;
}

// Texts of all items, each with its columns.
QStringList TextsOf(const QTreeWidget* tree)
{
    QStringList texts;
    for (QTreeWidgetItemIterator it(const_cast<QTreeWidget*>(tree)); *it; ++it)
        if (!(*it)->isHidden())
            texts << QStringLiteral("%1|%2|%3").arg((*it)->text(0), (*it)->text(1), (*it)->text(2));
    return texts;
}
} // namespace

class tst_RunDetails : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theTimelineShowsWhatTheRunDid();
    void aClickInTheTimelineGoesToTheStatement();
    void theFailureShowsCallsVariablesAndLastSpans();
    void theFailureOpensFromOutside();
    void aRunThatCouldNotTellSaysSo();
    void aRunThatDidNotFailSaysSo();
    void thePictureIsShown();
    void comparesWithTheLastGoodRun();
    void comparesTheRunsThatAreChosen();
    void nothingToCompareWith();
    void aRunGoesThroughAFile();
    void aFileThatIsNoneIsRefused();

private:
    using Call = std::function<void(IProcessLifeCycle*)>;
    static void Tell(const Call& call) { RpaProcessLifeCycleManager::Instance()->ForEach(call); }
    static void Run(const QVector<RpaRunSpan>& spans, const QString& month = QStringLiteral("5"));
    static void Fail(const QVector<RpaRunSpan>& spans, const RpaRunFailure& failure,
                     const QString& month = QStringLiteral("5"));
    static RpaRunFailure FailureOf();
    void Open();
    template <typename Widget>
    Widget* Child(const char* name) const
    {
        return dialog->findChild<Widget*>(QLatin1String(name));
    }
    QTreeWidget* Failure() const { return Child<QTreeWidget>("treeFailure"); }

    std::unique_ptr<TestFolder> folder;
    std::unique_ptr<WorkstationSettings> settings;
    std::unique_ptr<RunLogSource> log;
    std::unique_ptr<IRpaDebugger> debugger;
    std::unique_ptr<RpaRunHistory> history;
    std::unique_ptr<RunHistoryDialog> dialog;
};

void tst_RunDetails::init()
{
    folder = std::make_unique<TestFolder>();
    settings = std::make_unique<WorkstationSettings>(folder->filePath(QStringLiteral("settings.ini")));
    log = std::make_unique<RunLogSource>();
    debugger = std::make_unique<IRpaDebugger>();
    history = std::make_unique<RpaRunHistory>();
    history->Start(folder->path());
    history->Follow(log.get(), debugger.get());
}

void tst_RunDetails::cleanup()
{
    dialog.reset();
    history.reset();
}

void tst_RunDetails::Run(const QVector<RpaRunSpan>& spans, const QString& month)
{
    const RpaRunStart start{QStringLiteral("a1"),
                            QStringLiteral("develop"),
                            QStringLiteral("主流程"),
                            {{QStringLiteral("月"), month, false}}};
    Tell([&](IProcessLifeCycle* listener) { listener->RunStarted(start); });
    Tell([&](IProcessLifeCycle* listener) { listener->RunSpans({spans, {}}); });
    Tell([](IProcessLifeCycle* listener) { listener->ProcessFinish(QStringLiteral("主流程")); });
}

void tst_RunDetails::Fail(const QVector<RpaRunSpan>& spans, const RpaRunFailure& failure,
                          const QString& month)
{
    const RpaRunStart start{QStringLiteral("a1"),
                            QStringLiteral("develop"),
                            QStringLiteral("主流程"),
                            {{QStringLiteral("月"), month, false}}};
    Tell([&](IProcessLifeCycle* listener) { listener->RunStarted(start); });
    Tell([&](IProcessLifeCycle* listener) { listener->RunSpans({spans, {}}); });
    Tell([&](IProcessLifeCycle* listener) { listener->RunFailed(failure); });
    Tell([](IProcessLifeCycle* listener) {
        listener->ProcessFailed(QStringLiteral("主流程"), QStringLiteral("找不到文件"), QString());
    });
    Tell([](IProcessLifeCycle* listener) { listener->ProcessFinish(QStringLiteral("主流程")); });
}

RpaRunFailure tst_RunDetails::FailureOf()
{
    return {
        {{QStringLiteral("process_1"), SpanOf(3, {}).place}},
        {{QStringLiteral("全局变量"), {{QStringLiteral("金额"), QStringLiteral("int"), QStringLiteral("7")}}},
         {QStringLiteral("界面参数"), {}}}};
}

void tst_RunDetails::Open()
{
    dialog = std::make_unique<RunHistoryDialog>(history.get(), QStringLiteral("a1"), settings.get(), nullptr);
    dialog->setModal(false);
    dialog->show();
    QTRY_VERIFY(Child<QTreeView>("viewRuns")->model()->rowCount() > 0);
    history->Finish();
}

void tst_RunDetails::theTimelineShowsWhatTheRunDid()
{
    Run({SpanOf(1, QStringLiteral("/a")), SpanOf(2, QStringLiteral("/b"))});
    Open();
    auto* timeline = Child<RunTimeline>("timeline");

    QTRY_COMPARE(timeline->GetRows().GetRows().size(), 2);
    QVERIFY(!timeline->isVisible());
    Child<QTabBar>("tabsRun")->setCurrentIndex(RunView::TimelineTab);
    QVERIFY(timeline->isVisible());
    QTest::keyClick(timeline, Qt::Key_Down);
    QVERIFY(Child<QLabel>("labelSpan")->text().contains(QStringLiteral("/a")));
}

void tst_RunDetails::aClickInTheTimelineGoesToTheStatement()
{
    Run({SpanOf(1, QStringLiteral("/a")), SpanOf(2, QStringLiteral("/b"))});
    Open();
    RpaRunPlace asked;
    connect(dialog.get(), &RunHistoryDialog::SigShowPlace, this,
            [&](const RpaRunPlace& place) { asked = place; });
    auto* timeline = Child<RunTimeline>("timeline");
    QTRY_COMPARE(timeline->GetRows().GetRows().size(), 2);
    Child<QTabBar>("tabsRun")->setCurrentIndex(RunView::TimelineTab);

    QTest::mouseClick(timeline->viewport(), Qt::LeftButton, {}, timeline->RectOf(1, 1).center());

    QCOMPARE(asked.statementId, QStringLiteral("s2"));
    QCOMPARE(asked.processName, QStringLiteral("主流程"));
}

void tst_RunDetails::theFailureShowsCallsVariablesAndLastSpans()
{
    QVector<RpaRunSpan> spans;
    for (int i = 1; i <= 25; ++i)
        spans << SpanOf(i, QStringLiteral("/f%1").arg(i));
    spans.last().error = QStringLiteral("OSError: no");
    Fail(spans, FailureOf());
    Open();
    RpaRunPlace asked;
    connect(dialog.get(), &RunHistoryDialog::SigShowPlace, this,
            [&](const RpaRunPlace& place) { asked = place; });
    QTRY_VERIFY(Failure()->topLevelItemCount() > 0);
    Child<QTabBar>("tabsRun")->setCurrentIndex(RunView::FailureTab);

    const QStringList texts = TextsOf(Failure());
    QVERIFY(texts.contains(QStringLiteral("主流程 第 3 步 读取文本文件||process_1")));
    QVERIFY(texts.contains(QStringLiteral("金额|int|7")));
    QVERIFY(texts.contains(QStringLiteral("最后的 20 次操作||")));
    QCOMPARE(texts.filter(QStringLiteral("/f")).size(), 20);
    QVERIFY(texts.last().contains(QStringLiteral("OSError: no")));
    QVERIFY(texts.filter(QStringLiteral("界面参数")).isEmpty()); // has none
    QVERIFY(!Child<QLabel>("labelNoFailure")->isVisible());

    QTreeWidgetItem* const call = Failure()->topLevelItem(0)->child(0);
    QTest::mouseClick(Failure()->viewport(), Qt::LeftButton, {}, Failure()->visualItemRect(call).center());
    QCOMPARE(asked.statementId, QStringLiteral("s3"));
}

void tst_RunDetails::theFailureOpensFromOutside()
{
    Fail({}, FailureOf());
    Run({SpanOf(1, QStringLiteral("/a"))});
    Open();

    dialog->ShowLastFailure();

    QTRY_COMPARE(Child<QTreeView>("viewRuns")->currentIndex().row(), 1);
    QCOMPARE(Child<QTabBar>("tabsRun")->currentIndex(), int(RunView::FailureTab));
    QTRY_VERIFY(TextsOf(Failure()).contains(QStringLiteral("金额|int|7")));
}

void tst_RunDetails::aRunThatCouldNotTellSaysSo()
{
    Fail({}, {});
    Open();
    dialog->ShowLastFailure();

    QTRY_COMPARE(Child<QLabel>("labelNoFailure")->text(), QStringLiteral("流程没有来得及说出失败时的变量。"));
    QTRY_VERIFY(Child<QLabel>("labelNoFailure")->isVisible());
}

void tst_RunDetails::aRunThatDidNotFailSaysSo()
{
    Run({});
    Open();
    Child<QTabBar>("tabsRun")->setCurrentIndex(RunView::FailureTab);

    QTRY_COMPARE(Child<QLabel>("labelNoFailure")->text(), QStringLiteral("这次运行没有失败。"));
    QVERIFY(!Failure()->isVisible());
}

void tst_RunDetails::thePictureIsShown()
{
    QImage picture(300, 200, QImage::Format_RGB32);
    picture.fill(Qt::red);
    history->SetPicture([picture] { return picture; });
    Fail({}, FailureOf());
    history->SetPicture([] { return QImage(); });
    Open();
    dialog->ShowLastFailure();

    const auto* label = Child<QLabel>("labelPicture");
    QTRY_VERIFY(label->pixmap(Qt::ReturnByValue).width() > 0);
    QCOMPARE(label->pixmap(Qt::ReturnByValue).toImage().pixelColor(5, 5), QColor(Qt::red));

    Fail({}, FailureOf());
    dialog->ShowLastFailure();
    QTRY_COMPARE(label->text(), QStringLiteral("没有失败时的浏览器画面"));
}

void tst_RunDetails::comparesWithTheLastGoodRun()
{
    Run({SpanOf(1, QStringLiteral("/good")), SpanOf(2, QStringLiteral("/b"))}, QStringLiteral("4"));
    Fail({SpanOf(1, QStringLiteral("/bad"))}, {});
    Fail({SpanOf(1, QStringLiteral("/good")), SpanOf(2, QStringLiteral("/x"), QStringLiteral("OSError"))},
         {});
    Open();

    QTest::mouseClick(Child<QPushButton>("buttonCompare"), Qt::LeftButton);

    auto* compare = dialog->findChild<RunCompareDialog*>();
    QVERIFY(compare);
    const auto* tree = compare->findChild<QTreeWidget*>(QStringLiteral("treeCompare"));
    QTRY_VERIFY(tree->topLevelItemCount() > 0);
    const QStringList texts = TextsOf(tree);
    QVERIFY2(texts.contains(QStringLiteral("月|4|5")), qPrintable(texts.join(QLatin1Char('\n'))));
    QVERIFY(texts.contains(QStringLiteral("主流程 第 2 步 读取文本文件|open  /b|open  /x  OSError")));
    QCOMPARE(compare->findChild<QLabel*>(QStringLiteral("labelDifference"))->text(),
             QStringLiteral("第一处不同：第 2 次操作，主流程 第 2 步 读取文本文件"));
    QVERIFY(!texts.filter(QStringLiteral("500 微秒，1 次")).isEmpty());
}

void tst_RunDetails::comparesTheRunsThatAreChosen()
{
    Run({SpanOf(1, QStringLiteral("/a"))});
    Run({SpanOf(1, QStringLiteral("/b"))});
    Run({SpanOf(1, QStringLiteral("/a"))});
    Open();
    QTest::mouseClick(Child<QPushButton>("buttonCompare"), Qt::LeftButton);
    auto* compare = dialog->findChild<RunCompareDialog*>();
    const auto* label = compare->findChild<QLabel*>(QStringLiteral("labelDifference"));
    QTRY_VERIFY(label->text().startsWith(QStringLiteral("第一处不同")));

    compare->findChild<QComboBox*>(QStringLiteral("comboBefore"))->setCurrentIndex(2);

    QTRY_COMPARE(label->text(), QStringLiteral("两次运行的操作相同。"));
    QVERIFY(TextsOf(compare->findChild<QTreeWidget*>(QStringLiteral("treeCompare")))
                .contains(QStringLiteral("参数相同||")));
}

void tst_RunDetails::nothingToCompareWith()
{
    Run({});
    Open();

    QTRY_VERIFY(Child<QPushButton>("buttonExport")->isEnabled());
    QVERIFY(!Child<QPushButton>("buttonCompare")->isEnabled());
}

void tst_RunDetails::aRunGoesThroughAFile()
{
    Fail({SpanOf(1, QStringLiteral("/a"))}, FailureOf());
    const QString path = folder->filePath(QStringLiteral("x.rparun"));
    QString problem = QStringLiteral("no answer");
    history->Export(1, path, this, [&](const QString& told) { problem = told; });
    history->Finish();
    QCOMPARE(problem, QString());
    std::unique_ptr<RunFileDialog> shown;
    history->ReadFile(path, this, [&](const RpaRunFile& file, const QString&) {
        shown = std::make_unique<RunFileDialog>(file, DateLanguage::Chinese, nullptr);
    });
    history->Finish();

    QVERIFY(shown);
    QCOMPARE(shown->findChild<QLabel*>(QStringLiteral("labelResult"))->text(),
             QStringLiteral("失败：找不到文件"));
    QVERIFY(TextsOf(shown->findChild<QTreeWidget*>(QStringLiteral("treeFailure")))
                .contains(QStringLiteral("金额|int|7")));
    QCOMPARE(shown->findChild<RunTimeline*>(QStringLiteral("timeline"))->GetRows().GetCount(), 1);
}

void tst_RunDetails::aFileThatIsNoneIsRefused()
{
    QString problem;
    history->ReadFile(folder->filePath(QStringLiteral("settings.ini")), this,
                      [&](const RpaRunFile&, const QString& told) { problem = told; });
    history->Finish();
    QVERIFY(!problem.isEmpty());

    history->Export(77, folder->filePath(QStringLiteral("y.rparun")), this,
                    [&](const QString& told) { problem = told; });
    history->Finish();
    QCOMPARE(problem, QStringLiteral("这次运行的记录已不在"));
}

RPA_TEST_MAIN(tst_RunDetails)
#include "tst_rundetails.moc"
