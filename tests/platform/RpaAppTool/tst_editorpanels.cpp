// SPDX-License-Identifier: Apache-2.0

#include "PanelForm.h"

#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppTool/AppParamEditorWidget.h>
#include <RpaAppTool/AppTableEditorWidget.h>
#include <RpaAppTool/AppToolEditorWidget.h>
#include <RpaAppTool/IAppTableWidget.h>
#include <WbBaseUI/WbTheme.h>

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>

namespace
{
constexpr int titlePadding = 16; // both sides, by the theme
constexpr int typeColumn = 2;    // of the parameters
constexpr int limitsColumn = 5;
} // namespace

class EditorPanels : public QObject, private PanelForm
{
    Q_OBJECT

private slots:
    void init() { Start(); }

    void foldingHidesTheListAndTellsOnce();
    void aToolIsAddedWithTheFirstProcess();
    void typingRenamesATool();
    void anEmptyToolTextIsRefused();
    void aListOfChoicesHasRoomBesideAnIcon();
    void removingMovingAndUndoKeepTheTools();
    void aParameterNameIsUnique();
    void aChangedTypeDropsWhatDoesNotFit();
    void limitsAreWrittenInOneCell_data();
    void limitsAreWrittenInOneCell();
    void aLimitThatIsNoneIsRefused();
    void settingsThatAreNoneAreRefused();
    void aGroupHasOneOrTwoColumnsAndNothingElse();
    void aFormIsPickedOrTyped();
    void removingAColumnCanBeUndoneWithItsCells();
    void anotherPageForgetsTheUndoSteps();
    void theTableIsShownOnlyWithColumns();
    void dataThatGoesAwayEmptiesThePanel();
    void columnsStayReadableInANarrowPanel();
    void allParameterColumnsAreSeenBesideTheBrowser();
};

void EditorPanels::foldingHidesTheListAndTellsOnce()
{
    AppToolEditorWidget panel;
    Bind(panel, Page()->GetToolData());
    QSignalSpy spy(&panel, &AppToolEditorWidget::SigShrinkChanged);

    Click(panel, "panelTitle");

    QVERIFY(panel.IsShrink());
    QVERIFY(!View(panel)->isVisible());
    QCOMPARE(spy.size(), 1);
    QVERIFY(!app->GetModified());
}

void EditorPanels::aToolIsAddedWithTheFirstProcess()
{
    AppToolEditorWidget panel;
    Bind(panel, Page()->GetToolData());
    const int before = Page()->GetToolData()->GetCount();

    Click(panel, "recordAdd");

    QCOMPARE(Page()->GetToolData()->GetCount(), before + 1);
    QCOMPARE(Page()->GetToolData()->GetItem(before).processName,
             Page()->GetToolData()->GetItem(0).processName);
    QVERIFY(app->GetModified());
}

void EditorPanels::typingRenamesATool()
{
    AppToolEditorWidget panel;
    Bind(panel, Page()->GetToolData());
    View(panel)->setCurrentIndex(model->index(0, 0));
    View(panel)->edit(model->index(0, 0));
    auto* editor = View(panel)->findChild<QLineEdit*>();
    QVERIFY(editor);

    editor->selectAll();
    QTest::keyClicks(editor, QStringLiteral("Go"));
    QTest::keyClick(editor, Qt::Key_Return);

    QTRY_COMPARE(Page()->GetToolData()->GetItem(0).text, QStringLiteral("Go"));
    QVERIFY(app->GetModified());
}

void EditorPanels::anEmptyToolTextIsRefused()
{
    AppToolEditorWidget panel;
    Bind(panel, Page()->GetToolData());
    const QString before = Page()->GetToolData()->GetItem(0).text;

    QVERIFY(!model->setData(model->index(0, 0), QStringLiteral("   ")));
    QVERIFY(!model->setData(model->index(0, 0), QString(21, QLatin1Char('x'))));
    QVERIFY(model->setData(model->index(0, 0), QString(20, QLatin1Char('x'))));

    QVERIFY(Page()->GetToolData()->GetItem(0).text != before);
}

