// SPDX-License-Identifier: Apache-2.0

#include "PanelForm.h"
#include "ToastWatcher.h"

#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppTool/AppParamEditorWidget.h>
#include <RpaAppTool/AppTableEditorWidget.h>
#include <RpaAppTool/AppToolEditorWidget.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <WbBaseUI/WbEditHistory.h>

#include <QComboBox>

// What the fields of tools, parameters and columns show and take.
class EditorFields : public QObject, private PanelForm
{
    Q_OBJECT

private slots:
    void init() { Start(); }

    void aRefusalIsTold_data();
    void aRefusalIsTold();
    void aToolTakesAProcessOfTheApp();
    void aToolWithoutAnIconShowsTheUsualOne();
    void aSwitchIsOnOrOffByDefault();
    void oneChoiceIsPickedAndSeveralAreTyped();
    void defaultsAreOfTheirType_data();
    void defaultsAreOfTheirType();
    void whatHasNoDefaultTakesNone_data();
    void whatHasNoDefaultTakesNone();
    void whatCanBeMissingMayBeRequired();
    void anotherTypeHasLimitsOfItsOwn();
    void aColumnKeepsWhatFitsItsNewType();

private:
    static QStringList Titles(const QComboBox& combo)
    {
        QStringList titles;
        for (int i = 0; i < combo.count(); ++i)
            titles << combo.itemText(i);
        return titles;
    }
    // The columns of the parameters.
    static constexpr int typeColumn = 2;
    static constexpr int defaultColumn = 3;
    static constexpr int requiredColumn = 4;
    static constexpr int limitsColumn = 5;
    void AddParam(AppParamEditorWidget& panel, RpaParamType type)
    {
        Bind(panel, Page()->GetParamData());
        Add(panel);
        if (type != RpaParamType::Text)
            QVERIFY(Write(0, typeColumn, static_cast<int>(type)));
    }
};

void EditorFields::aRefusalIsTold_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("told");
    QTest::newRow("no name") << 0 << QStringLiteral(" ") << QStringLiteral("参数名称为 1 到 40 个字符");
    QTest::newRow("a long name") << 0 << QString(41, QLatin1Char('x'))
                                 << QStringLiteral("参数名称为 1 到 40 个字符");
    QTest::newRow("a taken name") << 0 << QStringLiteral("参数2") << QStringLiteral("参数名称“参数2”已存在");
    QTest::newRow("a bad form") << limitsColumn << QStringLiteral("(")
                                << QStringLiteral("“(”不是有效的格式：请选择一种，或输入不超过 200 "
                                                  "个字符的正则表达式");
}

void EditorFields::aRefusalIsTold()
{
    QFETCH(int, column);
    QFETCH(QString, typed);
    QFETCH(QString, told);
    AppParamEditorWidget panel;
    Bind(panel, Page()->GetParamData());
    Add(panel);
    Add(panel);
    app->SetModified(false);
    ToastWatcher toasts;

    QVERIFY(!Write(0, column, typed));

    QCOMPARE(toasts.GetTexts(), QStringList{told});
    QVERIFY(!app->GetModified());
    QVERIFY(Write(0, 0, QString(40, QLatin1Char('x'))));
}

void EditorFields::aToolTakesAProcessOfTheApp()
{
    AppToolEditorWidget panel;
    Bind(panel, Page()->GetToolData());
    app->GetProcessDataManager()->AddProcess(QStringLiteral("对账"));
    View(panel)->setCurrentIndex(model->index(0, 2));
    View(panel)->edit(model->index(0, 2));
    auto* combo = View(panel)->findChild<QComboBox*>();
    QVERIFY(combo);
    QCOMPARE(Titles(*combo), (QStringList{QStringLiteral("主流程"), QStringLiteral("对账")}));
    QCOMPARE(combo->currentText(), QStringLiteral("主流程"));

    combo->setCurrentIndex(1);
    emit combo->activated(1);

    QTRY_COMPARE(Page()->GetToolData()->GetItem(0).processName, QStringLiteral("对账"));
    QVERIFY(Write(0, 2, QString()));
    QCOMPARE(Shown(0, 2), QVariant(QStringLiteral("（未选择）")));
}

