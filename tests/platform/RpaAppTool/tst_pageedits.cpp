// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaAppTool/AppParamEditorWidget.h>
#include <RpaAppTool/AppToolEditorWidget.h>
#include <WbBaseUI/WbEditHistory.h>

#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

// What an author does in the panels of a page and takes back again.
class PageEdits : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void whatIsTakenBackIsNoEdit();
    void whatWasSavedMeanwhileIsEditedByTakingItBack();
    void aValueThatIsEnteredBackIsNoEdit();

private:
    RpaUIData* Page() { return app->GetUIDataManager()->GetUIData(0); }
    template <typename Panel, typename Data>
    void Bind(Panel& panel, Data* data)
    {
        panel.SetAppDataPtr(app);
        panel.Init(data);
        panel.resize(400, 300);
        panel.show();
        app->SetModified(false);
    }
    static void Click(QWidget& panel, const char* name)
    {
        QTest::mouseClick(panel.findChild<QToolButton*>(QLatin1String(name)), Qt::LeftButton);
    }

    RpaAppDataPtr app;
};

void PageEdits::init()
{
    app = RpaAppDataPtr::create();
    app->InitDefault();
}

void PageEdits::whatIsTakenBackIsNoEdit()
{
    AppToolEditorWidget tools;
    Bind(tools, Page()->GetToolData());
    AppParamEditorWidget params;
    Bind(params, Page()->GetParamData());
    Click(tools, "recordAdd");
    Click(params, "recordAdd");
    QVERIFY(app->GetModified());
    QSignalSpy marks(app.data(), &RpaAppData::SigModifiedChanged);

    WbEditHistory::Instance()->Undo();
    QCOMPARE(Page()->GetParamData()->GetCount(), 0);
    QTRY_VERIFY(app->GetModified());
    WbEditHistory::Instance()->Undo();

    QTRY_VERIFY(!app->GetModified());
    QCOMPARE(marks.size(), 1);
    WbEditHistory::Instance()->Redo();
    QVERIFY(app->GetModified());
}

void PageEdits::whatWasSavedMeanwhileIsEditedByTakingItBack()
{
    AppToolEditorWidget panel;
    Bind(panel, Page()->GetToolData());
    Click(panel, "recordAdd");
    app->SetModified(false);
    QSignalSpy marks(app.data(), &RpaAppData::SigModifiedChanged);

    WbEditHistory::Instance()->Undo();
    QVERIFY(app->GetModified());
    const int before = Page()->GetToolData()->GetCount();
    WbEditHistory::Instance()->Redo();
    QCOMPARE(Page()->GetToolData()->GetCount(), before + 1);

    QTRY_VERIFY(!app->GetModified());
    QCOMPARE(marks.size(), 2);
}

void PageEdits::aValueThatIsEnteredBackIsNoEdit()
{
    AppParamEditorWidget panel;
    RpaParamItem item;
    item.name = QStringLiteral("rate");
    QVERIFY(Page()->GetParamData()->InsertItem(-1, item) >= 0);
    QVERIFY(Page()->GetParamData()->SetValue(0, QStringLiteral("80")));
    Bind(panel, Page()->GetParamData());

    QVERIFY(Page()->GetParamData()->SetValue(0, QStringLiteral("90")));
    QVERIFY(app->GetModified());
    QVERIFY(Page()->GetParamData()->SetValue(0, QStringLiteral("80")));

    QTRY_VERIFY(!app->GetModified());
}

QTEST_MAIN(PageEdits)
#include "tst_pageedits.moc"
