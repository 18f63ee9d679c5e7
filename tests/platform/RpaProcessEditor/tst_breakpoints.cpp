// SPDX-License-Identifier: Apache-2.0

#include "AppBreakpoints_p.h"
#include "BreakpointFile_p.h"
#include "DebuggedApp_p.h"
#include "EditorFixture.h"
#include "ScriptedDebugSource.h"
#include "TestApp.h"

#include <RpaAppData/RpaAppRunTimeInfo.h>

#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>
#include <QUuid>

using namespace EditorFixture;

namespace
{
RpaDebugPlace At(const char* id)
{
    return {QString(), QLatin1String(id), 0};
}

RpaDebugPlace Line(int line)
{
    return {QStringLiteral("主流程"), QString(), line};
}

// "主流程 a 1; 主流程 c 3"
QString TextOf(const QVector<RpaBreakpoint>& points)
{
    QStringList texts;
    for (const RpaBreakpoint& point : points)
        texts << QStringLiteral("%1%2 %3")
                     .arg(point.enabled ? QString() : QStringLiteral("off "), point.place.statementId)
                     .arg(point.place.line);
    return texts.join(QStringLiteral("; ")).simplified();
}

RpaAppDataPtr KeptApp(const QString& id, const QVector<RpaStatement>& statements = SomeStatements())
{
    const RpaAppDataPtr app = App(statements);
    app->GetRunTimeInfo()->SetAppId(id);
    return app;
}
} // namespace

class tst_Breakpoints : public QObject
{
    Q_OBJECT

private slots:
    void init() { id = QUuid::createUuid().toString(); }

    void areToggledAndListedInTheOrderOfTheApp();
    void doNotChangeTheApp();
    void areKeptForTheNextStart();
    void ofAnotherAppAreOthers();
    void ofADamagedFileAreNone();
    void takeOverTheFlagsOfTheAppOnce();
    void followTheirStatements();
    void followTheirLines_data();
    void followTheirLines();
    void reachTheSessionOfTheAppThatIsShown();
    void ofAnotherAppWaitForTheEndOfTheRun();
    void goWithTheirEditor();

private:
    QString id;
};

void tst_Breakpoints::areToggledAndListedInTheOrderOfTheApp()
{
    const RpaAppDataPtr app = KeptApp(id);
    const auto points = AppBreakpoints::Of(app);
    QSignalSpy changed(points.data(), &AppBreakpoints::SigChanged);

    points->Toggle(At("e"));
    points->Toggle(At("a"));
    points->Toggle(At("c"));
    points->SetEnabled(At("c"), false);
    points->Toggle(At("e"));

    QCOMPARE(TextOf(points->Get()), QStringLiteral("a 1; off c 3"));
    QCOMPARE(points->Get().first().place.processName, QStringLiteral("主流程"));
    QCOMPARE(changed.size(), 5);
    QCOMPARE(AppBreakpoints::Of(app), points);
}

void tst_Breakpoints::doNotChangeTheApp()
{
    const RpaAppDataPtr app = KeptApp(id);
    const QByteArray before = app->ToJson();
    const auto points = AppBreakpoints::Of(app);

    points->Toggle(At("a"));

    QVERIFY(!app->GetModified());
    QCOMPARE(app->ToJson(), before);
}

void tst_Breakpoints::areKeptForTheNextStart()
{
    RpaBreakpoint given;
    given.place = At("d");
    given.enabled = false;
    given.condition = QStringLiteral("n > \"三\"");
    given.hits = 7;
    given.hitRule = RpaHitRule::Every;
    given.logText = QStringLiteral("n={n}");
    {
        const RpaAppDataPtr app = KeptApp(id);
        AppBreakpoints::Of(app)->Put(given);
    }
    BreakpointFile::Forget();

    const RpaAppDataPtr app = KeptApp(id);
    const auto kept = AppBreakpoints::Of(app);

    QCOMPARE(kept->Get().size(), 1);
    const RpaBreakpoint point = kept->Get().first();
    QCOMPARE(point.place.statementId, QStringLiteral("d"));
    QVERIFY(!point.enabled);
    QCOMPARE(point.condition, given.condition);
    QCOMPARE(point.hits, 7);
    QCOMPARE(point.hitRule, RpaHitRule::Every);
    QCOMPARE(point.logText, given.logText);
}

void tst_Breakpoints::ofAnotherAppAreOthers()
{
    const RpaAppDataPtr app = KeptApp(id);
    AppBreakpoints::Of(app)->Toggle(At("a"));

    const RpaAppDataPtr other = KeptApp(id + QStringLiteral("2"));
    QCOMPARE(TextOf(AppBreakpoints::Of(other)->Get()), QString());
}

void tst_Breakpoints::ofADamagedFileAreNone()
{
    {
        const RpaAppDataPtr app = KeptApp(id);
        AppBreakpoints::Of(app)->Toggle(At("a"));
    }
    BreakpointFile::Forget();
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) +
                      QStringLiteral("/breakpoints"));
    const QStringList names = folder.entryList(QDir::Files);
    QVERIFY(!names.isEmpty());
    for (const QString& name : names) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[{\"line\":");
    }

    const RpaAppDataPtr app = KeptApp(id);
    QCOMPARE(TextOf(AppBreakpoints::Of(app)->Get()), QString());
}

