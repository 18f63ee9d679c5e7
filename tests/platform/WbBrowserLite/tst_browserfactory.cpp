// SPDX-License-Identifier: Apache-2.0

#include "EmptyBrowser.h"

#include <WbBrowserLite/WbBrowserLite.h>

#include <QtTest>

#include <memory>

// Who makes browsers, and in which surroundings.
class BrowserFactoryTest : public QObject
{
    Q_OBJECT

private slots:
    void namesAnEngineWhereItMakesBrowsers()
    {
        const std::unique_ptr<QWidget> browser(WbBrowserLite::Instance()->CreateBrowserWidget(nullptr));

        QCOMPARE(!WbBrowserLite::GetEngineName().isEmpty(), browser != nullptr);
    }

    void makesTheBrowserThatAWorkstationBrings()
    {
        QWidget parent;
        WbBrowserLite::Instance()->SetBrowserFactory([](QWidget* pane) { return new EmptyBrowser(pane); });

        const IBrowserWidget* browser = WbBrowserLite::Instance()->CreateBrowserWidget(&parent);
        WbBrowserLite::Instance()->SetBrowserFactory(nullptr);

        QVERIFY(browser);
        QCOMPARE(browser->parentWidget(), &parent);
    }

    void knowsTheNewestBrowserWhileItLives()
    {
        auto* browsers = WbBrowserLite::Instance();
        QVector<const IBrowserWidget*> created;
        connect(browsers, &WbBrowserLite::SigBrowserCreated, this,
                [&created](const IBrowserWidget* browser) { created << browser; });
        browsers->SetBrowserFactory([](QWidget* pane) { return new EmptyBrowser(pane); });
        const std::unique_ptr<IBrowserWidget> first(browsers->CreateBrowserWidget(nullptr));
        std::unique_ptr<IBrowserWidget> second(browsers->CreateBrowserWidget(nullptr));
        browsers->SetBrowserFactory([](QWidget*) { return nullptr; });
        QVERIFY(!browsers->CreateBrowserWidget(nullptr));
        browsers->SetBrowserFactory(nullptr);

        browsers->disconnect(this);

        QCOMPARE(created, (QVector<const IBrowserWidget*>{first.get(), second.get()}));
        QCOMPARE(browsers->GetBrowserWidget(), second.get());
        second.reset();
        QVERIFY(!browsers->GetBrowserWidget());
    }

    void takesDebuggersOutOfTheEnvironment()
    {
        qputenv("QTWEBENGINE_REMOTE_DEBUGGING", "9222");
        qputenv("QTWEBENGINE_CHROMIUM_FLAGS", "--mute-audio --remote-debugging-port=9222 --no-zygote");
        QTest::ignoreMessage(QtWarningMsg, "Attribute Qt::AA_ShareOpenGLContexts must be set before "
                                           "QCoreApplication is created."); // it is called before, else

        WbBrowserLite::PrepareApplication();

        QVERIFY(!qEnvironmentVariableIsSet("QTWEBENGINE_REMOTE_DEBUGGING"));
        QCOMPARE(qgetenv("QTWEBENGINE_CHROMIUM_FLAGS"), QByteArray("--mute-audio --no-zygote"));
        qunsetenv("QTWEBENGINE_CHROMIUM_FLAGS");
    }
};

QTEST_MAIN(BrowserFactoryTest)
#include "tst_browserfactory.moc"
