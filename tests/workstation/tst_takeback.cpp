// SPDX-License-Identifier: Apache-2.0

#include "AppListModel.h"
#include "AppListPage.h"
#include "FaultServer.h"
#include "PageFixture.h"
#include "ReleaseController.h"
#include "ReleaseDialog.h"
#include "ReleaseFixture.h"
#include "TakeBackDialog.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <RpaServiceClient/VersionServiceSettings.h>

#include <QAction>
#include <QJsonArray>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

// An author takes back what users have.
class tst_TakeBack : public ReleaseFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void isOfferedByTheCardOfTheApp();
    void showsWhatUsersHave();
    void saysWhenNothingWasReleased();
    void takesTheOnlineVersionOffline();
    void asksForAReason();
    void takesNothingBackWhenItIsCancelled();
    void bringsAnEarlierVersionBack();
    void stopsTheGrayVersion();
    void showsWhatSomebodyElseDidMeanwhile();
    void keepsTheReasonWhenTheServerDoesNotAnswer();
    void tellsHowItWentToWhoeverClosedTheDialogs_data();
    void tellsHowItWentToWhoeverClosedTheDialogs();
    void saysWhyTheVersionsCannotBeRead();

private:
    void Open(const QString& app, const QString& name);
    // The buttons of the dialog that are on the screen, of this name.
    QList<QPushButton*> Buttons(const char* name) const;
    QStringList Texts(const char* name) const;
    TakeBackDialog* Press(QPushButton* button);
    QString OnlineVersion(const QString& app, const char* reader = "user-1");

    std::unique_ptr<QWidget> window;
    std::unique_ptr<ReleaseController> desk;
    QPointer<ReleaseDialog> dialog;
};

void tst_TakeBack::init()
{
    VersionServiceSettings::Instance()->SetBaseUrl(QUrl(server.BaseUrl()));
    SignIn("author-1");
    window = std::make_unique<QWidget>();
    window->resize(1000, 700);
    window->show();
    desk = std::make_unique<ReleaseController>();
}

void tst_TakeBack::cleanup()
{
    window.reset();
    desk.reset();
}

void tst_TakeBack::Open(const QString& app, const QString& name)
{
    SignIn("author-1");
    AppRecord record;
    record.id = app;
    record.name = name;
    desk->Show(record, DateLanguage::System, window.get());
    dialog = window->findChild<ReleaseDialog*>();
    QVERIFY(dialog && dialog->isVisible());
}

QList<QPushButton*> tst_TakeBack::Buttons(const char* name) const
{
    QList<QPushButton*> shown;
    for (auto* button : dialog->findChildren<QPushButton*>(QLatin1String(name)))
        if (button->isVisible())
            shown << button;
    return shown;
}

QStringList tst_TakeBack::Texts(const char* name) const
{
    QStringList texts;
    for (const auto* label : dialog->findChildren<QLabel*>(QLatin1String(name)))
        if (label->isVisible())
            texts << label->text();
    return texts;
}

TakeBackDialog* tst_TakeBack::Press(QPushButton* button)
{
    QTest::mouseClick(button, Qt::LeftButton);
    return dialog->findChild<TakeBackDialog*>();
}

QString tst_TakeBack::OnlineVersion(const QString& app, const char* reader)
{
    SignIn(reader);
    const QJsonArray apps =
        Send("GET", QStringLiteral("/api/v1/online-apps"), {}).value(QLatin1String("apps")).toArray();
    SignIn("author-1");
    for (const auto& one : apps) {
        if (one.toObject().value(QLatin1String("app")).toObject().value(QLatin1String("id")) == app)
            return one.toObject()
                .value(QLatin1String("version"))
                .toObject()
                .value(QLatin1String("name"))
                .toString();
    }
    return {};
}