void EditorFields::aToolWithoutAnIconShowsTheUsualOne()
{
    AppToolEditorWidget panel;
    Bind(panel, Page()->GetToolData());
    QCOMPARE(Shown(0, 1, Qt::AccessibleTextRole), QVariant(QStringLiteral("run")));
    QVERIFY(!Shown(0, 1, Qt::DecorationRole).isNull());

    QVERIFY(Write(0, 1, QStringLiteral("web")));

    QCOMPARE(Page()->GetToolData()->GetItem(0).icon, QStringLiteral("web"));
    QCOMPARE(Shown(0, 1, Qt::EditRole), QVariant(QStringLiteral("web")));
    QVERIFY(!Shown(0, 1).isValid());
}

void EditorFields::aSwitchIsOnOrOffByDefault()
{
    AppParamEditorWidget panel;
    AddParam(panel, RpaParamType::Switch);
    QCOMPARE(Shown(0, defaultColumn), QVariant(QStringLiteral("关")));
    View(panel)->edit(model->index(0, defaultColumn));
    auto* combo = View(panel)->findChild<QComboBox*>();
    QVERIFY(combo);
    QCOMPARE(Titles(*combo), (QStringList{QStringLiteral("关"), QStringLiteral("开")}));
    QCOMPARE(combo->currentText(), QStringLiteral("关"));

    combo->setCurrentIndex(1);
    emit combo->activated(1);

    QTRY_COMPARE(Shown(0, defaultColumn), QVariant(QStringLiteral("开")));
    QCOMPARE(Page()->GetParamData()->GetItem(0).defaultValue, QVariant(true));
}

void EditorFields::oneChoiceIsPickedAndSeveralAreTyped()
{
    AppParamEditorWidget panel;
    AddParam(panel, RpaParamType::Choices);
    QVERIFY(Write(0, limitsColumn, QStringLiteral("甲，乙")));
    View(panel)->edit(model->index(0, defaultColumn));
    QVERIFY(!View(panel)->findChild<QComboBox*>());
    QTest::keyClick(View(panel)->findChild<QLineEdit*>(), Qt::Key_Escape);
    QTRY_VERIFY(!View(panel)->findChild<QLineEdit*>());

    QVERIFY(Write(0, typeColumn, int(RpaParamType::Choice)));
    View(panel)->edit(model->index(0, defaultColumn));

    auto* combo = View(panel)->findChild<QComboBox*>();
    QVERIFY(combo);
    QCOMPARE(Titles(*combo), (QStringList{QStringLiteral("甲"), QStringLiteral("乙")}));
}

void EditorFields::defaultsAreOfTheirType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("refused");
    QTest::newRow("number") << int(RpaParamType::Number) << QStringLiteral("1,234.5")
                            << QStringLiteral("1234.5") << QStringLiteral("很多");
    QTest::newRow("date") << int(RpaParamType::Date) << QStringLiteral("2024年2月9日")
                          << QStringLiteral("2024-02-09") << QStringLiteral("2023-02-29");
    QTest::newRow("moment") << int(RpaParamType::DateTime) << QStringLiteral("2024/2/9 8:05")
                            << QStringLiteral("2024-02-09 08:05") << QStringLiteral("8:05");
    QTest::newRow("files") << int(RpaParamType::Files) << QStringLiteral("a.csv、b.csv")
                           << QStringLiteral("a.csv，b.csv") << QString();
}

void EditorFields::defaultsAreOfTheirType()
{
    QFETCH(int, type);
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    QFETCH(QString, refused);
    AppParamEditorWidget panel;
    AddParam(panel, static_cast<RpaParamType>(type));

    QVERIFY(Write(0, defaultColumn, typed));
    QCOMPARE(Shown(0, defaultColumn).toString(), shown);
    QVERIFY(refused.isEmpty() || !Write(0, defaultColumn, refused));
    QCOMPARE(Shown(0, defaultColumn).toString(), shown);
    QVERIFY(Write(0, defaultColumn, QStringLiteral("  ")));

    QVERIFY(!Page()->GetParamData()->GetItem(0).defaultValue.isValid());
}

