// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "RunHistoryDialog.h"
#include "RunLogSource.h"
#include "RunWords.h"
#include "TestApp.h"
#include "TestFolder.h"
#include "WorkstationSettings.h"

#include <RpaEngineCore/IProcessLifeCycle.h>
#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>
#include <RpaRunHistory/RpaRunHistory.h>

#include <QCheckBox>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeView>
#include <QtTest>

#include <memory>

// The dialog over a real history on the disk.
class tst_RunHistoryDialog : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void saysWhatToDoWhileThereIsNothing();
    void listsTheRunsOfItsAppNewestFirst();
    void tellsHowTheSelectedRunEnded();
    void filters_data();
    void filters();
    void saysWhenNothingFits();
    void followsRunsWhileItIsOpen();
    void removesTheSelectedRun();
    void asksBeforeItRemovesAll_data();
    void asksBeforeItRemovesAll();
    void switchesKeepingOff();
    void writesDurations_data();
    void writesDurations();

private:
    void Begin(const QString& process, const QString& version, const QString& appId = QStringLiteral("a1"));
    void End(const QString& error = QString(), const QString& line = QString());
    void ThreeRuns();
    void Open();
    template <typename Widget>
    Widget* Child(const char* name) const
    {
        return dialog->findChild<Widget*>(QLatin1String(name));
    }
    QString Shown(const char* label) const { return Child<QLabel>(label)->text(); }
    QStringList Processes() const;
    // What an input method writes into the field.
    void Write(const QString& text)
    {
        QInputMethodEvent event;
        event.setCommitString(text);
        QCoreApplication::sendEvent(Child<QLineEdit>("editText"), &event);
    }
    void Press(const char* button) { QTest::mouseClick(Child<QPushButton>(button), Qt::LeftButton); }

    std::unique_ptr<TestFolder> folder;
    std::unique_ptr<WorkstationSettings> settings;
    std::unique_ptr<RunLogSource> log;
    std::unique_ptr<IRpaDebugger> debugger;
    std::unique_ptr<RpaRunHistory> history;
    std::unique_ptr<RunHistoryDialog> dialog;
    QString versionName;
};

void tst_RunHistoryDialog::init()
{
    folder = std::make_unique<TestFolder>();
    settings = std::make_unique<WorkstationSettings>(folder->filePath(QStringLiteral("settings.ini")));
    settings->SetDateLanguage(DateLanguage::Chinese);
    log = std::make_unique<RunLogSource>();
    debugger = std::make_unique<IRpaDebugger>();
    history = std::make_unique<RpaRunHistory>();
    history->Start(folder->path());
    history->Follow(log.get(), debugger.get());
    history->SetContext([this](const QString&) {
        RpaRunRecord run;
        run.account = QStringLiteral("张三");
        run.versionName = versionName;
        return run;
    });
}

void tst_RunHistoryDialog::cleanup()
{
    dialog.reset();
    history.reset();
}

void tst_RunHistoryDialog::Begin(const QString& process, const QString& version, const QString& appId)
{
    versionName = version;
    const RpaRunStart start{appId,
                            QStringLiteral("develop"),
                            process,
                            {{QStringLiteral("部门"), QStringLiteral("财务"), false},
                             {QStringLiteral("口令"), QStringLiteral("geheim"), true}}};
    RpaProcessLifeCycleManager::Instance()->ForEach(
        [&](IProcessLifeCycle* listener) { listener->RunStarted(start); });
}

void tst_RunHistoryDialog::End(const QString& error, const QString& line)
{
    if (!line.isEmpty())
        log->Write(line);
    RpaProcessLifeCycleManager::Instance()->ForEach([&](IProcessLifeCycle* listener) {
        if (!error.isEmpty())
            listener->ProcessFailed(QString(), error, QStringLiteral("Traceback (most recent call last)"));
    });
    if (!error.isEmpty())
        emit debugger->SigCheckNode(
            {{QStringLiteral("子流程"), QString(), QStringLiteral("run-failed"), error, QString(), 7}});
    RpaProcessLifeCycleManager::Instance()->ForEach(
        [](IProcessLifeCycle* listener) { listener->ProcessFinish(QString()); });
    history->Finish();
}

void tst_RunHistoryDialog::ThreeRuns()
{
    Begin(QStringLiteral("甲"), QStringLiteral("版本1"));
    End(QString(), QStringLiteral("读取订单"));
    Begin(QStringLiteral("别的应用"), QStringLiteral("版本1"), QStringLiteral("a2"));
    End();
    Begin(QStringLiteral("乙"), QStringLiteral("版本2"));
    End(QStringLiteral("找不到文件"));
    Begin(QStringLiteral("丙"), QStringLiteral("版本2"));
    End(QString(), QStringLiteral("写入汇总"));
}

