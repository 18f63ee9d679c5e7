// SPDX-License-Identifier: Apache-2.0

#include "AppListController.h"
#include "AppListModel.h"
#include "AppListPage.h"
#include "InvitationDialog.h"
#include "PageFixture.h"
#include "ReleaseFixture.h"
#include "ReleasedAppModel.h"
#include "ReleasedListController.h"
#include "ReleasedListPage.h"
#include "RunPage.h"
#include "TestApp.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/releases/ListOnlineAppsRequest.h>
#include <WbBaseUI/RequestStatusBaseWidget.h>

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSignalSpy>
#include <QTextBrowser>
#include <QToolButton>
#include <QtTest>

namespace
{
VersionServiceReleasedApp App(const QString& id, const QString& name)
{
    VersionServiceReleasedApp app;
    app.app.id = id;
    app.app.name = name;
    app.versionId = QStringLiteral("v-") + id;
    app.versionName = QStringLiteral("版本1");
    app.state = 3;
    app.releasedAt = QDateTime(QDate(2026, 3, 5), QTime(14, 7));
    return app;
}
} // namespace

// The lists beyond the release, their desk and the run page, on a real server.
class tst_Released : public ReleaseFixture
{
    Q_OBJECT

private slots:
    void init() { SignIn("user-1"); }

    void runsTheAppThatIsClicked();
    void findsAppsByAPartOfTheirName();
    void goesToAnotherList();
    void showsTheOnlineAppsOfTheVendor();
    void redeemsAnInvitationCode();
    void saysWhyACodeIsRefused();
    void forgetsTheAppsOfTheFormerAccount();
    void forgetsTheOwnAppsOfTheFormerAccount();
    void copiesRevokesAndMakesInvitationCodes();
    void opensAReleasedApp();
    void saysWhenAnAppCannotBeRead();
    void fetchesNothingForTheInstructions();
    void showsTheWordsOfInstructionsThatAreTooMuch();
};

void tst_Released::runsTheAppThatIsClicked()
{
    ReleasedAppModel model;
    const QAbstractItemModelTester tester(&model);
    model.SetReleasedApps(
        {App(QStringLiteral("a"), QStringLiteral("甲")), App(QStringLiteral("b"), QStringLiteral("乙"))});
    ReleasedListPage page(AppPageHead::Online, &model);
    page.resize(1280, 672);
    page.show();
    page.ShowApps();
    QSignalSpy run(&page, &ReleasedListPage::SigRun);

    auto* cards = Child<QListView>(page, "listReleased");
    QTest::mouseClick(cards->viewport(), Qt::LeftButton, {},
                      cards->visualRect(cards->model()->index(1, 0)).center());

    QCOMPARE(run.size(), 1);
    QCOMPARE(run.first().first().value<VersionServiceReleasedApp>().versionId, QStringLiteral("v-b"));
}

void tst_Released::findsAppsByAPartOfTheirName()
{
    ReleasedAppModel model;
    model.SetReleasedApps({App(QStringLiteral("a"), QStringLiteral("发票汇总")),
                           App(QStringLiteral("b"), QStringLiteral("库存"))});
    ReleasedListPage page(AppPageHead::Online, &model);

    Child<QLineEdit>(page, "editSearch")->setText(QStringLiteral("汇总"));

    auto* cards = Child<QListView>(page, "listReleased");
    QCOMPARE(cards->model()->rowCount(), 1);
    QCOMPARE(cards->model()->index(0, 0).data().toString(), QStringLiteral("发票汇总"));
}

