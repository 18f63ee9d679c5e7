// SPDX-License-Identifier: Apache-2.0

#include "AppBin.h"
#include "AppListController.h"
#include "AppListModel.h"
#include "AppListPage.h"
#include "AppTagsDialog.h"
#include "BinDialog.h"
#include "ModalDriver.h"
#include "PageFixture.h"
#include "ReleaseFixture.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <QJsonArray>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

namespace
{
bool Says(QWidget* window, const QString& text)
{
    for (const auto* label : window->findChildren<QLabel*>())
        if (label->text().contains(text))
            return true;
    return false;
}
} // namespace

// Apps of a real server are made, copied, tagged, deleted and restored from the list.
class tst_AppListController : public ReleaseFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void newAppIsAnnouncedWhenItsDialogHasGone();
    void cancelledAppIsNotAnnounced();
    void listTellsStateAndWhoChangedAnApp();
    void listBeginsWithWhatTheAccountOpenedLast();
    void copyHasTheNextFreeName();
    void tagsAreSetAndKept();
    void tagsThatCannotBeAreSaidAndKept();
    void lineOfTagsIsRead_data();
    void lineOfTagsIsRead();
    void deletedAppComesBackFromTheBin();
    void deletionSaysWhatUsersLose();
    void appIsKeptWhenTheQuestionIsDeclined();
    void deletionIsRefusedToAColleague();
    void binIsEmptied();

private:
    AppRecord Refreshed(const QString& id)
    {
        desk->Refresh();
        QSignalSpy reset(model.get(), &QAbstractItemModel::modelReset);
        reset.wait(10000);
        return model->AppAt(model->RowOf(id));
    }
    void Delete(const AppRecord& app)
    {
        QSignalSpy changed(bin.get(), &AppBin::SigChanged);
        ModalDriver modals;
        modals.Then([](QWidget* box) { QVERIFY(ModalDriver::Press(box, QStringLiteral("删除"))); });
        bin->Delete(app, page.get());
        QTRY_COMPARE(changed.size(), 1);
    }
    BinDialog* OpenBin()
    {
        bin->Show(DateLanguage::Chinese, page.get());
        return page->findChild<BinDialog*>();
    }

    std::unique_ptr<AppListModel> model;
    std::unique_ptr<AppListPage> page;
    std::unique_ptr<AppListController> desk;
    std::unique_ptr<AppBin> bin;
};

void tst_AppListController::init()
{
    SignIn("author-1");
    model = std::make_unique<AppListModel>();
    page = std::make_unique<AppListPage>(model.get());
    page->resize(1000, 600);
    page->show();
    desk = std::make_unique<AppListController>(model.get(), page.get());
    bin = std::make_unique<AppBin>();
}

void tst_AppListController::cleanup()
{
    bin.reset();
    desk.reset();
    page.reset();
    model.reset();
}

void tst_AppListController::newAppIsAnnouncedWhenItsDialogHasGone()
{
    QSignalSpy created(desk.get(), &AppListController::SigCreated);
    bool wasModal = true;
    connect(desk.get(), &AppListController::SigCreated, this,
            [&wasModal] { wasModal = QApplication::activeModalWidget() != nullptr; });
    ModalDriver modals;
    modals.Then([](QWidget* dialog) {
        Child<QLineEdit>(*dialog, "editAppName")->setText(QStringLiteral("新的应用"));
        Press(*dialog, "buttonOk");
    });

    desk->Create(AppKindProgram);

    QCOMPARE(created.size(), 1);
    const auto app = created.first().first().value<AppRecord>();
    QCOMPARE(app.name, QStringLiteral("新的应用"));
    QCOMPARE(app.kind, int(AppKindProgram));
    QVERIFY(!wasModal);
    QTRY_VERIFY(model->RowOf(app.id) >= 0);
}