void EditorFields::whatHasNoDefaultTakesNone_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("password") << int(RpaParamType::Password);
    QTest::newRow("group") << int(RpaParamType::Group);
    QTest::newRow("progress") << int(RpaParamType::Progress);
    QTest::newRow("picture") << int(RpaParamType::Picture);
}

void EditorFields::whatHasNoDefaultTakesNone()
{
    QFETCH(int, type);
    AppParamEditorWidget panel;
    AddParam(panel, static_cast<RpaParamType>(type));

    QVERIFY(!(model->index(0, defaultColumn).flags() & Qt::ItemIsEnabled));
    QVERIFY(!Write(0, defaultColumn, QStringLiteral("50")));

    QVERIFY(!Page()->GetParamData()->GetItem(0).defaultValue.isValid());
}

void EditorFields::whatCanBeMissingMayBeRequired()
{
    AppParamEditorWidget panel;
    AddParam(panel, RpaParamType::Text);
    QCOMPARE(Shown(0, requiredColumn, Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
    QVERIFY(Write(0, requiredColumn, Qt::Checked, Qt::CheckStateRole));
    QVERIFY(Page()->GetParamData()->GetItem(0).required);
    QCOMPARE(Shown(0, requiredColumn, Qt::CheckStateRole).toInt(), int(Qt::Checked));

    // Of a type that cannot be missing: only to be taken back.
    QVERIFY(Write(0, typeColumn, int(RpaParamType::Switch)));
    QVERIFY(Write(0, requiredColumn, Qt::Unchecked, Qt::CheckStateRole));

    QVERIFY(!Shown(0, requiredColumn, Qt::CheckStateRole).isValid());
    QVERIFY(!Write(0, requiredColumn, Qt::Checked, Qt::CheckStateRole));
    QVERIFY(!Page()->GetParamData()->GetItem(0).required);
}

void EditorFields::anotherTypeHasLimitsOfItsOwn()
{
    AppParamEditorWidget panel;
    AddParam(panel, RpaParamType::Number);
    QVERIFY(Write(0, limitsColumn, QStringLiteral("1~9")));

    QVERIFY(Write(0, typeColumn, int(RpaParamType::Slider)));

    QCOMPARE(Shown(0, limitsColumn).toString(), QString());
    QCOMPARE(Shown(0, typeColumn).toString(), QStringLiteral("滑块"));
    WbEditHistory::Instance()->Undo();
    QCOMPARE(Shown(0, limitsColumn).toString(), QStringLiteral("1~9"));
}

void EditorFields::aColumnKeepsWhatFitsItsNewType()
{
    AppTableEditorWidget panel;
    RpaTableData* const table = Page()->GetTableData();
    Bind(panel, table);
    Add(panel);
    Add(panel);
    QCOMPARE(table->InsertRows(-1, {{QStringLiteral("12")}, {QStringLiteral("x")}}), 0);
    QVERIFY(!Write(1, 0, QStringLiteral("列1")));
    QVERIFY(Write(0, 0, QStringLiteral(" 金额 ")));
    QCOMPARE(table->GetColumnNames(), (QStringList{QStringLiteral("金额"), QStringLiteral("列2")}));

    QVERIFY(Write(0, 1, int(RpaColumnType::Number)));
    QCOMPARE(table->GetCell(0, 0), QVariant(12.0));
    QVERIFY(!table->GetCell(1, 0).isValid());
    WbEditHistory::Instance()->Undo();

    QCOMPARE(table->GetCell(1, 0), QVariant(QStringLiteral("x")));
    QCOMPARE(Shown(0, 1).toString(), QStringLiteral("文本"));
}

QTEST_MAIN(EditorFields)

#include "tst_editorfields.moc"
