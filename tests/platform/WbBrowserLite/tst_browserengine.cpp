// SPDX-License-Identifier: Apache-2.0

#include "BrowserFixture.h"
#include "TestApp.h"

#include <QWebEngineView>

#include <csignal>

class BrowserEngineTest : public QObject
{
    Q_OBJECT

private slots:
    void opensAPage()
    {
        BrowserFixture run;
        run.server.Put(QStringLiteral("/a"), "<title>A</title>");
        Told told;

        run.Engine()->Open(run.server.Url(QStringLiteral("/a")), told.Answer());

        QTRY_COMPARE(told.times, 1);
        QVERIFY(told.ok);
    }

    void aPageTakesThePlaceOfOneThatStillLoads()
    {
        BrowserFixture run;
        run.server.Hold(QStringLiteral("/slow"));
        run.server.Put(QStringLiteral("/a"), "<title>A</title>");
        Told slow;
        run.Engine()->Open(run.server.Url(QStringLiteral("/slow")), slow.Answer());
        QTRY_VERIFY(run.server.GetAsked().contains(QStringLiteral("/slow")));

        Told told;
        run.Engine()->Open(run.server.Url(QStringLiteral("/a")), told.Answer());

        QCOMPARE(slow.times, 1);
        QVERIFY(!slow.ok);
        QTRY_COMPARE(told.times, 1);
        QVERIFY(told.ok);
        QCOMPARE(run.Title(), QStringLiteral("A"));
        QCOMPARE(slow.times, 1);
    }

    void givesWhatAScriptGave_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QVariant>("value");
        QTest::newRow("number") << QStringLiteral("1 + 1") << QVariant(2);
        QTest::newRow("text") << QStringLiteral("'中文\\u2028\"'")
                              << QVariant(QStringLiteral("中文") + QChar(0x2028) + QLatin1Char('"'));
        QTest::newRow("list") << QStringLiteral("[1, 'b', true]")
                              << QVariant(QVariantList{1, QStringLiteral("b"), true});
        QTest::newRow("last of several") << QStringLiteral("const a = 3; a * 2") << QVariant(6);
        QTest::newRow("placeholder") << QStringLiteral("'%1 %2'") << QVariant(QStringLiteral("%1 %2"));
    }
    void givesWhatAScriptGave()
    {
        QFETCH(QString, script);
        QFETCH(QVariant, value);
        BrowserFixture run;
        run.server.Put(QStringLiteral("/a"), "<title>A</title>", 200,
                       "Content-Security-Policy: default-src 'none'\r\n");
        QVERIFY(run.Open(QStringLiteral("/a")));

        QCOMPARE(run.Run(script), value);
    }

    void tellsWhatAScriptThrew_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("part");
        QTest::newRow("thrown") << QStringLiteral("throw new Error('why')") << QStringLiteral("why");
        QTest::newRow("does not parse") << QStringLiteral("1 +") << QStringLiteral("SyntaxError");
        QTest::newRow("unknown name") << QStringLiteral("nobody()") << QStringLiteral("nobody");
    }
    void tellsWhatAScriptThrew()
    {
        QFETCH(QString, script);
        QFETCH(QString, part);
        BrowserFixture run;
        run.server.Put(QStringLiteral("/a"), "<title>A</title>");
        QVERIFY(run.Open(QStringLiteral("/a")));
        Told told;

        run.Engine()->RunScript(script, told.Answer());

        QTRY_COMPARE(told.times, 1);
        QVERIFY(!told.ok);
        QVERIFY2(told.value.toString().contains(part), qPrintable(told.value.toString()));
    }

    void aScriptAndThePageDoNotSeeEachOther()
    {
        BrowserFixture run;
        run.server.Put(QStringLiteral("/a"),
                       "<title>A</title><script>window.secret = 1; setTimeout(function look() {"
                       "if (window.mine) document.title = 'seen'; else setTimeout(look, 1); }, 1);"
                       "document.querySelector = () => null;</script><p id=p>x</p>");
        QVERIFY(run.Open(QStringLiteral("/a")));

        QCOMPARE(run.Run(QStringLiteral("window.mine = 1; typeof window.secret")).toString(),
                 QStringLiteral("undefined"));
        QCOMPARE(run.Run(QStringLiteral("document.querySelector('#p').innerText")).toString(),
                 QStringLiteral("x"));
        QCOMPARE(run.Title(), QStringLiteral("A"));
    }

    void aScriptWithoutAPageIsRefused()
    {
        BrowserFixture run;
        Told told;

        run.Engine()->RunScript(QStringLiteral("1"), told.Answer());

        QCOMPARE(told.times, 1);
        QVERIFY(!told.ok);
    }

    void aScriptWaitsForThePageThatLoads()
    {
        BrowserFixture run;
        run.server.Put(QStringLiteral("/a"), "<title>A</title>");
        run.server.Put(QStringLiteral("/b"), "<title>B</title>");
        QVERIFY(run.Open(QStringLiteral("/a")));

        Told told;
        Told opened;
        run.Engine()->Open(run.server.Url(QStringLiteral("/b")), opened.Answer());
        run.Engine()->RunScript(QStringLiteral("document.title"), told.Answer());

        QTRY_COMPARE(told.times, 1);
        QCOMPARE(told.value.toString(), QStringLiteral("B"));
        QCOMPARE(opened.times, 1);
    }

    void everyCallIsAnsweredWhenThePageGoesAway_data()
    {
        QTest::addColumn<bool>("destroyed");
        QTest::newRow("browser reset") << false;
        QTest::newRow("browser destroyed") << true;
    }
    void everyCallIsAnsweredWhenThePageGoesAway()
    {
        QFETCH(bool, destroyed);
        BrowserFixture run;
        run.server.Put(QStringLiteral("/a"), "<title>A</title>");
        run.server.Hold(QStringLiteral("/slow"));
        QVERIFY(run.Open(QStringLiteral("/a")));
        Told endless;
        Told waiting;
        Told opening;
        run.Engine()->RunScript(QStringLiteral("while (true) {}"), endless.Answer());
        run.Engine()->Open(run.server.Url(QStringLiteral("/slow")), opening.Answer());
        run.Engine()->RunScript(QStringLiteral("1"), waiting.Answer());
        QCOMPARE(endless.times + waiting.times + opening.times, 0);

        if (destroyed)
            run.window.reset();
        else
            run.browser->Reset();

        for (const Told* told : {&endless, &waiting, &opening}) {
            QCOMPARE(told->times, 1);
            QVERIFY(!told->ok);
            QVERIFY(!told->value.toString().isEmpty());
        }
    }

    void aPageWhoseProcessDiesIsReported()
    {
        BrowserFixture run;
        run.server.Put(QStringLiteral("/a"), "<title>A</title>");
        QVERIFY(run.Open(QStringLiteral("/a")));
        Told told;
        run.Engine()->RunScript(QStringLiteral("while (true) {}"), told.Answer());

        const qint64 process = run.Find<QWebEngineView>("browserView")->page()->renderProcessPid();
        QVERIFY(process > 0);
        ::kill(pid_t(process), SIGKILL);

        QTRY_COMPARE(told.times, 1);
        QVERIFY(!told.ok);
        QTRY_VERIFY(run.Find("browserNotice")->isVisible());
        run.Press("browserRetry");
        QTRY_COMPARE(run.Title(), QStringLiteral("A"));
    }
};

RPA_TEST_MAIN(BrowserEngineTest)
#include "tst_browserengine.moc"
