// SPDX-License-Identifier: Apache-2.0

// A released app that works with web pages, in the browser of its run page.
#include "PageServer.h"
#include "RpaTemplateData.h"
#include "RpaTemplateFile.h"
#include "RunPage.h"
#include "TestApp.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaAppTool/IAppParamWidget.h>
#include <RpaAppTool/IAppTableWidget.h>
#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <WbBaseUI/WbTabBar.h>
#include <WbBrowserLite/IBrowserWidget.h>
#include <WbBrowserLite/WbBrowserLite.h>

#include <QFile>
#include <QLineEdit>
#include <QPointer>
#include <QSignalSpy>
#include <QTextBrowser>
#include <QtTest>

namespace
{
constexpr auto formHtml = R"html(<html><head><meta charset="utf-8"></head><body>
<form action="/done"><input name="name"><input name="phone"><button type="submit">提交</button></form>
</body></html>)html";

VersionServiceReleasedApp Released(int kind)
{
    VersionServiceReleasedApp app;
    app.app.kind = kind;
    app.app.id = QStringLiteral("app");
    app.state = 3;
    return app;
}

QByteArray Template(const QString& name)
{
    QFile file(QStringLiteral(":/templates/") + name);
    RpaTemplateData record;
    if (file.open(QIODevice::ReadOnly))
        RpaTemplateFile::Decode(file.readAll(), record);
    return record.GetAppData();
}

QString LogText()
{
    QString text;
    for (const RpaLogLine& line :
         RpaEngineModule::Instance()->GetLogManager()->GetLogDataSource()->GetLines())
        text += line.text + QLatin1Char('\n');
    return text;
}
} // namespace

class tst_RunBrowser : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { WbBrowserLite::Instance()->SetBrowserFactory(nullptr); }

    void fillsAWebFormInTheBrowserOfItsPage();
    void theBrowserGoesWithTheApp();
    void theLogOfTheAppBeforeIsNotShown();
    void theTableHasTheRoomThatTheFieldsLeave();
    void oneFieldTakesTheRoomOfOneField();
    void anAppWithoutWebPagesHasNoBrowser();
    void withoutABuiltBrowserTheInstructionsRemain();

private:
    IBrowserWidget* Browser() const { return page->findChild<IBrowserWidget*>(); }
    WbTabBar* Tabs() const { return page->findChild<WbTabBar*>(QStringLiteral("tabsAside")); }

    std::unique_ptr<RunPage> page;
};

void tst_RunBrowser::init()
{
    page = std::make_unique<RunPage>();
    page->resize(1280, 672);
    page->show();
}

void tst_RunBrowser::fillsAWebFormInTheBrowserOfItsPage()
{
    PageServer server;
    server.Put(QStringLiteral("/form"), formHtml);
    QVERIFY(page->ShowApp(Released(0), Template(QStringLiteral("visual/网页表单填写"))));
    QVERIFY(Browser());
    QVERIFY(!Browser()->isVisible()); // the instructions come first
    QVERIFY(page->findChild<IAppParamWidget*>()->SetParam(QStringLiteral("网址"),
                                                          server.Url(QStringLiteral("/form"))));
    auto* runner = page->findChild<AppRunner*>();
    QSignalSpy started(runner, &AppRunner::SigStarted);
    QSignalSpy ended(runner, &AppRunner::SigEnded);

    runner->Run(QStringLiteral("主流程"));

    QTRY_COMPARE(started.size(), 1);
    QVERIFY(Browser()->isVisible());
    QVERIFY(Browser()->width() >= 480);
    QTRY_COMPARE_WITH_TIMEOUT(ended.size(), 1, 60000);
    const auto* table = page->findChild<IAppTableWidget*>();
    QVERIFY2(table->GetCell(0, 2).toBool() && table->GetCell(1, 2).toBool(), qPrintable(LogText()));
    const QString asked = server.GetAsked().join(QLatin1Char('\n'));
    QVERIFY2(asked.contains(QLatin1String("phone=13800000001")), qPrintable(asked));
    QVERIFY2(asked.contains(QLatin1String("phone=13800000002")), qPrintable(asked));

    QTest::mouseClick(Tabs(), Qt::LeftButton, {}, Tabs()->tabRect(0).center());
    QVERIFY(page->findChild<QTextBrowser*>(QStringLiteral("viewManual"))->isVisible());
}

