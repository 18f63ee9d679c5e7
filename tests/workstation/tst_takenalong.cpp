// SPDX-License-Identifier: Apache-2.0

#include "EditorPage.h"
#include "EditorWorld.h"
#include "ModalDriver.h"
#include "PageFixture.h"
#include "TakenAlong.h"
#include "TakenAlongDialog.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaHtmlNodeManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <WbBaseUI/WbTheme.h>

#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QWheelEvent>
#include <QtTest>

namespace
{
constexpr int longWaitMs = 30000;
constexpr int develop = 1;
constexpr int gray = 2;

// A value, a table of two rows, and a password in the second step.
void FillWithSecrets(RpaAppData& app)
{
    RpaUIData* const page = app.GetUIDataManager()->GetUIData(0);
    RpaParamItem item;
    item.name = QStringLiteral("客户");
    item.value = QStringLiteral("ACME");
    page->GetParamData()->InsertItem(-1, item);
    RpaTableColumn column;
    column.name = QStringLiteral("列");
    page->GetTableData()->InsertColumn(-1, column);
    page->GetTableData()->InsertRows(-1, {{QStringLiteral("r1")}, {QStringLiteral("r2")}});
    RpaNode node;
    node.name = QStringLiteral("口令框");
    node.attributes.insert(QStringLiteral("type"), QStringLiteral("password"));
    RpaStatement log;
    log.command = QStringLiteral("log");
    log.arguments = {{QStringLiteral("text"), QStringLiteral("harmless")}};
    RpaStatement input;
    input.command = QStringLiteral("browser.input");
    input.arguments = {{QStringLiteral("element"), app.GetHtmlNodeManager()->AddNode(node)},
                       {QStringLiteral("text"), QStringLiteral("hunter2")},
                       {QStringLiteral("timeout"), QStringLiteral("10")}};
    app.GetProcessDataManager()->GetProcess(0)->Insert(QString(), -1, {log, input});
}
} // namespace

// What goes along with an app that is released or exported, and how its author takes it out.
class tst_TakenAlong : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void listsValuesRowsAndPasswords();
    void severalFilesAndChoicesAreListed();
    void runResultsAreNotAmongThem();
    void takesOutWhatIsNamed();
    void scrollingDecidesNothing();
    void aReleaseGoesWithWhatIsKept();
    void aReleaseThatIsGivenUpChangesNothing();
    void whatIsTakenOutIsSavedBeforeTheRelease();
    void anExportAsksFirst();

private:
    void OpenEditor();
    void AskForGray(const std::function<void(QDialog*)>& review);
    QDialog* Review() const { return page->findChild<QDialog*>(QStringLiteral("TakenAlongDialog")); }

    EditorWorld world;
    RobotExecuteInfo info;
    QString version;
    std::unique_ptr<EditorPage> page;
};

void tst_TakenAlong::initTestCase()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    world.Start();
}

void tst_TakenAlong::init()
{
    page.reset();
    world.SignIn();
}

void tst_TakenAlong::listsValuesRowsAndPasswords()
{
    RpaAppData app;
    app.InitDefault();
    FillWithSecrets(app);

    const QVector<TakenAlong> all = TakenAlong::Of(app);

    QCOMPARE(all.size(), 3);
    QVERIFY(all.at(1).where.endsWith(QStringLiteral("的参数“客户”")));
    QCOMPARE(all.at(1).what, QStringLiteral("ACME"));
    QVERIFY(all.at(2).where.endsWith(QStringLiteral("的表格")));
    QCOMPARE(all.at(2).what, QStringLiteral("2 行：r1"));
    QVERIFY2(all.at(0).where.endsWith(QStringLiteral("第 2 步“填写输入框”的内容")),
             qPrintable(all.at(0).where));
    QVERIFY(!all.at(0).what.contains(QStringLiteral("hunter2")));
}

