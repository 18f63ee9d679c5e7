// SPDX-License-Identifier: Apache-2.0

#include "PanelForm.h"

#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppTool/AppParamEditorWidget.h>
#include <RpaAppTool/AppToolEditorWidget.h>
#include <RpaEngineModule/RpaProcessRelatedUIControler.h>
#include <WbBaseUI/WbEditHistory.h>

#include <QLabel>
#include <QSignalSpy>

// What the author does with the records of an editor panel, whichever they are.
class EditorActs : public QObject, private PanelForm
{
    Q_OBJECT

private slots:
    void init() { Start(); }

    void anActIsDoneAgainAsItWas();
    void severalRecordsGoInOneStep();
    void recordsMoveNoFurtherThanTheEnds();
    void theHintStandsWhereThereIsNoRecord();
    void addingUnfoldsThePanel();
    void whatChangesElsewhereIsShown();
    void aRunMarksNoEdit();

private:
    static bool IsEnabled(QWidget& panel, const char* tip)
    {
        const QList<QToolButton*> buttons = panel.findChildren<QToolButton*>();
        for (const QToolButton* button : buttons)
            if (button->toolTip().startsWith(QString::fromUtf8(tip)))
                return button->isEnabled();
        return false;
    }
};

void EditorActs::anActIsDoneAgainAsItWas()
{
    AppToolEditorWidget panel;
    Bind(panel, Page()->GetToolData());
    const QVector<RpaToolItem> before = Page()->GetToolData()->GetItems();
    Add(panel);
    const QVector<RpaToolItem> after = Page()->GetToolData()->GetItems();

    WbEditHistory::Instance()->Undo();
    QCOMPARE(Page()->GetToolData()->GetItems(), before);
    WbEditHistory::Instance()->Redo();

    QCOMPARE(Page()->GetToolData()->GetItems(), after);
    QVERIFY(!after.last().id.isEmpty());
    QCOMPARE(after.last().text, QStringLiteral("工具2"));
}

void EditorActs::severalRecordsGoInOneStep()
{
    AppParamEditorWidget panel;
    Bind(panel, Page()->GetParamData());
    for (int i = 0; i < 4; ++i)
        Add(panel);
    View(panel)->setSelectionMode(QAbstractItemView::ExtendedSelection);
    View(panel)->selectRow(1);
    View(panel)->selectionModel()->select(model->index(3, 0),
                                          QItemSelectionModel::Select | QItemSelectionModel::Rows);

    QTest::keyClick(View(panel), Qt::Key_Delete);
    QCOMPARE(Page()->GetParamData()->GetNames(),
             (QStringList{QStringLiteral("参数1"), QStringLiteral("参数3")}));
    QCOMPARE(View(panel)->currentIndex().row(), 1);
    QVERIFY(View(panel)->selectionModel()->isRowSelected(1, {}));
    QTest::keyClick(View(panel), Qt::Key_Z, Qt::ControlModifier);

    QCOMPARE(Page()->GetParamData()->GetCount(), 4);
    QCOMPARE(Page()->GetParamData()->GetItem(3).name, QStringLiteral("参数4"));
}

void EditorActs::recordsMoveNoFurtherThanTheEnds()
{
    AppParamEditorWidget panel;
    Bind(panel, Page()->GetParamData());
    Add(panel);
    Add(panel);
    View(panel)->selectRow(0);
    QVERIFY(!IsEnabled(panel, "上移"));
    QVERIFY(IsEnabled(panel, "下移"));
    QTest::keyClick(View(panel), Qt::Key_Up, Qt::AltModifier);
    QCOMPARE(Shown(0, 0), QVariant(QStringLiteral("参数1")));

    QTest::keyClick(View(panel), Qt::Key_Down, Qt::AltModifier);

    QCOMPARE(Shown(1, 0), QVariant(QStringLiteral("参数1")));
    QCOMPARE(View(panel)->currentIndex().row(), 1);
    QVERIFY(IsEnabled(panel, "上移"));
    QVERIFY(!IsEnabled(panel, "下移"));
    QTest::keyClick(View(panel), Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(Shown(1, 0), QVariant(QStringLiteral("参数1")));
}

void EditorActs::theHintStandsWhereThereIsNoRecord()
{
    AppParamEditorWidget panel;
    Bind(panel, Page()->GetParamData());
    const auto* hint = panel.findChild<QLabel*>(QStringLiteral("emptyHint"));
    const auto* title = panel.findChild<QToolButton*>(QStringLiteral("panelTitle"));
    QVERIFY(hint->isVisible());
    QVERIFY(!IsEnabled(panel, "删除"));
    QCOMPARE(title->text(), QStringLiteral("参数"));

    Add(panel);

    QVERIFY(!hint->isVisible());
    QVERIFY(IsEnabled(panel, "删除"));
    QCOMPARE(title->text(), QStringLiteral("参数（1）"));
}

void EditorActs::addingUnfoldsThePanel()
{
    AppParamEditorWidget panel;
    Bind(panel, Page()->GetParamData());
    Click(panel, "panelTitle");
    QVERIFY(panel.IsShrink());
    QCOMPARE(panel.sizePolicy().verticalPolicy(), QSizePolicy::Fixed); // the others get its room

    Click(panel, "recordAdd");

    QVERIFY(!panel.IsShrink());
    QCOMPARE(panel.sizePolicy().verticalPolicy(), QSizePolicy::Preferred);
    QVERIFY(View(panel)->isVisible());
}

void EditorActs::whatChangesElsewhereIsShown()
{
    AppParamEditorWidget panel;
    Bind(panel, Page()->GetParamData());
    Add(panel);
    Add(panel);
    View(panel)->selectRow(1);
    QSignalSpy resets(model, &QAbstractItemModel::modelReset);
    RpaParamItem item = Page()->GetParamData()->GetItem(1);
    item.label = QStringLiteral("城市");

    QVERIFY(Page()->GetParamData()->SetItem(1, item));

    QCOMPARE(Shown(1, 1), QVariant(QStringLiteral("城市")));
    QCOMPARE(resets.size(), 0);
    QCOMPARE(View(panel)->currentIndex().row(), 1);
    Page()->GetParamData()->SetContent({});
    QCOMPARE(model->rowCount(), 0);
}

void EditorActs::aRunMarksNoEdit()
{
    AppParamEditorWidget panel;
    Bind(panel, Page()->GetParamData());
    Add(panel);
    app->SetModified(false);
    RpaProcessRelatedUIControler::Instance()->SetRunning(true);
    const bool isWritten = Page()->GetParamData()->SetResult(0, QStringLiteral("a"));
    RpaProcessRelatedUIControler::Instance()->SetRunning(false);

    QVERIFY(isWritten);
    QVERIFY(!app->GetModified());
    QVERIFY(Page()->GetParamData()->SetValue(0, QStringLiteral("b")));
    QVERIFY(app->GetModified());
}

QTEST_MAIN(EditorActs)

#include "tst_editoracts.moc"
