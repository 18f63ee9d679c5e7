// SPDX-License-Identifier: Apache-2.0

#include "RunLogSource.h"
#include "TestFolder.h"

#include <RpaEngineCore/IProcessLifeCycle.h>
#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>
#include <RpaRunHistory/RpaRunHistory.h>

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

class tst_RunHistory : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void keepsARunFromStartToEnd();
    void keepsWhyARunFailedAndWhere();
    void keepsThatARunWasStopped();
    void takesEachLineOfTheRunOnce();
    void countsLinesThatAFullLogDropped();
    void countsLinesThatTheDiskCannotTakeInTime();
    void goesOnWhenTheLogBeginsAnew();
    void writesNoPasswordAnywhere();
    void keepsNothingWhileItIsOff();
    void keepsTheRunThatWasUnderWayWhenItWasSwitchedOff();
    void tellsUsersRunsFromTheAuthors();
    void callsARunLostWhenTheWorkstationEnds();
    void answersNobodyWhoIsGone();
    void saysOnceThatTheDiskRefuses();
    void tellsOfEveryChange();

private:
    using Call = std::function<void(IProcessLifeCycle*)>;
    static void Tell(const Call& call) { RpaProcessLifeCycleManager::Instance()->ForEach(call); }
    static void Begin(const QString& appId = QStringLiteral("a1"),
                      const QString& environment = QStringLiteral("develop"),
                      const QVector<RpaRunParameter>& parameters = {})
    {
        const RpaRunStart start{appId, environment, QStringLiteral("主流程"), parameters};
        Tell([&](IProcessLifeCycle* listener) { listener->RunStarted(start); });
    }
    static void End()
    {
        Tell([](IProcessLifeCycle* listener) { listener->ProcessFinish(QStringLiteral("主流程")); });
    }
    static void Fail(const QString& error, const QString& trace)
    {
        Tell([&](IProcessLifeCycle* listener) {
            listener->ProcessFailed(QStringLiteral("主流程"), error, trace);
        });
    }
    void Restart();
    QVector<RpaRunRecord> List(const QString& appId = QStringLiteral("a1"));
    RpaRunRecord Newest(QStringList* log = nullptr);

    std::unique_ptr<TestFolder> folder;
    std::unique_ptr<RunLogSource> source;
    std::unique_ptr<IRpaDebugger> debugger;
    std::unique_ptr<RpaRunHistory> history;
};

void tst_RunHistory::init()
{
    folder = std::make_unique<TestFolder>();
    source = std::make_unique<RunLogSource>();
    debugger = std::make_unique<IRpaDebugger>();
    Restart();
}

void tst_RunHistory::cleanup()
{
    history.reset();
}

void tst_RunHistory::Restart()
{
    history = std::make_unique<RpaRunHistory>();
    history->Start(folder->path());
    history->Follow(source.get(), debugger.get());
}

QVector<RpaRunRecord> tst_RunHistory::List(const QString& appId)
{
    QVector<RpaRunRecord> found;
    history->List({appId, {}, {}, {}, 200}, this, [&](const QVector<RpaRunRecord>& runs) { found = runs; });
    history->Finish();
    return found;
}

RpaRunRecord tst_RunHistory::Newest(QStringList* log)
{
    RpaRunRecord newest;
    history->Read(List().value(0).id, this,
                  [&](const RpaRunRecord& record, const QVector<RpaLogLine>& lines) {
                      newest = record;
                      for (const RpaLogLine& line : lines)
                          if (log)
                              log->append(line.text);
                  });
    history->Finish();
    return newest;
}

void tst_RunHistory::keepsARunFromStartToEnd()
{
    history->SetContext([](const QString& appId) {
        RpaRunRecord run;
        run.appName = QStringLiteral("对账") + appId;
        run.versionId = QStringLiteral("v7");
        run.versionName = QStringLiteral("版本3");
        run.revision = 4;
        run.account = QStringLiteral("zhang");
        run.packages = QStringList{QStringLiteral("openpyxl 3.1")};
        return run;
    });
    const QDateTime before = QDateTime::currentDateTimeUtc();
    Begin(QStringLiteral("a1"), QStringLiteral("develop"),
          {{QStringLiteral("部门"), QStringLiteral("财务"), false}});
    QCOMPARE(List().value(0).result, RpaRunResult::Running);
    source->Write(QStringLiteral("读取订单"), QStringLiteral("s3"));
    source->Announce();
    End();

    QStringList log;
    const RpaRunRecord run = Newest(&log);
    QCOMPARE(run.result, RpaRunResult::Succeeded);
    QCOMPARE(run.appId, QStringLiteral("a1"));
    QCOMPARE(run.appName, QStringLiteral("对账a1"));
    QCOMPARE(run.versionId, QStringLiteral("v7"));
    QCOMPARE(run.versionName, QStringLiteral("版本3"));
    QCOMPARE(run.revision, 4);
    QCOMPARE(run.account, QStringLiteral("zhang"));
    QCOMPARE(run.packages, QStringList{QStringLiteral("openpyxl 3.1")});
    QCOMPARE(run.processName, QStringLiteral("主流程"));
    QCOMPARE(run.parameters.size(), 1);
    QCOMPARE(run.parameters.first().text, QStringLiteral("财务"));
    QVERIFY(run.started >= before && run.started <= QDateTime::currentDateTimeUtc());
    QVERIFY(run.duration >= 0 && run.duration < 60000);
    QCOMPARE(log, QStringList{QStringLiteral("读取订单")});
    QVERIFY(run.reason.isEmpty());
}