void tst_TakeBack::isOfferedByTheCardOfTheApp()
{
    AppListModel model;
    AppRecord record;
    record.id = QStringLiteral("a");
    record.name = QStringLiteral("甲");
    model.SetApps({record});
    AppListPage page(&model);
    page.resize(1000, 600);
    page.show();
    page.ShowApps();
    QSignalSpy asked(&page, &AppListPage::SigReleases);
    auto* cards = Child<QListView>(page, "listApps");

    emit cards->customContextMenuRequested(cards->visualRect(cards->model()->index(0, 0)).center());
    auto* menu = page.findChild<QMenu*>(QStringLiteral("menuCard"));
    QVERIFY(menu);
    for (QAction* action : menu->actions())
        if (action->text() == QStringLiteral("发布管理…"))
            action->trigger();

    QCOMPARE(asked.size(), 1);
    QCOMPARE(asked.first().first().value<AppRecord>().id, QStringLiteral("a"));
}

void tst_TakeBack::showsWhatUsersHave()
{
    const QString app = Release(QStringLiteral("收回一"), 2);
    ReleaseVersion(app, QStringLiteral("乙"), 2);
    ReleaseVersion(app, QStringLiteral("丙"), 1);

    Open(app, QStringLiteral("收回一"));

    QTRY_COMPARE(Texts("labelVersion"),
                 (QStringList{QStringLiteral("乙"), QStringLiteral("v1"), QStringLiteral("丙")}));
    QCOMPARE(Texts("labelOnline"), QStringList(QStringLiteral("线上：使用者现在使用“乙”")));
    QCOMPARE(Texts("labelGray"), QStringList(QStringLiteral("灰度：使用者现在使用“丙”")));
    QCOMPARE(Buttons("buttonStop").size(), 2);
    QCOMPARE(Buttons("buttonStop").first()->text(), QStringLiteral("下线…"));
    QCOMPARE(Buttons("buttonStop").last()->text(), QStringLiteral("停止灰度…"));
    QCOMPARE(Buttons("buttonReturn").size(), 1);
    QVERIFY(Texts("labelReleased").first().startsWith(QStringLiteral("使用中 · 上线于 ")));
    QVERIFY(Texts("labelState").isEmpty());
}

void tst_TakeBack::saysWhenNothingWasReleased()
{
    const QString app = Send("POST", QStringLiteral("/api/v1/apps"), R"({"name":"空的","kind":0})")
                            .value(QLatin1String("id"))
                            .toString();

    Open(app, QStringLiteral("空的"));

    QTRY_COMPARE(Texts("labelState"), QStringList(QStringLiteral("还没有灰度或上线过的版本。")));
    QVERIFY(Texts("labelOnline").isEmpty());
    QVERIFY(Texts("labelGray").isEmpty());
}

void tst_TakeBack::takesTheOnlineVersionOffline()
{
    const QString app = Release(QStringLiteral("收回二"), 2);
    QCOMPARE(OnlineVersion(app), QStringLiteral("v1"));
    ToastWatcher toasts;
    QSignalSpy changed(desk.get(), &ReleaseController::SigChanged);
    Open(app, QStringLiteral("收回二"));
    QTRY_COMPARE(Buttons("buttonStop").size(), 1);

    QPointer<TakeBackDialog> question = Press(Buttons("buttonStop").first());
    QVERIFY(question && question->isVisible());
    QVERIFY(Child<QLabel>(*question, "labelConsequence")->text().contains(QStringLiteral("“v1”")));
    QTest::keyClicks(Child<QLineEdit>(*question, "editReason"), QStringLiteral(" wrong sums "));
    QTest::mouseClick(Child<QPushButton>(*question, "buttonOk"), Qt::LeftButton);

    QTRY_COMPARE(changed.size(), 1);
    QTRY_VERIFY(!question);
    QTRY_COMPARE(Texts("labelOnline"), QStringList(QStringLiteral("线上：使用者现在没有线上版本")));
    QCOMPARE(Buttons("buttonStop").size(), 0);
    QCOMPARE(Buttons("buttonReturn").size(), 1);
    QCOMPARE(OnlineVersion(app), QString());
    QCOMPARE(toasts.GetToasts().last().text, QStringLiteral("“收回二”已下线"));
    SignIn("admin-1");
    const QJsonObject note = Send("GET", QStringLiteral("/api/v1/audit?limit=1"), {})
                                 .value(QLatin1String("entries"))
                                 .toArray()
                                 .first()
                                 .toObject();
    QCOMPARE(note.value(QLatin1String("act")).toString(), QStringLiteral("release.offline"));
    QCOMPARE(note.value(QLatin1String("reason")).toString(), QStringLiteral("wrong sums"));
}