void tst_RunBrowser::theBrowserGoesWithTheApp()
{
    QVERIFY(page->ShowApp(Released(0), Template(QStringLiteral("visual/网页表单填写"))));
    const QPointer<IBrowserWidget> first = Browser();

    QVERIFY(page->ShowApp(Released(0), Template(QStringLiteral("visual/网页表单填写"))));
    QVERIFY(!first);
    QVERIFY(Browser());

    page->Close();
    QVERIFY(!Browser());
    QVERIFY(!WbBrowserLite::Instance()->GetBrowserWidget());
}

void tst_RunBrowser::theLogOfTheAppBeforeIsNotShown()
{
    QVERIFY(page->ShowApp(Released(0), Template(QStringLiteral("visual/CSV 分组汇总"))));
    RpaEngineModule::Instance()->GetLogManager()->Append(RpaLogLevel::Info, QStringLiteral("先前"));
    QTRY_VERIFY(LogText().contains(QStringLiteral("先前")));

    QVERIFY(page->ShowApp(Released(0), Template(QStringLiteral("visual/文件批量改名"))));

    QCOMPARE(LogText(), QString());
}

void tst_RunBrowser::theTableHasTheRoomThatTheFieldsLeave()
{
    QVERIFY(page->ShowApp(Released(0), Template(QStringLiteral("visual/网页表单填写"))));

    const auto* fields = page->findChild<IAppParamWidget*>();
    const auto* table = page->findChild<IAppTableWidget*>();
    QTRY_COMPARE(fields->height(), fields->sizeHint().height());
    const QWidget* lastField = fields->findChildren<QLineEdit*>().constLast();
    const auto lastPlace = [&] { return QRect(lastField->mapTo(fields, QPoint(0, 0)), lastField->size()); };
    QTRY_VERIFY2(fields->rect().contains(lastPlace()), qPrintable(QStringLiteral("%1 %2 in %3")
                                                                      .arg(lastPlace().top())
                                                                      .arg(lastPlace().bottom())
                                                                      .arg(fields->height())));
    const int below = fields->mapTo(page.get(), QPoint(0, fields->height())).y();
    QTRY_VERIFY(table->mapTo(page.get(), QPoint(0, 0)).y() - below <= 24);
    QVERIFY(table->height() > fields->height());
}

void tst_RunBrowser::oneFieldTakesTheRoomOfOneField()
{
    RpaAppData app;
    app.InitDefault();
    RpaParamItem rate;
    rate.name = QStringLiteral("时薪");
    app.GetUIDataManager()->GetUIData(0)->GetParamData()->SetContent({rate});
    RpaTableColumn column;
    column.name = QStringLiteral("姓名");
    app.GetUIDataManager()->GetUIData(0)->GetTableData()->InsertColumn(-1, column);

    QVERIFY(page->ShowApp(Released(0), app.ToJson()));

    const auto* fields = page->findChild<IAppParamWidget*>();
    const auto* table = page->findChild<IAppTableWidget*>();
    const auto edgeOf = [this](const QWidget* part, int y) { return part->mapTo(page.get(), {0, y}).y(); };
    QTRY_VERIFY(edgeOf(table, 0) > edgeOf(fields, 0));
    QTRY_VERIFY(edgeOf(table, 0) - edgeOf(fields, fields->sizeHint().height()) <= 8);
}

void tst_RunBrowser::anAppWithoutWebPagesHasNoBrowser()
{
    QVERIFY(page->ShowApp(Released(0), Template(QStringLiteral("visual/CSV 分组汇总"))));
    QVERIFY(!Browser());
    QVERIFY(!Tabs()->isVisible());

    QVERIFY(page->ShowApp(Released(1), Template(QStringLiteral("program/HTTP 数据抓取"))));
    QVERIFY(!Browser());
}

void tst_RunBrowser::withoutABuiltBrowserTheInstructionsRemain()
{
    WbBrowserLite::Instance()->SetBrowserFactory([](QWidget*) -> IBrowserWidget* { return nullptr; });

    QVERIFY(page->ShowApp(Released(0), Template(QStringLiteral("visual/网页表单填写"))));

    QVERIFY(!Browser());
    QVERIFY(!Tabs()->isVisible());
    QVERIFY(page->findChild<QTextBrowser*>(QStringLiteral("viewManual"))->isVisible());
}

RPA_TEST_MAIN(tst_RunBrowser)

#include "tst_runbrowser.moc"