void tst_Released::goesToAnotherList()
{
    ReleasedAppModel model;
    ReleasedListPage page(AppPageHead::Online, &model);
    page.show();
    QSignalSpy chosen(&page, &ReleasedListPage::SigTab);

    QTest::mouseClick(Child<QToolButton>(page, "tabOnline"), Qt::LeftButton);
    QTest::mouseClick(Child<QToolButton>(page, "tabGray"), Qt::LeftButton);

    QCOMPARE(chosen.size(), 1);
    QCOMPARE(chosen.first().first().toInt(), int(AppPageHead::Gray));
    QVERIFY(Child<QToolButton>(page, "tabOnline")->isChecked());
    QVERIFY(!Child<QToolButton>(page, "tabGray")->isChecked());
}

void tst_Released::showsTheOnlineAppsOfTheVendor()
{
    const QString app = Release(QStringLiteral("线上应用一"), 2);
    ReleasedAppModel model;
    ReleasedListPage page(AppPageHead::Online, &model);
    ReleasedListController desk(AppPageHead::Online, &model, &page);

    SignIn("user-1");
    desk.Refresh();
    QTRY_VERIFY(model.RowOf(app) >= 0);

    SignIn("author-3");
    desk.Refresh();
    QTRY_COMPARE(model.RowOf(app), -1);
}

void tst_Released::redeemsAnInvitationCode()
{
    const QString app = Release(QStringLiteral("灰度应用一"), 1);
    const QString code = Send("GET", QStringLiteral("/api/v1/apps/%1/invitations").arg(app), {})
                             .value(QLatin1String("invitations"))
                             .toArray()
                             .first()
                             .toObject()
                             .value(QLatin1String("code"))
                             .toString();
    SignIn("user-1");
    ReleasedAppModel model;
    ReleasedListPage page(AppPageHead::Gray, &model);
    ReleasedListController desk(AppPageHead::Gray, &model, &page);
    connect(&page, &ReleasedListPage::SigRedeem, &desk, &ReleasedListController::Redeem);
    desk.Refresh();
    page.show();
    QTRY_VERIFY(Child<QLabel>(page, "labelEmpty")->isVisible());

    QTest::keyClicks(Child<QLineEdit>(page, "editCode"), code.toLower());
    QTest::keyClick(Child<QLineEdit>(page, "editCode"), Qt::Key_Return);

    QTRY_COMPARE(model.RowOf(app), 0);
    QVERIFY(Child<QLineEdit>(page, "editCode")->text().isEmpty());
}

void tst_Released::saysWhyACodeIsRefused()
{
    ReleasedAppModel model;
    ReleasedListPage page(AppPageHead::Gray, &model);
    ReleasedListController desk(AppPageHead::Gray, &model, &page);
    connect(&page, &ReleasedListPage::SigRedeem, &desk, &ReleasedListController::Redeem);
    page.show();

    QTest::keyClicks(Child<QLineEdit>(page, "editCode"), QStringLiteral("22222-22222"));
    QTest::mouseClick(Child<QPushButton>(page, "buttonRedeem"), Qt::LeftButton);

    QTRY_COMPARE(Child<QLabel>(page, "labelProblem")->text(),
                 QStringLiteral("邀请码不存在，请检查后重新输入。"));
    QCOMPARE(Child<QLineEdit>(page, "editCode")->text(), QStringLiteral("22222-22222"));
}

void tst_Released::forgetsTheAppsOfTheFormerAccount()
{
    const QString app = Release(QStringLiteral("线上应用二"), 2);
    ReleasedAppModel model;
    ReleasedListPage page(AppPageHead::Online, &model);
    ReleasedListController desk(AppPageHead::Online, &model, &page);
    desk.Refresh();
    QTRY_VERIFY(model.RowOf(app) >= 0);

    desk.Forget();

    QCOMPARE(model.rowCount(), 0);
}

void tst_Released::forgetsTheOwnAppsOfTheFormerAccount()
{
    const QString app = Release(QStringLiteral("线上应用四"), 2);
    AppListModel model;
    AppListPage page(&model);
    AppListController desk(&model, &page);
    desk.Refresh();
    QTRY_VERIFY(model.RowOf(app) >= 0);
    desk.Refresh(); // on its way when the account leaves

    desk.Forget();
    SignIn("author-3");
    desk.Refresh();

    QCOMPARE(model.rowCount(), 0);
    QTRY_COMPARE(Child<RequestStatusBaseWidget>(page, "statusApps")->GetStatus(), RequestStatus::Succeeded);
    QCOMPARE(model.RowOf(app), -1);
}

