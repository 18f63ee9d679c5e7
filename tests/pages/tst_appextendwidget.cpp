// SPDX-License-Identifier: Apache-2.0

#include "AppExtendWidget.h"
#include "TestApp.h"

#include <RpaAppData/RpaAppExtendInfo.h>
#include <WbWebKernal/WbRichEditor.h>

#include <QSignalSpy>
#include <QTextEdit>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

class TestAppExtendWidget : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void bindsAnAppWithoutModifyingIt();
    void hearsEachChangeOnceAfterBindingTwice();
    void writesAChangeIntoTheApp();
    void holdsAChangeWhenItIsAnnounced();
    void keepsTheLastDifferingTextWhenEditedBack();
    void hearsNothingBeforeTheFirstBinding();
    void letsThePreviousAppGo();
    void keepsTheMeasuresOfItsForm();

private:
    RpaAppDataPtr MakeApp(const QString& manual) const;
    // What the editor tells after an edit.
    void Edit(const QString& text) { emit editor->SigTextChanged(text); }

    std::unique_ptr<AppExtendWidget> page;
    WbRichEditor* editor = nullptr;
    RpaAppDataPtr app;
    QString loaded;
};

void TestAppExtendWidget::init()
{
    page = std::make_unique<AppExtendWidget>();
    editor = page->findChild<WbRichEditor*>(QStringLiteral("textEditManual"));
    loaded = QStringLiteral("<p>old</p>");
    app = MakeApp(loaded);
}

RpaAppDataPtr TestAppExtendWidget::MakeApp(const QString& manual) const
{
    auto made = RpaAppDataPtr::create();
    made->InitDefault();
    made->GetAppExtendInfo()->manual = manual;
    made->SetModified(false);
    return made;
}

void TestAppExtendWidget::bindsAnAppWithoutModifyingIt()
{
    // when
    page->SetRpaAppData(app);
    Edit(loaded);
    QCoreApplication::processEvents();

    // then
    QVERIFY(!app->GetModified());
    QCOMPARE(app->GetAppExtendInfo()->GetManual(), loaded);
    QCOMPARE(editor->GetText(), loaded);
}

void TestAppExtendWidget::hearsEachChangeOnceAfterBindingTwice()
{
    // given
    page->SetRpaAppData(app);
    page->SetRpaAppData(app);
    QSignalSpy edits(app.data(), &RpaAppData::SigEdited);

    // when
    Edit(QStringLiteral("<p>one</p>"));

    // then
    QCOMPARE(edits.size(), 1);
    Edit(QStringLiteral("<p>two</p>"));
    QCOMPARE(edits.size(), 2);
}

void TestAppExtendWidget::writesAChangeIntoTheApp()
{
    // given
    page->SetRpaAppData(app);
    page->show();
    auto* typing = editor->findChild<QTextEdit*>();
    QVERIFY(typing);

    // when
    QTest::keyClicks(typing, QStringLiteral("x"));

    // then
    QVERIFY(app->GetModified());
    QCOMPARE(app->GetAppExtendInfo()->GetManual(), editor->GetText());
    QVERIFY(app->GetAppExtendInfo()->GetManual() != loaded);
}

// Whoever keeps unsaved work safe takes the content at that moment.
void TestAppExtendWidget::holdsAChangeWhenItIsAnnounced()
{
    // given
    page->SetRpaAppData(app);
    page->show();
    QStringList announced;
    connect(app.data(), &RpaAppData::SigEdited, page.get(),
            [&] { announced.append(app->GetAppExtendInfo()->GetManual()); });

    // when
    QTest::keyClicks(editor->findChild<QTextEdit*>(), QStringLiteral("x"));

    // then
    QCOMPARE(announced, QStringList(editor->GetText()));
    QVERIFY(announced.constFirst() != loaded);
}

void TestAppExtendWidget::keepsTheLastDifferingTextWhenEditedBack()
{
    // given
    page->SetRpaAppData(app);
    Edit(QStringLiteral("<p>new</p>"));

    // when
    Edit(loaded);

    // then
    QCOMPARE(app->GetAppExtendInfo()->GetManual(), QStringLiteral("<p>new</p>"));
    QVERIFY(app->GetModified());
}

void TestAppExtendWidget::hearsNothingBeforeTheFirstBinding()
{
    Edit(QStringLiteral("<p>early</p>"));

    QCOMPARE(app->GetAppExtendInfo()->GetManual(), loaded);
}

void TestAppExtendWidget::letsThePreviousAppGo()
{
    // given
    page->SetRpaAppData(app);
    const QWeakPointer<RpaAppData> previous = app;
    const RpaAppDataPtr next = MakeApp(QStringLiteral("<p>next</p>"));

    // when
    page->SetRpaAppData(next);
    app.reset();

    // then
    QVERIFY(previous.isNull());
    QVERIFY(!next->GetModified());
    Edit(loaded);
    QCOMPARE(next->GetAppExtendInfo()->GetManual(), loaded);
}

void TestAppExtendWidget::keepsTheMeasuresOfItsForm()
{
    auto* layout = page->findChild<QVBoxLayout*>(QStringLiteral("verticalLayout"));

    QCOMPARE(page->size(), QSize(873, 463));
    QCOMPARE(page->objectName(), QStringLiteral("AppExtendWidget"));
    QCOMPARE(layout->spacing(), 0);
    QCOMPARE(layout->contentsMargins(), QMargins(28, 12, 28, 24));
    QCOMPARE(layout->itemAt(0)->widget(), editor);
}

RPA_TEST_MAIN(TestAppExtendWidget)

#include "tst_appextendwidget.moc"