void EditorPanels::aListOfChoicesHasRoomBesideAnIcon()
{
    AppToolEditorWidget panel;
    Bind(panel, Page()->GetToolData());
    constexpr int iconColumn = 1;
    const QModelIndex cell = model->index(0, iconColumn);

    View(panel)->setCurrentIndex(cell);
    View(panel)->edit(cell);

    const auto* combo = View(panel)->findChild<QComboBox*>();
    QVERIFY(combo);
    QVERIFY2(combo->width() >= combo->sizeHint().width(), qPrintable(QString::number(combo->width())));
    QVERIFY(combo->parentWidget()->rect().contains(combo->geometry()));
}

void EditorPanels::removingMovingAndUndoKeepTheTools()
{
    AppToolEditorWidget panel;
    Bind(panel, Page()->GetToolData());
    Click(panel, "recordAdd");
    QTest::keyClick(View(panel), Qt::Key_Escape);
    const QVector<RpaToolItem> two = Page()->GetToolData()->GetItems();
    View(panel)->selectRow(1);

    QTest::keyClick(View(panel), Qt::Key_Up, Qt::AltModifier);
    QCOMPARE(Page()->GetToolData()->GetItem(0), two.at(1));
    QTest::keyClick(View(panel), Qt::Key_Delete);
    QCOMPARE(Page()->GetToolData()->GetCount(), 1);
    QTest::keyClick(View(panel), Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(View(panel), Qt::Key_Z, Qt::ControlModifier);

    QCOMPARE(Page()->GetToolData()->GetItems(), two);
}

void EditorPanels::aParameterNameIsUnique()
{
    AppParamEditorWidget panel;
    Bind(panel, Page()->GetParamData());
    const int before = Page()->GetParamData()->GetCount();
    Click(panel, "recordAdd");
    Click(panel, "recordAdd");
    const QString first = Page()->GetParamData()->GetItem(before).name;

    QVERIFY(!model->setData(model->index(before + 1, 0), first));
    QVERIFY(!model->setData(model->index(before + 1, 0), QString()));

    QVERIFY(Page()->GetParamData()->GetItem(before + 1).name != first);
}

void EditorPanels::aChangedTypeDropsWhatDoesNotFit()
{
    AppParamEditorWidget panel;
    Bind(panel, Page()->GetParamData());
    const int row = Page()->GetParamData()->GetCount();
    Click(panel, "recordAdd");
    QVERIFY(model->setData(model->index(row, 3), QStringLiteral("abc")));

    QVERIFY(model->setData(model->index(row, 2), static_cast<int>(RpaParamType::Number)));

    QVERIFY(!Page()->GetParamData()->GetItem(row).defaultValue.isValid());
    QVERIFY(!model->setData(model->index(row, 3), QStringLiteral("abc")));
    QVERIFY(model->setData(model->index(row, 3), QStringLiteral("3.5")));
    QCOMPARE(Page()->GetParamData()->GetItem(row).defaultValue, QVariant(3.5));
}

void EditorPanels::limitsAreWrittenInOneCell_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    const int number = static_cast<int>(RpaParamType::Number);
    const int date = static_cast<int>(RpaParamType::Date);

    QTest::newRow("range") << number << QStringLiteral(" 1 ~ 100.5 ") << QStringLiteral("1~100.5");
    QTest::newRow("negative") << number << QStringLiteral("-5至5") << QStringLiteral("-5~5");
    QTest::newRow("at least") << number << QStringLiteral("3～") << QStringLiteral("3~");
    QTest::newRow("at most") << number << QStringLiteral("~7") << QStringLiteral("~7");
    QTest::newRow("dates") << date << QStringLiteral("2024/1/5~2024年2月9日")
                           << QStringLiteral("2024-01-05~2024-02-09");
    QTest::newRow("choices") << static_cast<int>(RpaParamType::Choice) << QStringLiteral("甲、乙,丙")
                             << QStringLiteral("甲，乙，丙");
    QTest::newRow("several choices") << static_cast<int>(RpaParamType::Choices) << QStringLiteral("甲,乙")
                                     << QStringLiteral("甲，乙");
    QTest::newRow("moments") << static_cast<int>(RpaParamType::DateTime)
                             << QStringLiteral("2024/1/5 8:30~2024-02-09 18:00:00")
                             << QStringLiteral("2024-01-05 08:30~2024-02-09 18:00");
    QTest::newRow("slider") << static_cast<int>(RpaParamType::Slider) << QStringLiteral("0~1, 步长0.1")
                            << QStringLiteral("0~1，步长 0.1");
    QTest::newRow("slider without step")
        << static_cast<int>(RpaParamType::Slider) << QStringLiteral("-3~3") << QStringLiteral("-3~3");
    QTest::newRow("lines") << static_cast<int>(RpaParamType::Lines) << QStringLiteral("6")
                           << QStringLiteral("6 行");
    QTest::newRow("endings") << static_cast<int>(RpaParamType::Files) << QStringLiteral("*.xlsx、.csv，pdf")
                             << QStringLiteral("xlsx，csv，pdf");
    QTest::newRow("known form") << static_cast<int>(RpaParamType::Text) << QStringLiteral("手机号码")
                                << QStringLiteral("手机号码");
    QTest::newRow("own form") << static_cast<int>(RpaParamType::Password) << QStringLiteral("[0-9]{6}")
                              << QStringLiteral("[0-9]{6}");
}