void tst_TakenAlong::severalFilesAndChoicesAreListed()
{
    RpaAppData app;
    app.InitDefault();
    RpaParamItem files;
    files.name = QStringLiteral("清单");
    files.type = RpaParamType::Files;
    files.value = QStringList{QStringLiteral("/a.csv"), QStringLiteral("/b.csv")};
    RpaParamItem none = files;
    none.name = QStringLiteral("空");
    none.value = QStringList();
    RpaParamItem picture;
    picture.name = QStringLiteral("图");
    picture.type = RpaParamType::Picture;
    picture.value = QStringLiteral("/home/a.png");
    for (const RpaParamItem& item : {files, none, picture})
        app.GetUIDataManager()->GetUIData(0)->GetParamData()->InsertItem(-1, item);

    const QVector<TakenAlong> all = TakenAlong::Of(app);

    QCOMPARE(all.size(), 1);
    QVERIFY(all.at(0).where.endsWith(QStringLiteral("的参数“清单”")));
    QCOMPARE(all.at(0).what, QStringLiteral("/a.csv，/b.csv"));
}

void tst_TakenAlong::runResultsAreNotAmongThem()
{
    RpaAppData app;
    app.InitDefault();
    RpaUIData* const first = app.GetUIDataManager()->GetUIData(0);
    RpaParamItem item;
    item.name = QStringLiteral("p");
    first->GetParamData()->InsertItem(-1, item);
    RpaTableColumn column;
    column.name = QStringLiteral("c");
    first->GetTableData()->InsertColumn(-1, column);

    first->GetParamData()->SetResult(0, QStringLiteral("x"));
    first->GetTableData()->WriteResult(
        [&] { return first->GetTableData()->AppendRow({QStringLiteral("y")}) >= 0; });

    QCOMPARE(TakenAlong::Of(app).size(), 0);
}

void tst_TakenAlong::takesOutWhatIsNamed()
{
    RpaAppData app;
    app.InitDefault();
    FillWithSecrets(app);
    const QVector<TakenAlong> all = TakenAlong::Of(app);

    for (const TakenAlong& entry : all)
        entry.TakeOut(app);

    const QByteArray json = app.ToJson();
    for (const char* gone : {"ACME", "r1", "r2", "hunter2"})
        QVERIFY2(!json.contains(gone), gone);
    QVERIFY(json.contains("harmless"));
    const RpaParamItem password = app.GetUIDataManager()->GetUIData(0)->GetParamData()->GetItem(1);
    QCOMPARE(password.type, RpaParamType::Password);
    QVERIFY(password.required);
    QCOMPARE(app.GetProcessDataManager()->GetProcess(0)->GetStatements().last().arguments.value(
                 QStringLiteral("text")),
             QStringLiteral("=rpa.get_param(\"%1\")").arg(password.name));
    QCOMPARE(TakenAlong::Of(app).size(), 0);
}

void tst_TakenAlong::scrollingDecidesNothing()
{
    RpaAppData app;
    app.InitDefault();
    FillWithSecrets(app);
    TakenAlongDialog dialog(TakenAlong::Of(app), QStringLiteral("导出"), nullptr);
    dialog.show();
    auto* choice = dialog.findChild<QComboBox*>(QStringLiteral("choiceTakenAlong1"));
    const QPointF place = choice->rect().center();
    QWheelEvent wheel(place, choice->mapToGlobal(place.toPoint()), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);

    QApplication::sendEvent(choice, &wheel);

    QCOMPARE(choice->currentText(), QStringLiteral("保留"));
    QCOMPARE(dialog.GetTakenOut().size(), 1); // the password, as it was
}

void tst_TakenAlong::OpenEditor()
{
    info = world.CreateApp();
    version = world.AddVersion(info, QStringLiteral("v1"), &FillWithSecrets);
    page = std::make_unique<EditorPage>();
    page->resize(1280, 720);
    page->show();
    AppRecord record;
    record.id = info.GetAppId();
    page->Open(record);
    QTRY_VERIFY_WITH_TIMEOUT(page->findChild<QPushButton*>(QStringLiteral("toolButton0")), longWaitMs);
    QTRY_VERIFY(Child<QPushButton>(*page, "toolButton0")->isVisible());
}

