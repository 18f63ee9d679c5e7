// SPDX-License-Identifier: Apache-2.0

#include "EditorPage.h"
#include "MainWindow.h"
#include "PageFixture.h"
#include "TestApp.h"
#include "TestFolder.h"
#include "TipController.h"
#include "WorkstationSettings.h"

#include <QLabel>
#include <QtTest>

// Each page says once what to do first.
class tst_Tips : public PageFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void tellsOncePerPage();
    void isReadWhenTheUserSaysSo();
    void endsWhenTheUserWantsNoMore();
    void comesAgainWhenItIsSwitchedOnAgain();
    void tellsOfEachPartOfTheEditor();
    void coversNothing();
    void leavesALowWindowItsRoom();

private:
    QString Told() const;

    TestFolder folder;
    std::unique_ptr<WorkstationSettings> settings;
    std::unique_ptr<MainWindow> window;
    std::unique_ptr<TipController> tips;
    QWidget* lists = nullptr;
    QWidget* run = nullptr;
    EditorPage* editor = nullptr;
};

void tst_Tips::init()
{
    const QString file = folder.filePath(QString::fromLatin1(QTest::currentTestFunction()));
    settings = std::make_unique<WorkstationSettings>(file);
    window = std::make_unique<MainWindow>();
    lists = new QWidget;
    lists->setObjectName(QStringLiteral("AppListPage"));
    run = new QWidget;
    run->setObjectName(QStringLiteral("RunPage"));
    editor = new EditorPage;
    window->AddPage(new QWidget, QString());
    for (QWidget* page : {lists, run, static_cast<QWidget*>(editor)})
        window->AddPage(page, QString());
    tips = std::make_unique<TipController>(settings.get(), window.get(), editor);
    window->show();
    window->setMinimumSize(1, 1); // the screen of a test may be smaller
    window->resize(1280, 720);
}

void tst_Tips::cleanup()
{
    window.reset();
    tips.reset();
}

QString tst_Tips::Told() const
{
    const auto* label = Child<QLabel>(*window, "labelTip");
    return label->isVisible() ? label->text() : QString();
}

void tst_Tips::tellsOncePerPage()
{
    QCOMPARE(Told(), QString());
    window->ShowPage(lists);
    const QString first = Told();
    QVERIFY(first.contains(QStringLiteral("新建")));

    window->ShowPage(run);
    QVERIFY(Told().contains(QStringLiteral("发送给作者")));

    window->ShowPage(lists);
    QCOMPARE(Told(), QString());
    QCOMPARE(settings->GetSeenTips(),
             (QStringList{QStringLiteral("AppListPage"), QStringLiteral("RunPage")}));
}

void tst_Tips::isReadWhenTheUserSaysSo()
{
    window->ShowPage(run);
    Press(*window, "buttonTipDone");

    QCOMPARE(Told(), QString());
    QCOMPARE(settings->GetSeenTips(), QStringList{QStringLiteral("RunPage")});
    window->ShowPage(lists);
    QVERIFY(!Told().isEmpty());
}

void tst_Tips::endsWhenTheUserWantsNoMore()
{
    window->ShowPage(lists);
    Press(*window, "buttonTipsOff");

    QCOMPARE(Told(), QString());
    window->ShowPage(run);
    QCOMPARE(Told(), QString());
    QVERIFY(!settings->GetTips());
}

void tst_Tips::comesAgainWhenItIsSwitchedOnAgain()
{
    window->ShowPage(lists);
    Press(*window, "buttonTipsOff");

    settings->SetTips(true);

    QVERIFY(!Told().isEmpty());
}

void tst_Tips::tellsOfEachPartOfTheEditor()
{
    auto* content = new QWidget(editor);
    auto* process = new QWidget(content);
    process->setObjectName(QStringLiteral("pageProcess"));
    process->hide();
    emit editor->SigOpened(content);
    content->show();
    window->ShowPage(editor);
    QCoreApplication::processEvents();
    QCOMPARE(Told(), QString()); // still loading

    process->show();

    QTRY_VERIFY(Told().contains(QStringLiteral("指令")));
    Press(*window, "buttonTipDone");
    QCOMPARE(settings->GetSeenTips(), QStringList{QStringLiteral("pageProcess")});
}

void tst_Tips::coversNothing()
{
    window->ShowPage(lists);
    QCoreApplication::processEvents();

    const QWidget* const bar = Child<QWidget>(*window, "tipBar");
    const QRect page(lists->mapTo(window.get(), QPoint()), lists->size());
    QVERIFY(bar->isVisible());
    QVERIFY(!bar->geometry().intersects(page));
    QVERIFY(bar->geometry().bottom() <= window->height());
}

void tst_Tips::leavesALowWindowItsRoom()
{
    window->ShowPage(lists);
    window->resize(960, 540);
    QTRY_COMPARE(Told(), QString());
    QVERIFY(settings->GetSeenTips().isEmpty());

    window->resize(1280, 720);

    QTRY_VERIFY(!Told().isEmpty());
}

RPA_TEST_MAIN(tst_Tips)

#include "tst_tips.moc"