void EditorPanels::limitsAreWrittenInOneCell()
{
    QFETCH(int, type);
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    AppParamEditorWidget panel;
    Bind(panel, Page()->GetParamData());
    Click(panel, "recordAdd");
    QVERIFY(type == 0 || model->setData(model->index(0, typeColumn), type));

    QVERIFY(model->setData(model->index(0, limitsColumn), typed));

    QCOMPARE(model->index(0, limitsColumn).data().toString(), shown);
    QVERIFY(model->setData(model->index(0, limitsColumn), QString()));
    QCOMPARE(model->index(0, limitsColumn).data().toString(), QString());
}

void EditorPanels::aLimitThatIsNoneIsRefused()
{
    AppParamEditorWidget panel;
    Bind(panel, Page()->GetParamData());
    Click(panel, "recordAdd");
    const QModelIndex limits = model->index(0, limitsColumn);
    QVERIFY(!model->setData(limits, QStringLiteral("(")));
    QVERIFY(model->setData(model->index(0, typeColumn), static_cast<int>(RpaParamType::Number)));
    QVERIFY(model->setData(limits, QStringLiteral("1~2")));

    QVERIFY(!model->setData(limits, QStringLiteral("5")));
    QVERIFY(!model->setData(limits, QStringLiteral("9~3")));
    QVERIFY(!model->setData(limits, QStringLiteral("a~b")));

    QCOMPARE(limits.data().toString(), QStringLiteral("1~2"));
    QVERIFY(model->setData(model->index(0, typeColumn), static_cast<int>(RpaParamType::Switch)));
    QVERIFY(!(limits.flags() & Qt::ItemIsEditable));
    QCOMPARE(limits.data().toString(), QString());
}