void tst_Breakpoints::takeOverTheFlagsOfTheAppOnce()
{
    QVector<RpaStatement> statements = SomeStatements();
    statements.first().breakpoint = true;
    {
        const RpaAppDataPtr app = KeptApp(id, statements);
        const auto points = AppBreakpoints::Of(app);
        QCOMPARE(TextOf(points->Get()), QStringLiteral("a 1"));
        points->Remove(At("a"));
    }

    const RpaAppDataPtr app = KeptApp(id, statements);
    QCOMPARE(TextOf(AppBreakpoints::Of(app)->Get()), QString());
}

void tst_Breakpoints::followTheirStatements()
{
    const RpaAppDataPtr app = KeptApp(id);
    const auto points = AppBreakpoints::Of(app);
    points->Toggle(At("c"));
    QSignalSpy changed(points.data(), &AppBreakpoints::SigChanged);

    Main(app)->Move(QStringLiteral("e"), QString(), 0);
    QVERIFY(changed.wait());
    QCOMPARE(TextOf(points->Get()), QStringLiteral("c 4"));

    const RpaStatement taken = Main(app)->Take(QStringLiteral("b"));
    QVERIFY(changed.wait());
    QCOMPARE(TextOf(points->Get()), QString());

    Main(app)->Insert(QString(), 0, {taken}); // undo
    QVERIFY(changed.wait());
    QCOMPARE(TextOf(points->Get()), QStringLiteral("c 2"));
}

void tst_Breakpoints::followTheirLines_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("by");
    QTest::addColumn<QString>("expected");
    QTest::newRow("lines before") << 1 << 2 << QStringLiteral("5; 7; 11");
    QTest::newRow("a line at the first") << 3 << 1 << QStringLiteral("4; 6; 10");
    QTest::newRow("a line behind the first") << 4 << 1 << QStringLiteral("3; 6; 10");
    QTest::newRow("lines behind all") << 10 << 5 << QStringLiteral("3; 5; 9");
    QTest::newRow("a line before goes") << 2 << -1 << QStringLiteral("2; 4; 8");
    QTest::newRow("its line goes") << 5 << -1 << QStringLiteral("3; 8");
    QTest::newRow("many go") << 3 << -6 << QStringLiteral("3");
}

void tst_Breakpoints::followTheirLines()
{
    QFETCH(int, first);
    QFETCH(int, by);
    QFETCH(QString, expected);
    const RpaAppDataPtr app = KeptApp(id);
    const auto points = AppBreakpoints::Of(app);
    for (const int line : {9, 3, 5})
        points->Toggle(Line(line));

    points->MoveLines(QStringLiteral("主流程"), first, by);
    points->MoveLines(QStringLiteral("子流程"), 1, 100);

    QStringList lines;
    const QVector<RpaBreakpoint> moved = points->Get();
    for (const RpaBreakpoint& point : moved)
        lines << QString::number(point.place.line);
    QCOMPARE(lines.join(QStringLiteral("; ")), expected);
}

void tst_Breakpoints::reachTheSessionOfTheAppThatIsShown()
{
    ScriptedDebugSource source;
    DebuggedApp debugged(&source);
    const RpaAppDataPtr app = KeptApp(id);
    const auto points = AppBreakpoints::Of(app);
    points->Toggle(At("a"));

    debugged.Use(points);
    QCOMPARE(TextOf(source.breakpoints), QStringLiteral("a 1"));
    QVERIFY(debugged.Is(app.data()));

    points->Toggle(At("d"));
    QCOMPARE(TextOf(source.breakpoints), QStringLiteral("a 1; d 4"));
}

void tst_Breakpoints::ofAnotherAppWaitForTheEndOfTheRun()
{
    ScriptedDebugSource source;
    DebuggedApp debugged(&source);
    const RpaAppDataPtr app = KeptApp(id);
    const auto points = AppBreakpoints::Of(app);
    points->Toggle(At("a"));
    debugged.Use(points);
    const RpaAppDataPtr other = KeptApp(id + QStringLiteral("2"));
    const auto otherPoints = AppBreakpoints::Of(other);
    otherPoints->Toggle(At("e"));

    source.Start();
    debugged.Use(otherPoints);
    QCOMPARE(TextOf(source.breakpoints), QStringLiteral("a 1"));
    QVERIFY(debugged.Is(app.data()));
    points->Toggle(At("d"));
    QCOMPARE(TextOf(source.breakpoints), QStringLiteral("a 1; d 4"));

    source.End();
    QCOMPARE(TextOf(source.breakpoints), QStringLiteral("e 5"));
    QVERIFY(debugged.Is(other.data()));
}

void tst_Breakpoints::goWithTheirEditor()
{
    ScriptedDebugSource source;
    DebuggedApp debugged(&source);
    const RpaAppDataPtr app = KeptApp(id);
    auto points = AppBreakpoints::Of(app);
    points->Toggle(At("a"));
    debugged.Use(points);

    points.reset();

    QVERIFY(source.breakpoints.isEmpty());
    QVERIFY(!debugged.Is(app.data()));
}

RPA_TEST_MAIN(tst_Breakpoints)
#include "tst_breakpoints.moc"