void tst_RunHistory::keepsWhyARunFailedAndWhere()
{
    Begin();
    emit debugger->SigCheckNode({}); // marks of the check before are taken away
    Fail(QStringLiteral("找不到文件"), QStringLiteral("Traceback"));
    emit debugger->SigCheckNode({{QStringLiteral("子流程"), QStringLiteral("s9"),
                                  QStringLiteral("run-failed"), QStringLiteral("找不到文件"), QString(), 0}});
    End();

    const RpaRunRecord run = Newest();
    QCOMPARE(run.result, RpaRunResult::Failed);
    QCOMPARE(run.reason, QStringLiteral("找不到文件"));
    QCOMPARE(run.trace, QStringLiteral("Traceback"));
    QCOMPARE(run.failedProcess, QStringLiteral("子流程"));
    QCOMPARE(run.failedStatement, QStringLiteral("s9"));

    // The next one inherits nothing; what a check finds is no failure of it.
    Begin();
    emit debugger->SigCheckNode({{QStringLiteral("主流程"), QStringLiteral("s1"),
                                  QStringLiteral("undefined-variable"), QString(), QString(), 0}});
    End();
    QCOMPARE(Newest().result, RpaRunResult::Succeeded);
    QVERIFY(Newest().reason.isEmpty());
    QVERIFY(Newest().failedStatement.isEmpty());
}

void tst_RunHistory::keepsThatARunWasStopped()
{
    Begin();
    Tell([](IProcessLifeCycle* listener) { listener->ProcessTerminate(QStringLiteral("主流程")); });
    End();

    QCOMPARE(Newest().result, RpaRunResult::Stopped);
}

void tst_RunHistory::takesEachLineOfTheRunOnce()
{
    source->Write(QStringLiteral("以前"));
    source->Announce();
    source->Write(QStringLiteral("检查"));
    Begin();
    source->Write(QStringLiteral("一"));
    source->Announce(); // with the one of before
    source->Write(QStringLiteral("二"));
    source->Write(QStringLiteral("三"));
    End();
    source->Announce(); // only now
    source->Write(QStringLiteral("以后"));
    source->Announce();

    QStringList log;
    Newest(&log);
    QCOMPARE(log, (QStringList{QStringLiteral("一"), QStringLiteral("二"), QStringLiteral("三")}));
}

void tst_RunHistory::countsLinesThatAFullLogDropped()
{
    Begin();
    for (int i = 0; i < 10; ++i)
        source->Write(QString::number(i));
    source->DropOldest(4);
    End();

    QStringList log;
    QCOMPARE(Newest(&log).missingLines, 4);
    QCOMPARE(log.size(), 6);
}

void tst_RunHistory::countsLinesThatTheDiskCannotTakeInTime()
{
    Begin();
    for (int i = 0; i < 20001; ++i)
        source->Write(QString::number(i));
    source->Announce();
    source->Write(QStringLiteral("最后"));
    End();

    QStringList log;
    QCOMPARE(Newest(&log).missingLines, 20001);
    QCOMPARE(log, QStringList{QStringLiteral("最后")});

    // What was taken makes room for more.
    for (int run = 0; run < 2; ++run) {
        Begin();
        for (int i = 0; i < 11000; ++i)
            source->Write(QString::number(i));
        source->Announce();
        End();
        QCOMPARE(Newest().missingLines, 0);
    }
}

void tst_RunHistory::goesOnWhenTheLogBeginsAnew()
{
    for (int i = 0; i < 5; ++i)
        source->Write(QString::number(i));
    Begin();
    source->Restart();
    source->Write(QStringLiteral("一"));
    End();

    QStringList log;
    Newest(&log);
    QCOMPARE(log, QStringList{QStringLiteral("一")});
}