void EditorPanels::settingsThatAreNoneAreRefused()
{
    AppParamEditorWidget panel;
    Bind(panel, Page()->GetParamData());
    Click(panel, "recordAdd");
    const QModelIndex limits = model->index(0, limitsColumn);
    const auto refuses = [&](RpaParamType type, const char* text) {
        return model->setData(model->index(0, typeColumn), static_cast<int>(type)) &&
               !model->setData(limits, QString::fromUtf8(text));
    };

    QVERIFY(refuses(RpaParamType::Slider, "1~"));
    QVERIFY(refuses(RpaParamType::Lines, "21 行"));
    QVERIFY(refuses(RpaParamType::Group, "3"));
    QVERIFY(refuses(RpaParamType::File, "*.*"));
    QVERIFY(refuses(RpaParamType::DateTime, "9~10"));
    QVERIFY(!model->setData(limits, QStringLiteral("2024-01-02~2024-01-01 23:59")));
    QVERIFY(model->setData(model->index(0, typeColumn), static_cast<int>(RpaParamType::Slider)));
    QVERIFY(!model->setData(limits, QStringLiteral("0~1，步长 x")));
    QVERIFY(!model->setData(limits, QStringLiteral("0~1，步长 -1")));
}

void EditorPanels::aGroupHasOneOrTwoColumnsAndNothingElse()
{
    AppParamEditorWidget panel;
    Bind(panel, Page()->GetParamData());
    Click(panel, "recordAdd");
    QVERIFY(model->setData(model->index(0, typeColumn), static_cast<int>(RpaParamType::Group)));
    QCOMPARE(model->index(0, limitsColumn).data().toString(), QStringLiteral("一列"));

    QVERIFY(model->setData(model->index(0, limitsColumn), QStringLiteral("两列")));

    QCOMPARE(Page()->GetParamData()->GetItem(0).columns, 2);
    QVERIFY(!(model->index(0, 3).flags() & Qt::ItemIsEditable));
    QVERIFY(!(model->index(0, 4).flags() & Qt::ItemIsUserCheckable));
    QVERIFY(model->setData(model->index(0, typeColumn), static_cast<int>(RpaParamType::Choices)));
    QCOMPARE(Page()->GetParamData()->GetItem(0).columns, 0);
    QVERIFY(model->setData(model->index(0, limitsColumn), QStringLiteral("甲，乙，丙")));
    QVERIFY(model->setData(model->index(0, 3), QStringLiteral("丙、甲")));
    QCOMPARE(model->index(0, 3).data().toString(), QStringLiteral("甲，丙"));
    QVERIFY(!model->setData(model->index(0, 3), QStringLiteral("丁")));
}

void EditorPanels::aFormIsPickedOrTyped()
{
    AppParamEditorWidget panel;
    Bind(panel, Page()->GetParamData());
    panel.resize(640, 300);
    Click(panel, "recordAdd");
    QTest::keyClick(View(panel)->findChild<QLineEdit*>(), Qt::Key_Escape);
    const QModelIndex limits = model->index(0, limitsColumn);

    View(panel)->edit(limits);
    auto* combo = View(panel)->findChild<QComboBox*>();
    QVERIFY(combo && combo->isEditable());
    QVERIFY(combo->findText(QStringLiteral("电子邮箱")) > 0);
    QTest::keyClicks(combo, QStringLiteral("A[0-9]+"));
    QTest::keyClick(combo, Qt::Key_Return);

    QTRY_COMPARE(Page()->GetParamData()->GetItem(0).pattern, QStringLiteral("A[0-9]+"));
}

void EditorPanels::removingAColumnCanBeUndoneWithItsCells()
{
    AppTableEditorWidget panel;
    RpaTableData* table = Page()->GetTableData();
    while (table->GetColumnCount() > 0)
        table->RemoveColumn(0);
    Bind(panel, table);
    Click(panel, "recordAdd");
    Click(panel, "recordAdd");
    QTest::keyClick(View(panel), Qt::Key_Escape);
    QVERIFY(table->AppendRow({QStringLiteral("a"), QStringLiteral("b")}) >= 0);

    View(panel)->selectRow(0);
    Click(panel, "recordDelete");
    QCOMPARE(table->GetColumnCount(), 1);
    QTest::keyClick(View(panel), Qt::Key_Z, Qt::ControlModifier);

    QCOMPARE(table->GetColumnCount(), 2);
    QCOMPARE(table->GetCell(0, 0).toString(), QStringLiteral("a"));
    QCOMPARE(table->GetCell(0, 1).toString(), QStringLiteral("b"));
}