void tst_TakeBack::asksForAReason()
{
    const QString app = Release(QStringLiteral("收回三"), 2);
    Open(app, QStringLiteral("收回三"));
    QTRY_COMPARE(Buttons("buttonStop").size(), 1);
    TakeBackDialog* question = Press(Buttons("buttonStop").first());
    auto* ok = Child<QPushButton>(*question, "buttonOk");
    auto* reason = Child<QLineEdit>(*question, "editReason");
    QSignalSpy confirmed(question, &TakeBackDialog::SigConfirmed);

    QVERIFY(!ok->isEnabled());
    QTest::keyClicks(reason, QStringLiteral("   "));
    QTest::keyClick(reason, Qt::Key_Return);
    QVERIFY(!ok->isEnabled());
    QTest::keyClicks(reason, QString(300, QLatin1Char('x')));

    QVERIFY(ok->isEnabled());
    QCOMPARE(reason->text().size(), 200);
    QCOMPARE(confirmed.size(), 0);
    QVERIFY(question->isVisible());
}

void tst_TakeBack::takesNothingBackWhenItIsCancelled()
{
    const QString app = Release(QStringLiteral("收回四"), 2);
    Open(app, QStringLiteral("收回四"));
    QTRY_COMPARE(Buttons("buttonStop").size(), 1);
    QPointer<TakeBackDialog> question = Press(Buttons("buttonStop").first());
    QTest::keyClicks(Child<QLineEdit>(*question, "editReason"), QStringLiteral("x"));

    QTest::mouseClick(Child<QPushButton>(*question, "buttonCancel"), Qt::LeftButton);

    QTRY_VERIFY(!question);
    QVERIFY(dialog->isVisible());
    QCOMPARE(OnlineVersion(app), QStringLiteral("v1"));
}

void tst_TakeBack::bringsAnEarlierVersionBack()
{
    const QString app = Release(QStringLiteral("收回五"), 2);
    ReleaseVersion(app, QStringLiteral("乙"), 2);
    Open(app, QStringLiteral("收回五"));
    QTRY_COMPARE(Buttons("buttonReturn").size(), 1);

    QPointer<TakeBackDialog> question = Press(Buttons("buttonReturn").first());
    const QString text = Child<QLabel>(*question, "labelConsequence")->text();
    QVERIFY(text.contains(QStringLiteral("改用线上版本“v1”")) && text.contains(QStringLiteral("“乙”不再")));
    QTest::keyClicks(Child<QLineEdit>(*question, "editReason"), QStringLiteral("x"));
    QTest::keyClick(Child<QLineEdit>(*question, "editReason"), Qt::Key_Return);

    QTRY_COMPARE(Texts("labelOnline"), QStringList(QStringLiteral("线上：使用者现在使用“v1”")));
    QCOMPARE(OnlineVersion(app), QStringLiteral("v1"));
    QVERIFY(!question || !question->isVisible());
}

void tst_TakeBack::stopsTheGrayVersion()
{
    const QString app = Release(QStringLiteral("收回六"), 1);
    ReleaseVersion(app, QStringLiteral("乙"), 2);
    Open(app, QStringLiteral("收回六"));
    QTRY_COMPARE(Buttons("buttonStop").size(), 2);

    TakeBackDialog* question = Press(Buttons("buttonStop").last());
    QCOMPARE(Child<QPushButton>(*question, "buttonOk")->text(), QStringLiteral("停止灰度"));
    QTest::keyClicks(Child<QLineEdit>(*question, "editReason"), QStringLiteral("x"));
    QTest::mouseClick(Child<QPushButton>(*question, "buttonOk"), Qt::LeftButton);

    QTRY_COMPARE(Texts("labelGray"), QStringList(QStringLiteral("灰度：使用者现在没有灰度版本")));
    QCOMPARE(Texts("labelOnline"), QStringList(QStringLiteral("线上：使用者现在使用“乙”")));
}