void tst_AppListController::cancelledAppIsNotAnnounced()
{
    QSignalSpy created(desk.get(), &AppListController::SigCreated);
    ModalDriver modals;
    modals.Then([](QWidget* dialog) { Press(*dialog, "buttonCancel"); });

    desk->Create(AppKindVisual);

    QCOMPARE(created.size(), 0);
}

void tst_AppListController::listTellsStateAndWhoChangedAnApp()
{
    const QString gray = Release(QStringLiteral("灰度的"), 1);
    const QString online = Release(QStringLiteral("线上的"), 2);

    QCOMPARE(Refreshed(gray).state, 2);
    QCOMPARE(Refreshed(online).state, 3);
    QVERIFY(!Refreshed(online).changedByName.isEmpty());
    QCOMPARE(Refreshed(online).changedByName, Refreshed(online).creatorName);
}

void tst_AppListController::listBeginsWithWhatTheAccountOpenedLast()
{
    const QString older = Release(QStringLiteral("先有的"), 1);
    const QString newer = Release(QStringLiteral("后有的"), 1);
    desk->SetAccount(QStringLiteral("author-1"));
    Refreshed(newer);
    QCOMPARE(model->RowOf(newer), 0); // changed last

    desk->NoteOpened(older);

    Refreshed(older);
    QCOMPARE(model->RowOf(older), 0);
    desk->SetAccount(QStringLiteral("author-2"));
    Refreshed(newer);
    QCOMPARE(model->RowOf(newer), 0);
}

void tst_AppListController::copyHasTheNextFreeName()
{
    const AppRecord app = Refreshed(Release(QStringLiteral("原件"), 2));
    const ToastWatcher toasts;

    desk->Copy(app);
    QTRY_COMPARE(toasts.GetTexts(), QStringList{QStringLiteral("已复制为“原件 副本”")});
    desk->Copy(app);
    QTRY_COMPARE(toasts.GetCount(), 2);

    QCOMPARE(toasts.GetTexts().last(), QStringLiteral("已复制为“原件 副本 2”"));
}

void tst_AppListController::tagsAreSetAndKept()
{
    const AppRecord app = Refreshed(Release(QStringLiteral("有标签的"), 1));
    ModalDriver modals;
    modals.Then([](QWidget* dialog) {
        Child<QLineEdit>(*dialog, "editTags")->setText(QStringLiteral("财务，月结"));
        Press(*dialog, "buttonOk");
    });

    desk->EditTags(app);

    const QStringList tags{QStringLiteral("财务"), QStringLiteral("月结")};
    QTRY_COMPARE(model->AppAt(model->RowOf(app.id)).tags, tags);
    QCOMPARE(Refreshed(app.id).changedAt, app.changedAt);
}

void tst_AppListController::tagsThatCannotBeAreSaidAndKept()
{
    const AppRecord app = Refreshed(Release(QStringLiteral("没有标签的"), 1));
    const QString longTag(21, QLatin1Char('x'));
    ModalDriver modals;
    modals.Then([longTag](QWidget* dialog) {
        auto* edit = Child<QLineEdit>(*dialog, "editTags");
        edit->setText(longTag);
        Press(*dialog, "buttonOk");
        QCOMPARE(Child<QLabel>(*dialog, "labelProblem")->text(),
                 QStringLiteral("标签“%1”超过了 20 个字符").arg(longTag));
        QCOMPARE(edit->text(), longTag);
        Press(*dialog, "buttonCancel");
    });

    desk->EditTags(app);

    QCOMPARE(Refreshed(app.id).tags, QStringList());
}

void tst_AppListController::lineOfTagsIsRead_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("tags");
    QTest::newRow("nothing") << QStringLiteral(" ，, ") << QString();
    QTest::newRow("commas of both kinds") << QStringLiteral("a,b，c、d") << QStringLiteral("a|b|c|d");
    QTest::newRow("blanks") << QStringLiteral(" a  b\tc ") << QStringLiteral("a|b|c");
    QTest::newRow("twice") << QStringLiteral("Ab aB c") << QStringLiteral("Ab|c");
    QTest::newRow("as it is looked for") << QStringLiteral("#a ## b") << QStringLiteral("a|b");
}