void tst_RunHistoryDialog::Open()
{
    dialog = std::make_unique<RunHistoryDialog>(history.get(), QStringLiteral("a1"), settings.get(), nullptr);
    dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
    history->Finish(); // the list is there
    history->Finish(); // and what is known of its first run
}

QStringList tst_RunHistoryDialog::Processes() const
{
    const QAbstractItemModel* const model = Child<QTreeView>("viewRuns")->model();
    QStringList names;
    for (int row = 0; row < model->rowCount(); ++row)
        names.append(model->index(row, 1).data().toString());
    return names;
}

void tst_RunHistoryDialog::saysWhatToDoWhileThereIsNothing()
{
    Open();

    QVERIFY2(Shown("labelResult").contains(QStringLiteral("还没有运行记录")),
             qPrintable(Shown("labelResult")));
    QCOMPARE(Shown("labelCount"), QStringLiteral("共 0 次"));
    QVERIFY(!Child<QPushButton>("buttonRemove")->isEnabled());
    QVERIFY(!Child<QPushButton>("buttonRemoveAll")->isEnabled());
}

void tst_RunHistoryDialog::listsTheRunsOfItsAppNewestFirst()
{
    ThreeRuns();
    Open();

    QCOMPARE(Processes(), (QStringList{QStringLiteral("丙"), QStringLiteral("乙"), QStringLiteral("甲")}));
    QCOMPARE(Shown("labelCount"), QStringLiteral("共 3 次"));
    const QAbstractItemModel* const model = Child<QTreeView>("viewRuns")->model();
    QCOMPARE(model->index(1, 2).data().toString(), QStringLiteral("失败"));
    QVERIFY(model->index(1, 2).data(Qt::ForegroundRole).isValid());
    QVERIFY(!model->index(0, 2).data(Qt::ForegroundRole).isValid());
    QCOMPARE(model->index(2, 4).data().toString(), QStringLiteral("版本1"));
    QCOMPARE(Child<QTreeView>("viewRuns")->currentIndex().row(), 0);
    QCOMPARE(Shown("labelResult"), QStringLiteral("成功"));
    QVERIFY(Child<QPlainTextEdit>("textLog")->toPlainText().contains(QStringLiteral("写入汇总")));
}

void tst_RunHistoryDialog::tellsHowTheSelectedRunEnded()
{
    ThreeRuns();
    Open();

    QTest::keyClick(Child<QTreeView>("viewRuns"), Qt::Key_Down);
    history->Finish();

    QCOMPARE(Shown("labelResult"), QStringLiteral("在流程“子流程”第 7 行失败：找不到文件"));
    const QString facts = Shown("labelFacts");
    for (const QString& fact :
         {QStringLiteral("流程：乙"), QStringLiteral("版本：版本2"), QStringLiteral("运行人：张三"),
          QStringLiteral("来自：编辑器"), QStringLiteral("参数：部门 = 财务，口令 = ••••")})
        QVERIFY2(facts.contains(fact), qPrintable(facts));
    QVERIFY(!facts.contains(QStringLiteral("扩展包")));
    QCOMPARE(Child<QPlainTextEdit>("textLog")->toPlainText(), QStringLiteral("这次运行没有写日志。"));
}

void tst_RunHistoryDialog::filters_data()
{
    QTest::addColumn<QString>("result");
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("found");
    QTest::newRow("failed") << "失败"
                            << ""
                            << ""
                            << "乙";
    QTest::newRow("succeeded") << "成功"
                               << ""
                               << ""
                               << "丙甲";
    QTest::newRow("version") << ""
                             << "版本2"
                             << ""
                             << "丙乙";
    QTest::newRow("log") << ""
                         << ""
                         << "订单"
                         << "甲";
    QTest::newRow("reason") << ""
                            << ""
                            << "找不到"
                            << "乙";
    QTest::newRow("blanks around it") << ""
                                      << ""
                                      << "  甲 "
                                      << "甲";
    QTest::newRow("two of them") << "成功"
                                 << "版本2"
                                 << ""
                                 << "丙";
}

void tst_RunHistoryDialog::filters()
{
    QFETCH(const QString, result);
    QFETCH(const QString, version);
    QFETCH(const QString, text);
    QFETCH(const QString, found);
    ThreeRuns();
    Open();

    const auto choose = [this](const char* box, const QString& choice) {
        auto* combo = Child<QComboBox>(box);
        if (!choice.isEmpty()) {
            QVERIFY2(combo->findText(choice) >= 0, qPrintable(choice));
            combo->setCurrentIndex(combo->findText(choice));
        }
    };
    choose("comboResult", result);
    choose("comboVersion", version);
    Write(text);

    QTRY_COMPARE(Processes().join(QString()), found);
    // The filter stays at what it was set to.
    QCOMPARE(Child<QComboBox>("comboVersion")->currentText(),
             version.isEmpty() ? QStringLiteral("全部版本") : version);
}

