// SPDX-License-Identifier: Apache-2.0

#include "DraftFixture.h"

#include "VersionReplies.h"

#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaServiceClient/VersionServiceSettings.h>
#include <WbBaseUI/UIMain.h>
#include <WbCore/WbGlobalData.h>

#include <QTextEdit>
#include <QtTest>

namespace
{
AppRecord App(const QString& id, const QString& name)
{
    AppRecord app;
    app.id = id;
    app.name = name;
    app.creatorPin = QStringLiteral("author");
    return app;
}

VersionReplies::Version Version(const QString& appId, const QString& id, const QString& name, int state = 1)
{
    VersionReplies::Version version;
    version.appId = appId;
    version.id = id;
    version.name = name;
    version.state = state;
    return version;
}

FaultServer::Reply AnswerRead(const QByteArray& path)
{
    if (path.endsWith("/data"))
        return FaultServer::Data(
            VersionReplies::App(R"("extendInfo":{"manual":")" + path.split('/').rbegin()[1] + R"("})"), 1);
    const QString x = QStringLiteral("x");
    const QString y = QStringLiteral("y");
    if (path.contains("/y/"))
        return VersionReplies::List({Version(y, QStringLiteral("y1"), QStringLiteral("丁"))});
    return VersionReplies::List({Version(x, QStringLiteral("x1"), QStringLiteral("甲")),
                                 Version(x, QStringLiteral("x2"), QStringLiteral("乙")),
                                 Version(x, QStringLiteral("x3"), QStringLiteral("丙"), 2)});
}
} // namespace

AppRecord DraftFixture::AppX()
{
    return App(QStringLiteral("x"), QStringLiteral("应用一"));
}

AppRecord DraftFixture::AppY()
{
    return App(QStringLiteral("y"), QStringLiteral("应用二"));
}

void DraftFixture::init()
{
    folder = std::make_unique<TestFolder>();
    gate.tryAcquire(gate.available());
    server = std::make_unique<FaultServer>();
    server->SetScript([this](const FaultServer::Request& request) {
        if (request.method == "GET")
            return AnswerRead(request.path);
        gate.tryAcquire(1, 20000);
        return FaultServer::Refusal(500, "broken", QStringLiteral("磁盘已满。"));
    });
    VersionServiceSettings::Instance()->SetBaseUrl(server->GetUrl());
    VersionServiceSettings::Instance()->SetToken("token");
    RpaGlobalDataManager::Instance()->SetApiVersion(QStringLiteral("1.0.0"));
    WbGlobalData::Instance()->SetPin(QStringLiteral("author"));
    window = std::make_unique<QWidget>();
    window->resize(1280, 720);
    UIMain::Instance()->SetMainWidget(window.get());
    page = new EditorPage(window.get());
    page->resize(window->size());
    drafts = std::make_unique<DraftController>(RpaEditorLogic::Instance()->GetSaveLedger(), window.get());
    drafts->Start(folder->path());
    connect(page, &EditorPage::SigClosed, drafts.get(), &DraftController::Close);
    window->show();
}

void DraftFixture::cleanup()
{
    gate.release(100);
    page->Discard();
    RpaEditorLogic::Instance()->Forget();
    drafts.reset();
    UIMain::Instance()->SetMainWidget(nullptr);
    window.reset();
    server.reset();
    folder.reset();
}

void DraftFixture::Open(const AppRecord& app)
{
    drafts->Open(app);
    page->Open(app);
    QTRY_COMPARE(Text(), app.id + QLatin1Char('1'));
    Press("pushButtonExtend");
}

void DraftFixture::Press(const char* button)
{
    auto* found = page->findChild<QWidget*>(QLatin1String(button));
    QVERIFY(found);
    QTest::mouseClick(found, Qt::LeftButton);
}

void DraftFixture::Type(const QString& text)
{
    QTest::keyClicks(page->findChild<QTextEdit*>(QStringLiteral("richTextView")), text);
}

QString DraftFixture::Text() const
{
    const auto* view = page->findChild<QTextEdit*>(QStringLiteral("richTextView"));
    return view ? view->toPlainText() : QString();
}