void EditorPanels::anotherPageForgetsTheUndoSteps()
{
    AppToolEditorWidget panel;
    Bind(panel, Page()->GetToolData());
    Click(panel, "recordAdd");
    QTest::keyClick(View(panel), Qt::Key_Escape);
    const int count = Page()->GetToolData()->GetCount();
    RpaUIData* other = app->GetUIDataManager()->AddUIData(QStringLiteral("另一页"), RpaToolItem());

    panel.Init(other->GetToolData());
    QTest::keyClick(View(panel), Qt::Key_Z, Qt::ControlModifier);

    QCOMPARE(Page()->GetToolData()->GetCount(), count);
    QCOMPARE(other->GetToolData()->GetCount(), 1);
}

void EditorPanels::theTableIsShownOnlyWithColumns()
{
    QWidget host;
    IAppTableWidget* shown = IAppTableWidget::CreateTableWidget(&host);
    RpaTableData* table = Page()->GetTableData();
    while (table->GetColumnCount() > 0)
        table->RemoveColumn(0);
    AppTableEditorWidget panel;
    panel.SetAppTableWidget(shown);
    Bind(panel, table);
    QVERIFY(shown->isHidden());

    Click(panel, "recordAdd");

    QVERIFY(!shown->isHidden());
}

void EditorPanels::dataThatGoesAwayEmptiesThePanel()
{
    AppToolEditorWidget panel;
    Bind(panel, Page()->GetToolData());
    panel.SetAppDataPtr({});

    app.reset();

    QCOMPARE(model->rowCount(), 0);
    Click(panel, "recordAdd");
    QCOMPARE(model->rowCount(), 0);
}

void EditorPanels::columnsStayReadableInANarrowPanel()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light); // its fonts and paddings
    AppParamEditorWidget panel;
    Bind(panel, Page()->GetParamData());
    Click(panel, "recordAdd");
    const QHeaderView* header = View(panel)->horizontalHeader();

    panel.resize(280, 300);

    for (int column = 0; column < header->count(); ++column) {
        const QString title = model->headerData(column, Qt::Horizontal).toString();
        QTRY_VERIFY2(header->sectionSize(column) >=
                         header->fontMetrics().horizontalAdvance(title) + titlePadding,
                     qPrintable(title));
    }
    QVERIFY(View(panel)->horizontalScrollBar()->maximum() > 0);

    panel.resize(900, 300);

    QTRY_COMPARE(header->length(), View(panel)->viewport()->width());
}

void EditorPanels::allParameterColumnsAreSeenBesideTheBrowser()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light); // its fonts and paddings
    AppParamEditorWidget panel;
    Bind(panel, Page()->GetParamData());
    for (int i = 0; i < 8; ++i)
        Click(panel, "recordAdd");

    panel.resize(368, 180); // what a window of 1280 pixels leaves it

    const QTableView* view = View(panel);
    const QHeaderView* header = view->horizontalHeader();
    QTRY_VERIFY(view->verticalScrollBar()->isVisible());
    QTRY_COMPARE(view->horizontalScrollBar()->maximum(), 0);
    QCOMPARE(header->length(), view->viewport()->width());
    for (int column = 0; column < header->count(); ++column) {
        const QString title = model->headerData(column, Qt::Horizontal).toString();
        QVERIFY2(header->sectionSize(column) >= header->fontMetrics().horizontalAdvance(title) + titlePadding,
                 qPrintable(title));
    }

    panel.resize(640, 180);

    QTRY_VERIFY(header->sectionSize(0) >= 100);
    QCOMPARE(header->length(), view->viewport()->width());
}

QTEST_MAIN(EditorPanels)

#include "tst_editorpanels.moc"