void tst_AppListController::lineOfTagsIsRead()
{
    QFETCH(QString, line);

    QTEST(AppTagsDialog::Read(line).join(QLatin1Char('|')), "tags");
}

void tst_AppListController::deletedAppComesBackFromTheBin()
{
    const AppRecord app = Refreshed(Release(QStringLiteral("来去"), 1));

    Delete(app);
    QCOMPARE(Refreshed(app.id).id, QString());
    BinDialog* const dialog = OpenBin();
    auto* list = Child<QListWidget>(*dialog, "listBin");
    QTRY_COMPARE(list->count(), 1);
    QVERIFY(list->item(0)->text().startsWith(QStringLiteral("来去 ")));
    QSignalSpy changed(bin.get(), &AppBin::SigChanged);
    Press(*dialog, "buttonRestore");

    QTRY_COMPARE(changed.size(), 1);
    QCOMPARE(changed.first().first().toString(), app.id);
    QTRY_COMPARE(list->count(), 0);
    QCOMPARE(Child<QLabel>(*dialog, "labelState")->text(), QStringLiteral("回收站是空的。"));
    QVERIFY(!Child<QPushButton>(*dialog, "buttonRestore")->isEnabled());
    QCOMPARE(Refreshed(app.id).state, 2);
}

void tst_AppListController::deletionSaysWhatUsersLose()
{
    const AppRecord app = Refreshed(Release(QStringLiteral("使用中"), 2));
    ModalDriver modals;
    modals.Then([](QWidget* box) {
        QVERIFY(Says(box, QStringLiteral("使用者将立即不能再看到和运行它")));
        ModalDriver::Press(box, QStringLiteral("取消"));
    });

    bin->Delete(app, page.get());

    QCOMPARE(modals.GetPendingCount(), 0);
}

void tst_AppListController::appIsKeptWhenTheQuestionIsDeclined()
{
    const AppRecord app = Refreshed(Release(QStringLiteral("留下"), 1));
    ModalDriver modals;
    modals.Then([](QWidget* box) { ModalDriver::Reject(box); });

    bin->Delete(app, page.get());

    QCOMPARE(Refreshed(app.id).id, app.id);
}

void tst_AppListController::deletionIsRefusedToAColleague()
{
    const AppRecord app = Refreshed(Release(QStringLiteral("别人的"), 1));
    SignIn("author-2");
    const ToastWatcher toasts;

    Delete(app);

    QTRY_COMPARE(toasts.GetTexts(),
                 QStringList{QStringLiteral("“别人的”没有删除：只有应用的创建者和管理员可以删除应用。")});
    QCOMPARE(Refreshed(app.id).id, app.id);
}

void tst_AppListController::binIsEmptied()
{
    Delete(Refreshed(Release(QStringLiteral("旧一"), 1)));
    Delete(Refreshed(Release(QStringLiteral("旧二"), 1)));
    BinDialog* const dialog = OpenBin();
    auto* list = Child<QListWidget>(*dialog, "listBin");
    QTRY_COMPARE(list->count(), 2);
    ModalDriver modals;
    modals.Then([](QWidget* box) {
        QVERIFY(Says(box, QStringLiteral("彻底删除回收站中的 2 个应用")));
        ModalDriver::Press(box, QStringLiteral("彻底删除"));
    });

    Press(*dialog, "buttonEmptyBin");

    QTRY_COMPARE(list->count(), 0);
    const auto left = Send("GET", QStringLiteral("/api/v1/deleted-apps"), {});
    QCOMPARE(left.value(QLatin1String("apps")).toArray().size(), 0);
}

RPA_TEST_MAIN(tst_AppListController)
#include "tst_applistcontroller.moc"
