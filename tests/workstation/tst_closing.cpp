// SPDX-License-Identifier: Apache-2.0

#include "AppListController.h"
#include "AppListModel.h"
#include "AppListPage.h"
#include "AppPageHead.h"
#include "FaultServer.h"
#include "MainWindow.h"
#include "ReleasedAppModel.h"
#include "ReleasedListController.h"
#include "ReleasedListPage.h"
#include "Session.h"
#include "TestApp.h"
#include "TestFolder.h"
#include "Workstation.h"

#include <RpaServiceClient/VersionServiceSettings.h>
#include <WbBaseUI/RequestStatusBaseWidget.h>

#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QToolButton>
#include <QtTest>

namespace
{
// Knows one account, and leaves whoever asks for anything else without an answer.
FaultServer::Reply OnlySignsIn(const FaultServer::Request& request)
{
    if (!request.path.startsWith("/api/v1/session"))
        return FaultServer::Failing(FaultServer::Fault::Silence);
    return FaultServer::Json(200, R"({"token":"t-1","account":{"pin":"li","name":"Li","venderId":"7",)"
                                  R"("roles":["author"]},"expiresAt":4102444800000})");
}

int CountOf(const FaultServer& server, const QByteArray& path)
{
    int count = 0;
    for (const FaultServer::Request& request : server.GetRequests())
        count += request.path.startsWith(path) ? 1 : 0;
    return count;
}
} // namespace

// Whoever goes away while the server has not answered.
class tst_Closing : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void aDeskThatGoesTellsItsPageNothing();
    void aDeskOfReleasedAppsThatGoesTellsItsPageNothing();
    void closesWhileEveryListIsUnderWay();

private:
    std::unique_ptr<FaultServer> server;
};

void tst_Closing::init()
{
    server = std::make_unique<FaultServer>();
    server->SetScript(OnlySignsIn);
    VersionServiceSettings::Instance()->SetBaseUrl(server->GetUrl());
}

void tst_Closing::aDeskThatGoesTellsItsPageNothing()
{
    AppListModel model;
    AppListPage page(&model);
    auto desk = std::make_unique<AppListController>(&model, &page);
    desk->Refresh();
    QTRY_COMPARE(server->GetRequestCount(), 1);

    desk.reset();

    QCOMPARE(page.findChild<RequestStatusBaseWidget*>()->GetStatus(), RequestStatus::Loading);
}

void tst_Closing::aDeskOfReleasedAppsThatGoesTellsItsPageNothing()
{
    ReleasedAppModel model;
    ReleasedListPage page(AppPageHead::Gray, &model);
    auto desk = std::make_unique<ReleasedListController>(AppPageHead::Gray, &model, &page);
    connect(&page, &ReleasedListPage::SigRedeem, desk.get(), &ReleasedListController::Redeem);
    page.show();
    desk->Refresh();
    QTest::keyClicks(page.findChild<QLineEdit*>(QStringLiteral("editCode")), QStringLiteral("ABCDE-FGHJK"));
    QTest::mouseClick(page.findChild<QPushButton*>(QStringLiteral("buttonRedeem")), Qt::LeftButton);
    QTRY_COMPARE(server->GetRequestCount(), 2);

    desk.reset();

    QCOMPARE(page.findChild<RequestStatusBaseWidget*>()->GetStatus(), RequestStatus::Loading);
}

void tst_Closing::closesWhileEveryListIsUnderWay()
{
    const TestFolder home;
    auto workstation = std::make_unique<Workstation>(WorkstationPaths::Below(home.path()));
    workstation->GetSettings()->SetEmbeddedServer(false);
    workstation->GetSettings()->SetServerAddress(server->GetUrl());
    QString problem;
    QVERIFY2(workstation->Start(&problem), qPrintable(problem));
    MainWindow* const window = workstation->GetWindow();
    QSignalSpy signedIn(workstation->GetSession(), &Session::SigSignedIn);
    workstation->GetSession()->SignIn(QStringLiteral("li"), QStringLiteral("a good password"), false);
    QTRY_COMPARE(signedIn.size(), 1);
    const auto press = [window](const char* tab) {
        for (auto* button : window->findChildren<QToolButton*>(QLatin1String(tab))) {
            if (button->isVisible()) {
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
    };
    QTRY_COMPARE(CountOf(*server, "/api/v1/apps"), 1);
    press("tabOnline");
    press("tabGray");
    QTRY_COMPARE(server->GetRequestCount() - CountOf(*server, "/api/v1/session"), 3);

    QSignalSpy closed(workstation.get(), &Workstation::SigClosed);
    window->close();
    QTRY_COMPARE(closed.size(), 1);
    workstation.reset();

    QVERIFY(QApplication::topLevelWidgets().isEmpty());
}

RPA_TEST_MAIN(tst_Closing)

#include "tst_closing.moc"
