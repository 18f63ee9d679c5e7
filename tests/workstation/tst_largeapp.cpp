// SPDX-License-Identifier: Apache-2.0

#include "DraftController.h"
#include "EditorPage.h"
#include "FaultServer.h"
#include "TestApp.h"
#include "TestFolder.h"
#include "ToastWatcher.h"
#include "VersionReplies.h"

#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaServiceClient/VersionServiceSettings.h>
#include <WbBaseUI/UIMain.h>
#include <WbCore/WbGlobalData.h>
#include <WbFoundation/ContentLimits.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QTextEdit>
#include <QtTest>

namespace
{
constexpr int room = 100000; // more than an editor adds to what it loads by itself

// An app that is nearly as large as one may be, by what a newer workstation wrote into it.
QByteArray NearlyTooLarge()
{
    QByteArray members = R"("extendInfo":{"manual":"text"})";
    int left = ContentLimits::totalBytes - VersionReplies::App(members).size() - room;
    for (int part = 1; left > 0; ++part) {
        members += ",\"kept" + QByteArray::number(part) + "\":\"";
        const int bytes = std::min(left, ContentLimits::textBytes - 100);
        members += QByteArray(bytes, 'x') + '"';
        left -= bytes;
    }
    return VersionReplies::App(members);
}

// No line is longer than one may be.
QString Lines(int length)
{
    constexpr int line = 1000;
    return (QString(line - 1, QLatin1Char('b')) + QLatin1Char('\n')).repeated(length / line);
}

FaultServer::Reply Answer(const FaultServer::Request& request, const QByteArray& content)
{
    if (request.method != "GET")
        return FaultServer::Refusal(500, "broken", QStringLiteral("不应保存"));
    if (request.path.endsWith("/data"))
        return FaultServer::Data(content, 1);
    VersionReplies::Version version;
    version.appId = QStringLiteral("x");
    return VersionReplies::List({version});
}
} // namespace

// The author of an app that outgrows what can be kept hears of it while editing, not first at the save.
class LargeAppTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void tellsWhoPastesTooMuch();

private:
    QTextEdit* Instructions() const { return page->findChild<QTextEdit*>(QStringLiteral("richTextView")); }
    void Paste(const QString& text);

    TestFolder folder;
    FaultServer server;
    QWidget window;
    std::unique_ptr<DraftController> drafts;
    EditorPage* page = nullptr;
};

void LargeAppTest::init()
{
    QLoggingCategory::setFilterRules(QStringLiteral("rpa.drafts.warning=false")); // one per write
    const QByteArray content = NearlyTooLarge();
    server.SetScript([content](const FaultServer::Request& request) { return Answer(request, content); });
    VersionServiceSettings::Instance()->SetBaseUrl(server.GetUrl());
    VersionServiceSettings::Instance()->SetToken("token");
    RpaGlobalDataManager::Instance()->SetApiVersion(QStringLiteral("1.0.0"));
    WbGlobalData::Instance()->SetPin(QStringLiteral("author"));
    window.resize(1280, 720);
    UIMain::Instance()->SetMainWidget(&window);
    page = new EditorPage(&window);
    page->resize(window.size());
    drafts = std::make_unique<DraftController>(RpaEditorLogic::Instance()->GetSaveLedger(), &window);
    drafts->Start(folder.path());
    window.show();
}

void LargeAppTest::cleanup()
{
    page->Discard();
    RpaEditorLogic::Instance()->Forget();
    drafts.reset();
    UIMain::Instance()->SetMainWidget(nullptr);
    delete page;
}

void LargeAppTest::Paste(const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
    QTest::keyClick(Instructions(), Qt::Key_V, Qt::ControlModifier);
}

void LargeAppTest::tellsWhoPastesTooMuch()
{
    // given
    AppRecord app;
    app.id = QStringLiteral("x");
    app.name = QStringLiteral("应用一");
    app.creatorPin = QStringLiteral("author");
    drafts->Open(app);
    page->Open(app);
    QTRY_VERIFY_WITH_TIMEOUT(Instructions() && Instructions()->toPlainText() == QStringLiteral("text"),
                             30000);
    QTest::mouseClick(page->findChild<QWidget*>(QStringLiteral("pushButtonExtend")), Qt::LeftButton);
    QTest::mouseClick(Instructions()->viewport(), Qt::LeftButton);
    ToastWatcher toasts;

    // when it still fits
    Paste(QString(room / 20, QLatin1Char('a')));
    QTRY_VERIFY_WITH_TIMEOUT(drafts->Keeps(app.id), 30000);
    QCOMPARE(toasts.GetTexts(), QStringList());

    // when it does not fit any more
    Paste(Lines(room));

    // then that is told without a save, with what becomes of it and what to do
    QTRY_COMPARE_WITH_TIMEOUT(toasts.GetTexts().value(0),
                              QStringLiteral("应用的全部内容超过 64 MB，无法保存，之后的修改也没有保留草稿。"
                                             "请减少内容后再继续"),
                              30000);
    QCOMPARE(toasts.GetCount(), 1);
}

RPA_TEST_MAIN(LargeAppTest)
#include "tst_largeapp.moc"