void tst_RunHistoryDialog::saysWhenNothingFits()
{
    ThreeRuns();
    Open();

    Write(QStringLiteral("没有这样的文字"));

    QTRY_COMPARE(Shown("labelResult"), QStringLiteral("没有符合条件的运行记录。"));
    QVERIFY(Shown("labelFacts").isEmpty());
    QVERIFY(Child<QPlainTextEdit>("textLog")->toPlainText().isEmpty());
    QVERIFY(!Child<QPushButton>("buttonRemove")->isEnabled());
}

void tst_RunHistoryDialog::followsRunsWhileItIsOpen()
{
    ThreeRuns();
    Open();
    QTest::keyClick(Child<QTreeView>("viewRuns"), Qt::Key_Down);

    Begin(QStringLiteral("丁"), QStringLiteral("版本3"));
    history->Finish();
    QTRY_COMPARE(Processes().size(), 4);
    const QAbstractItemModel* const model = Child<QTreeView>("viewRuns")->model();
    QCOMPARE(model->index(0, 2).data().toString(), QStringLiteral("正在运行"));
    QCOMPARE(Child<QTreeView>("viewRuns")->currentIndex().row(), 2); // what was selected stays selected

    End();
    QTRY_COMPARE(model->index(0, 2).data().toString(), QStringLiteral("成功"));
    QVERIFY(Child<QComboBox>("comboVersion")->findText(QStringLiteral("版本3")) > 0);
}

void tst_RunHistoryDialog::removesTheSelectedRun()
{
    ThreeRuns();
    Open();
    QTest::keyClick(Child<QTreeView>("viewRuns"), Qt::Key_Down);

    Press("buttonRemove");

    QTRY_COMPARE(Processes(), (QStringList{QStringLiteral("丙"), QStringLiteral("甲")}));
}

void tst_RunHistoryDialog::asksBeforeItRemovesAll_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<int>("left");
    QTest::newRow("yes") << "删除" << 0;
    QTest::newRow("no") << "取消" << 3;
}

void tst_RunHistoryDialog::asksBeforeItRemovesAll()
{
    QFETCH(const QString, answer);
    QFETCH(const int, left);
    ThreeRuns();
    Open();
    ModalDriver driver;
    driver.Then([&answer](QWidget* box) { QVERIFY(ModalDriver::Press(box, answer)); });

    Press("buttonRemoveAll");
    history->Finish();
    history->Finish();

    QTRY_COMPARE(Processes().size(), left);
    int others = 0;
    history->List({QStringLiteral("a2"), {}, {}, {}, 200}, this,
                  [&](const QVector<RpaRunRecord>& runs) { others = runs.size(); });
    history->Finish();
    QCOMPARE(others, 1);
}

void tst_RunHistoryDialog::switchesKeepingOff()
{
    Open();
    auto* keep = Child<QCheckBox>("checkKeep");
    QVERIFY(keep->isChecked());

    QTest::mouseClick(keep, Qt::LeftButton, {}, QPoint(8, keep->height() / 2));

    QVERIFY(!settings->GetKeepsRuns());
}

void tst_RunHistoryDialog::writesDurations_data()
{
    QTest::addColumn<qint64>("milliseconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << qint64(0) << "0 毫秒";
    QTest::newRow("below a second") << qint64(999) << "999 毫秒";
    QTest::newRow("a second") << qint64(1000) << "1.0 秒";
    QTest::newRow("tenths") << qint64(9940) << "9.9 秒";
    QTest::newRow("seconds") << qint64(10000) << "10 秒";
    QTest::newRow("below a minute") << qint64(59999) << "59 秒";
    QTest::newRow("minutes") << qint64(200000) << "3 分 20 秒";
    QTest::newRow("hours") << qint64(3900000) << "1 小时 5 分";
}

void tst_RunHistoryDialog::writesDurations()
{
    QFETCH(const qint64, milliseconds);
    QFETCH(const QString, text);
    RpaRunRecord run;
    run.duration = milliseconds;

    QCOMPARE(RunWords::Duration(run), QString());
    run.result = RpaRunResult::Stopped;
    QCOMPARE(RunWords::Duration(run), text);
}

RPA_TEST_MAIN(tst_RunHistoryDialog)
#include "tst_runhistorydialog.moc"