void tst_Released::copiesRevokesAndMakesInvitationCodes()
{
    AppRecord record;
    record.id = Release(QStringLiteral("灰度应用二"), 1);
    InvitationDialog dialog(record, DateLanguage::System, nullptr);
    dialog.show();
    const auto codes = [&dialog] {
        QStringList texts;
        for (const QLabel* label : dialog.findChildren<QLabel*>(QStringLiteral("labelCode")))
            if (label->isVisible())
                texts << label->text();
        return texts;
    };
    QTRY_COMPARE(codes().size(), 1);
    QVERIFY(!Child<QLabel>(dialog, "labelState")->isVisible());

    QTest::mouseClick(Child<QPushButton>(dialog, "buttonCopy"), Qt::LeftButton);
    QCOMPARE(QGuiApplication::clipboard()->text(), codes().first());

    QTest::mouseClick(Child<QPushButton>(dialog, "buttonRevoke"), Qt::LeftButton);
    QTRY_COMPARE(codes().size(), 0);

    QTest::mouseClick(Child<QPushButton>(dialog, "buttonCreate"), Qt::LeftButton);
    QTRY_COMPARE(codes().size(), 1);
}

void tst_Released::opensAReleasedApp()
{
    const QString appId = Release(QStringLiteral("线上应用三"), 2);
    SignIn("user-1");
    VersionServiceClient client;
    VersionServiceReleasedApp app;
    client.Send(ListOnlineAppsRequest{}, this,
                [&](const VersionServiceResult<QVector<VersionServiceReleasedApp>>& result) {
                    for (const VersionServiceReleasedApp& one : result.value)
                        if (one.app.id == appId)
                            app = one;
                });
    QTRY_COMPARE(app.app.id, appId);
    RunPage page;
    page.show();

    page.Open(app);

    QTRY_COMPARE(Child<QTextBrowser>(page, "viewManual")->toPlainText(), QStringLiteral("先填写再运行"));
    QCOMPARE(Child<QLabel>(page, "labelPageTitle")->text(), QStringLiteral("线上应用三"));
}

void tst_Released::saysWhenAnAppCannotBeRead()
{
    RunPage page;

    QVERIFY(!page.ShowApp(App(QStringLiteral("a"), QStringLiteral("甲")), "no app"));
}

void tst_Released::fetchesNothingForTheInstructions()
{
    RunPage page;
    auto* manual = Child<QTextBrowser>(page, "viewManual");
    const QUrl file(QStringLiteral("file:///etc/hostname"));

    QVERIFY(!manual->loadResource(QTextDocument::ImageResource, file).isValid());
    QVERIFY(!manual->loadResource(QTextDocument::StyleSheetResource, file).isValid());
}

void tst_Released::showsTheWordsOfInstructionsThatAreTooMuch()
{
    RunPage page;
    page.show();
    RpaAppData app;
    app.InitDefault();
    app.GetAppExtendInfo()->manual = QStringLiteral("<ul>") + QStringLiteral("<li>填写</li>").repeated(20000);

    QVERIFY(page.ShowApp(App(QStringLiteral("a"), QStringLiteral("甲")), app.ToJson()));

    QVERIFY(
        Child<QTextBrowser>(page, "viewManual")->toPlainText().startsWith(QStringLiteral("填写\n填写\n")));
    QVERIFY(Child<QLabel>(page, "richNoticeText")->text().contains(QStringLiteral("有一个列表超过 2000 项")));
}

RPA_TEST_MAIN(tst_Released)

#include "tst_released.moc"
