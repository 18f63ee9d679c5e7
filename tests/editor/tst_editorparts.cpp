// SPDX-License-Identifier: Apache-2.0

// How the editor's parts are laid out, and that each of them shows the version that is open.
#include "EditorCalls.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <OxBase/DpiTool.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessEditor/ProcessProgramEditorWidget.h>
#include <RpaProcessEditor/ProcessVisualEditorWidget.h>
#include <WbBaseUI/WbIconButtonWidget.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QTabBar>
#include <QTextEdit>
#include <QtTest>

class EditorPartsTest : public EditorCalls
{
    Q_OBJECT

private slots:
    void keepsTheSaveButtonApartFromTheVersions()
    {
        author = std::make_unique<EditorDriver>();
        auto* bar = author->Find("widgetTop")->layout();
        const QSpacerItem* apart =
            bar->itemAt(bar->indexOf(author->Find("pushButtonSave")) - 1)->spacerItem();
        QVERIFY(apart);

        for (const qreal scale : {1.0, 2.0}) {
            DpiTool::SetScale(scale);
            QCOMPARE(apart->sizeHint(), QSize(DpiTool::ScaleDefault(16), 1));
        }
        DpiTool::SetScale(1.0);
        QCOMPARE(apart->sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
        QCOMPARE(apart->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
        const int gap =
            author->Find("pushButtonSave")->x() - author->Find("version_combo")->geometry().right() - 1;
        QCOMPARE(gap, 16 + bar->spacing());
    }

    void hasRoomForAVersionOfAUsualName()
    {
        author = std::make_unique<EditorDriver>();

        QCOMPARE(author->Find<QComboBox>("version_combo")->minimumContentsLength(), 14);
    }

    void hasACursorOfItsOwn()
    {
        author = std::make_unique<EditorDriver>();

        QVERIFY(author->GetEditor()->testAttribute(Qt::WA_SetCursor));
    }

    void sharesItsWidthBetweenPagesAndBrowser()
    {
        Open();
        const auto* splitter = author->Find<QSplitter>("splitter");
        const auto share = [splitter] { return splitter->sizes().at(0) / qreal(splitter->sizes().at(1)); };

        for (const int width : {1900, 2800}) {
            author->GetEditor()->resize(width, 800);
            QTRY_VERIFY2(qAbs(share() - 2.5) < 0.3, qPrintable(QString::number(share())));
        }
    }

    void showsTheStatementsOfTheOpenVersion()
    {
        Open(Versions(), Content(QStringLiteral("1"), StatementsOf(QStringLiteral("甲"))));
        author->ShowPage("pushButtonProcess");
        QCOMPARE(Statements(), QStringList(QStringLiteral("甲")));
        QCOMPARE(author->Find("pageProcess")->layout()->contentsMargins(), QMargins());
        QCOMPARE(author->Find("pageProcess")->layout()->count(), 1);
        QVERIFY(author->Find("pageProcess")->findChild<ProcessVisualEditorWidget*>()->isVisible());

        PickWithoutData(QStringLiteral("乙版"));
        StandInRequests::AnswerData(Content(QStringLiteral("2"), StatementsOf(QStringLiteral("乙"))));

        QCOMPARE(Statements(), QStringList(QStringLiteral("乙")));
    }

    void showsTheProgramOfTheOpenVersion()
    {
        const auto program = [](const QString& text) {
            return [text](RpaAppData& content) {
                content.GetProcessDataManager()->GetProcess(0)->SetProgramText(text);
            };
        };
        Open(Versions(), Content(QStringLiteral("1"), program(QStringLiteral("print(1)"))), 1);
        author->ShowPage("pushButtonProcess");
        const auto* code = author->Find<QPlainTextEdit>("codeEdit");
        QCOMPARE(code->toPlainText(), QStringLiteral("print(1)"));
        QVERIFY(author->Find("pageProcess")->findChild<ProcessProgramEditorWidget*>()->isVisible());

        PickWithoutData(QStringLiteral("乙版"));
        StandInRequests::AnswerData(Content(QStringLiteral("2"), program(QStringLiteral("print(2)"))));

        QCOMPARE(code->toPlainText(), QStringLiteral("print(2)"));
    }

    void goesFromALogLineToTheLineOfTheProgram()
    {
        Open(Versions(),
             Content(QStringLiteral("1"),
                     [](RpaAppData& content) {
                         content.GetProcessDataManager()->GetProcess(0)->SetProgramText(
                             QStringLiteral("1\n2\n3\n4"));
                     }),
             1);
        author->ShowPage("pushButtonUI");

        QVERIFY(QMetaObject::invokeMethod(author->Find("pageUIDesign"), "SigShowLine", Q_ARG(int, 3)));

        QVERIFY(author->Find<WbIconButtonWidget>("pushButtonProcess")->bSelected);
        QCOMPARE(author->Find<QPlainTextEdit>("codeEdit")->textCursor().blockNumber(), 2);
    }

    void goesNowhereFromALogLineOfAProgramThatIsNotThere()
    {
        author = std::make_unique<EditorDriver>();
        QVERIFY(QMetaObject::invokeMethod(author->Find("pageUIDesign"), "SigShowLine", Q_ARG(int, 3)));

        Open(Versions(), Content(QStringLiteral("1")));
        QVERIFY(QMetaObject::invokeMethod(author->Find("pageUIDesign"), "SigShowLine", Q_ARG(int, 3)));

        QVERIFY(author->Find<WbIconButtonWidget>("pushButtonUI")->bSelected);
    }

    void showsAVersionPartByPart()
    {
        const auto named = [](const QString& name) {
            return [name](RpaAppData& content) {
                StatementsOf(name)(content);
                content.GetUIDataManager()->UpdateUIData(0, name);
            };
        };
        Open(Versions(), Content(QStringLiteral("text 1"), named(QStringLiteral("甲"))));
        author->ShowPage("pushButtonProcess");
        const auto* tabs = author->Find("widgetTabBar")->findChild<QTabBar*>();
        QStringList shown;
        const QObject here; // hears nothing any more when the test is over
        connect(author->Find<QTextEdit>("richTextView"), &QTextEdit::textChanged, &here,
                [&] { shown.append(QStringLiteral("text after page ") + tabs->tabText(0)); });
        connect(author->Find<QAbstractItemView>("statementView")->model(), &QAbstractItemModel::modelReset,
                &here,
                [&] { shown.append(QStringLiteral("statements after ") + author->GetInstructions()); });
        PickWithoutData(QStringLiteral("乙版"));
        QCOMPARE(shown, QStringList());

        StandInRequests::AnswerData(Content(QStringLiteral("text 2"), named(QStringLiteral("乙"))));

        shown.removeDuplicates();
        QCOMPARE(shown, QStringList({QStringLiteral("text after page 乙"),
                                     QStringLiteral("statements after text 2")}));
    }

    void goesNowhereFromALogLineWithoutStatements()
    {
        const auto press = [this] {
            QVERIFY(QMetaObject::invokeMethod(author->Find("pageUIDesign"), "SigShowStatement",
                                              Q_ARG(QString, QStringLiteral("gone"))));
        };
        ToastWatcher toasts;
        author = std::make_unique<EditorDriver>();
        press();

        Open(Versions(), Content(QStringLiteral("1")), 1);
        press();

        QCOMPARE(toasts.GetTexts(), QStringList());
        QVERIFY(author->Find<WbIconButtonWidget>("pushButtonUI")->bSelected);
    }

    void showsTheNextAppThatItIsGiven()
    {
        Open();
        RobotExecuteInfo next = App();
        next.SetAppId(QStringLiteral("app2"));
        next.SetAppName(QStringLiteral("应用二"));
        next.SetCreator(QStringLiteral("somebody else"));

        author->GetEditor()->SetExecuteInfo(next);

        QCOMPARE(CallLog::Take(), QStringList(QStringLiteral("list app2")));
        QCOMPARE(author->Find<QLabel>("labelName")->text(), QStringLiteral("应用二"));
        StandInRequests::AnswerList(Versions());
        QVERIFY(author->Find("pushButtonBeta")->isHidden());
        QVERIFY(author->Find("pushButtonPublish")->isHidden());
    }

    void isNotScaledAnyMoreOnceItIsGone()
    {
        Open();
        author.reset();

        DpiTool::SetScale(2.0);
        QCOMPARE(DpiTool::GetScale(), 2.0);
        DpiTool::SetScale(1.0);
    }

private:
    static Fill StatementsOf(const QString& name)
    {
        return [name](RpaAppData& content) {
            RpaStatement statement;
            statement.id = name;
            statement.command = QStringLiteral("variable.set");
            statement.arguments = {{QStringLiteral("name"), name},
                                   {QStringLiteral("value"), QStringLiteral("1")}};
            content.GetProcessDataManager()->GetProcess(0)->Insert(QString(), -1, {statement});
        };
    }

    // Their ids.
    QStringList Statements() const
    {
        const auto* model = author->Find<QAbstractItemView>("statementView")->model();
        QStringList ids;
        for (int row = 0; row < model->rowCount(); ++row)
            ids.append(model->index(row, 0).data(Qt::UserRole).toString());
        return ids;
    }
};

RPA_TEST_MAIN(EditorPartsTest)
#include "tst_editorparts.moc"