void tst_RunHistory::writesNoPasswordAnywhere()
{
    const QString secret = QStringLiteral("geheim-7431");
    Begin(QStringLiteral("a1"), QStringLiteral("develop"),
          {{QStringLiteral("口令"), secret, true},
           {QStringLiteral("前缀"), QStringLiteral("geheim"), true},
           {QStringLiteral("短"), QStringLiteral("abc"), true},
           {QStringLiteral("部门"), QStringLiteral("财务"), false}});
    source->Write(QStringLiteral("登录 %1 abc").arg(secret));
    source->Announce();
    Fail(QStringLiteral("密码 %1 不对").arg(secret), QStringLiteral("login('%1')").arg(secret));
    End();

    QStringList log;
    const RpaRunRecord run = Newest(&log);
    QCOMPARE(log, QStringList{QStringLiteral("登录 •••• abc")});
    QCOMPARE(run.reason, QStringLiteral("密码 •••• 不对"));
    QCOMPARE(run.trace, QStringLiteral("login('••••')"));
    QStringList values;
    for (const RpaRunValue& value : run.parameters)
        values.append(value.text);
    QCOMPARE(values, (QStringList{QStringLiteral("••••"), QStringLiteral("••••"), QStringLiteral("••••"),
                                  QStringLiteral("财务")}));
    history.reset();
    for (const QString& name : QDir(folder->path()).entryList(QDir::Files)) {
        QFile file(folder->filePath(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY2(!file.readAll().contains("geheim"), qPrintable(name));
    }
}

void tst_RunHistory::keepsNothingWhileItIsOff()
{
    history->SetKeeping(false);
    Begin();
    source->Write(QStringLiteral("一"));
    source->Announce();
    Fail(QStringLiteral("原因"), QString());
    End();
    QVERIFY(List().isEmpty());

    history->SetKeeping(true);
    Begin();
    End();
    QCOMPARE(List().size(), 1);
    QCOMPARE(Newest().result, RpaRunResult::Succeeded);
}

void tst_RunHistory::keepsTheRunThatWasUnderWayWhenItWasSwitchedOff()
{
    Begin();
    history->SetKeeping(false);
    End();

    QCOMPARE(Newest().result, RpaRunResult::Succeeded);
}

void tst_RunHistory::tellsUsersRunsFromTheAuthors()
{
    const QPair<const char*, RpaRunOrigin> kinds[] = {
        {"develop", RpaRunOrigin::Editor}, {"gray", RpaRunOrigin::Page}, {"online", RpaRunOrigin::Page}};
    for (const auto& [environment, origin] : kinds) {
        Begin(QStringLiteral("a1"), QLatin1String(environment));
        End();
        QCOMPARE(Newest().origin, origin);
    }
}

void tst_RunHistory::callsARunLostWhenTheWorkstationEnds()
{
    Begin();
    source->Write(QStringLiteral("一"));
    source->Announce();
    Restart();

    QStringList log;
    QCOMPARE(Newest(&log).result, RpaRunResult::Lost);
    QCOMPARE(log, QStringList{QStringLiteral("一")});
}

void tst_RunHistory::answersNobodyWhoIsGone()
{
    bool answered = false;
    auto asking = std::make_unique<QObject>();
    history->List({QStringLiteral("a1"), {}, {}, {}, 200}, asking.get(),
                  [&](const QVector<RpaRunRecord>&) { answered = true; });
    history->Read(1, asking.get(), [&](const RpaRunRecord&, const QVector<RpaLogLine>&) { answered = true; });
    asking.reset();

    history->Finish();

    QVERIFY(!answered);
}

void tst_RunHistory::saysOnceThatTheDiskRefuses()
{
    QFile file(folder->filePath(QStringLiteral("taken")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    history = std::make_unique<RpaRunHistory>();
    QSignalSpy failed(history.get(), &RpaRunHistory::SigFailed);
    history->Start(folder->filePath(QStringLiteral("taken/inside")));
    history->Follow(source.get(), debugger.get());
    for (int i = 0; i < 3; ++i) {
        Begin();
        source->Write(QStringLiteral("一"));
        source->Announce();
        End();
    }

    QVERIFY(List().isEmpty());

    QCOMPARE(failed.size(), 1);
    QVERIFY(failed.first().first().toString().contains(QStringLiteral("无法创建文件夹")));
}

void tst_RunHistory::tellsOfEveryChange()
{
    QSignalSpy changed(history.get(), &RpaRunHistory::SigChanged);
    const auto apps = [&changed, this] {
        history->Finish();
        QStringList names;
        for (const QVariantList& arguments : qAsConst(changed))
            names.append(arguments.first().toString());
        changed.clear();
        return names;
    };
    Begin(QStringLiteral("a2"));
    End();
    QCOMPARE(apps(), (QStringList{QStringLiteral("a2"), QStringLiteral("a2")}));
    const qint64 id = List(QStringLiteral("a2")).first().id;

    history->Remove(id);
    QCOMPARE(apps(), QStringList{QStringLiteral("a2")});
    QVERIFY(List(QStringLiteral("a2")).isEmpty());

    history->RemoveAll(QStringLiteral("a3"));
    QCOMPARE(apps(), QStringList{QStringLiteral("a3")});
}

QTEST_GUILESS_MAIN(tst_RunHistory)
#include "tst_runhistory.moc"