void tst_TakenAlong::AskForGray(const std::function<void(QDialog*)>& review)
{
    ModalDriver modals;
    modals.Then([](QWidget* box) { QVERIFY(ModalDriver::Press(box, QStringLiteral("是"))); });
    modals.ThenIn<QDialog>(review);
    QTest::mouseClick(Child<QWidget>(*page, "pushButtonBeta"), Qt::LeftButton);
    QTRY_COMPARE(modals.GetPendingCount(), 0);
}

void tst_TakenAlong::aReleaseGoesWithWhatIsKept()
{
    OpenEditor();

    AskForGray([](QDialog* review) {
        auto* password = review->findChild<QComboBox*>(QStringLiteral("choiceTakenAlong0"));
        QCOMPARE(password->currentText(), QStringLiteral("改为参数"));
        QTest::keyClick(password, Qt::Key_Up);
        QTest::mouseClick(review->findChild<QWidget*>(QStringLiteral("buttonGoOn")), Qt::LeftButton);
    });

    QTRY_COMPARE(world.GetState(info, version), gray);
    QVERIFY(world.GetContent(version).contains("hunter2"));
}

void tst_TakenAlong::aReleaseThatIsGivenUpChangesNothing()
{
    OpenEditor();
    ToastWatcher toasts;

    AskForGray([](QDialog* review) {
        QTest::mouseClick(review->findChild<QWidget*>(QStringLiteral("buttonCancel")), Qt::LeftButton);
    });

    QTRY_VERIFY(toasts.GetTexts().contains(QStringLiteral("已取消，没有灰度")));
    QCOMPARE(world.GetState(info, version), develop);
    QCOMPARE(Child<QLineEdit>(*page, "paramField")->text(), QStringLiteral("ACME"));
}

void tst_TakenAlong::whatIsTakenOutIsSavedBeforeTheRelease()
{
    OpenEditor();
    ToastWatcher toasts;

    AskForGray([](QDialog* review) {
        for (int row = 0; row < 3; ++row)
            QTest::keyClick(review->findChild<QComboBox*>(QStringLiteral("choiceTakenAlong%1").arg(row)),
                            Qt::Key_Down);
        QTest::mouseClick(review->findChild<QWidget*>(QStringLiteral("buttonGoOn")), Qt::LeftButton);
    });

    QTRY_VERIFY2(toasts.GetTexts().contains(QStringLiteral("已修改 3 项数据，请保存后再灰度")),
                 qPrintable(toasts.GetTexts().join(QLatin1Char('|'))));
    QCOMPARE(world.GetState(info, version), develop);
    QTest::mouseClick(Child<QWidget>(*page, "pushButtonSave"), Qt::LeftButton);
    QTRY_VERIFY(toasts.GetTexts().contains(QStringLiteral("保存成功")));

    ModalDriver modals;
    modals.Then([](QWidget* box) { QVERIFY(ModalDriver::Press(box, QStringLiteral("是"))); });
    QTest::mouseClick(Child<QWidget>(*page, "pushButtonBeta"), Qt::LeftButton);

    QTRY_COMPARE(world.GetState(info, version), gray);
    for (const char* gone : {"ACME", "r1", "hunter2"})
        QVERIFY2(!world.GetContent(version).contains(gone), gone);
}

void tst_TakenAlong::anExportAsksFirst()
{
    OpenEditor();
    auto* button = Child<QWidget>(*page, "pushButtonExportAppData");
    button->show(); // only administrators see it
    ModalDriver modals;
    QDialog* exporting = nullptr;
    modals.ThenIn<QDialog>([&](QDialog* dialog) { exporting = dialog; });
    modals.ThenIn<QDialog>([](QDialog* review) {
        QCOMPARE(review->objectName(), QStringLiteral("TakenAlongDialog"));
        QTest::mouseClick(review->findChild<QWidget*>(QStringLiteral("buttonCancel")), Qt::LeftButton);
    });

    QTest::mouseClick(button, Qt::LeftButton);

    QVERIFY(exporting);
    QCOMPARE(modals.GetPendingCount(), 0);
}

RPA_TEST_MAIN(tst_TakenAlong)

#include "tst_takenalong.moc"