void tst_TakeBack::showsWhatSomebodyElseDidMeanwhile()
{
    const QString app = Release(QStringLiteral("收回七"), 2);
    Open(app, QStringLiteral("收回七"));
    QTRY_COMPARE(Buttons("buttonStop").size(), 1);
    QPointer<TakeBackDialog> question = Press(Buttons("buttonStop").first());
    ReleaseVersion(app, QStringLiteral("丁"), 2);
    ToastWatcher toasts;

    QTest::keyClicks(Child<QLineEdit>(*question, "editReason"), QStringLiteral("x"));
    QTest::mouseClick(Child<QPushButton>(*question, "buttonOk"), Qt::LeftButton);

    QTRY_COMPARE(Texts("labelOnline"), QStringList(QStringLiteral("线上：使用者现在使用“丁”")));
    QVERIFY(!question || !question->isVisible());
    QVERIFY(toasts.GetToasts().last().text.contains(QStringLiteral("已经变化，没有执行")));
    QCOMPARE(OnlineVersion(app), QStringLiteral("丁"));
}

void tst_TakeBack::keepsTheReasonWhenTheServerDoesNotAnswer()
{
    const QString app = Release(QStringLiteral("收回八"), 2);
    Open(app, QStringLiteral("收回八"));
    QTRY_COMPARE(Buttons("buttonStop").size(), 1);
    TakeBackDialog* question = Press(Buttons("buttonStop").first());
    FaultServer broken;
    broken.SetScript(
        [](const auto&) { return FaultServer::Refusal(500, "internal", QStringLiteral("坏了")); });
    VersionServiceSettings::Instance()->SetBaseUrl(broken.GetUrl());
    auto* ok = Child<QPushButton>(*question, "buttonOk");

    QTest::keyClicks(Child<QLineEdit>(*question, "editReason"), QStringLiteral("because"));
    QTest::mouseClick(ok, Qt::LeftButton);
    QVERIFY(!ok->isEnabled());

    QTRY_COMPARE(Child<QLabel>(*question, "labelProblem")->text(), QStringLiteral("坏了"));
    QVERIFY(ok->isEnabled());
    QCOMPARE(Child<QLineEdit>(*question, "editReason")->text(), QStringLiteral("because"));
    QCOMPARE(broken.GetRequestCount(), 1);
}

void tst_TakeBack::tellsHowItWentToWhoeverClosedTheDialogs_data()
{
    QTest::addColumn<bool>("works");
    QTest::newRow("done") << true;
    QTest::newRow("not done") << false;
}

void tst_TakeBack::tellsHowItWentToWhoeverClosedTheDialogs()
{
    QFETCH(const bool, works);
    const QString app = Release(QStringLiteral("收回九") + (works ? QStringLiteral("甲") : QString()), 2);
    Open(app, QStringLiteral("收回九"));
    QTRY_COMPARE(Buttons("buttonStop").size(), 1);
    QPointer<TakeBackDialog> question = Press(Buttons("buttonStop").first());
    FaultServer late;
    late.SetScript([works](const auto&) {
        auto reply = works ? FaultServer::Json(200, R"({"versionId":""})")
                           : FaultServer::Refusal(500, "internal", QStringLiteral("坏了"));
        reply.delay = std::chrono::milliseconds(200);
        return reply;
    });
    VersionServiceSettings::Instance()->SetBaseUrl(late.GetUrl());
    ToastWatcher toasts;
    QTest::keyClicks(Child<QLineEdit>(*question, "editReason"), QStringLiteral("x"));
    QTest::mouseClick(Child<QPushButton>(*question, "buttonOk"), Qt::LeftButton);

    question->close();
    dialog->close();
    QTRY_VERIFY(!question && !dialog);

    QTRY_COMPARE(toasts.GetCount(), 1);
    QCOMPARE(toasts.GetToasts().last().text,
             works ? QStringLiteral("“收回九”已下线") : QStringLiteral("“收回九”：坏了"));
}

void tst_TakeBack::saysWhyTheVersionsCannotBeRead()
{
    Open(QStringLiteral("no-such-app"), QStringLiteral("没有"));

    QTRY_COMPARE(Texts("labelProblem").size(), 1);
    QVERIFY(Texts("labelProblem").first().contains(QStringLiteral("不存在")));
    QVERIFY(Buttons("buttonStop").isEmpty());
}

RPA_TEST_MAIN(tst_TakeBack)

#include "tst_takeback.moc"
