// SPDX-License-Identifier: Apache-2.0

#include "EditorFixture.h"
#include "TestApp.h"

#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaProcessEditor/ProcessProgramEditorWidget.h>
#include <WbBaseUI/ElidedLabelEx.h>
#include <WbBaseUI/WbTheme.h>

#include <QPlainTextEdit>
#include <QTest>
#include <QTextBlock>

using namespace EditorFixture;

namespace
{
RpaCheckInfo FailureAt(int line)
{
    RpaCheckInfo info;
    info.processName = QStringLiteral("主流程");
    info.rule = QStringLiteral("run-failed");
    info.message = QStringLiteral("除数为零");
    info.line = line;
    return info;
}

void Tell(const QList<RpaCheckInfo>& list)
{
    emit RpaEngineModule::Instance()->GetEngineDebugger()->SigCheckNode(list);
}
} // namespace

// Where a run of a program failed, and the hint where there is no program yet.
class tst_ProgramFailure : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void marksTheLineAndSaysWhy();
    void theMarkGoesWithTheNextEdit();
    void theMarkGoesWithTheNextRun();
    void theMarkGoesWithTheProgram();
    void marksNothingOfAnotherPlace_data();
    void marksNothingOfAnotherPlace();
    void showsALine();
    void theHintIsNotPaintedOver();

private:
    void Show(const QString& program);
    QList<int> MarkedLines() const;
    QString Failure() const
    {
        return widget->findChild<ElidedLabelEx*>(QStringLiteral("labelFailure"))->GetText();
    }

    RpaAppDataPtr app;
    std::unique_ptr<ProcessProgramEditorWidget> widget;
    QPlainTextEdit* edit = nullptr;
};

void tst_ProgramFailure::init()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    Show(QStringLiteral("a = 1\nb = a / 0\nc = 3\nd = 4"));
}

void tst_ProgramFailure::Show(const QString& program)
{
    app = App();
    Main(app)->SetProgramText(program);
    widget = std::make_unique<ProcessProgramEditorWidget>();
    widget->resize(700, 400);
    widget->SetRpaAppData(app);
    widget->show();
    edit = widget->findChild<QPlainTextEdit*>(QStringLiteral("codeEdit"));
}

QList<int> tst_ProgramFailure::MarkedLines() const
{
    QList<int> lines;
    const auto marks = edit->extraSelections();
    for (const QTextEdit::ExtraSelection& mark : marks)
        if (mark.format.background().color() == WbTheme::Instance()->Color(WbColor::DangerSoft))
            lines.append(mark.cursor.blockNumber() + 1);
    return lines;
}

void tst_ProgramFailure::marksTheLineAndSaysWhy()
{
    QCOMPARE(MarkedLines(), QList<int>());
    QCOMPARE(Failure(), QString());

    Tell({FailureAt(2)});

    QCOMPARE(MarkedLines(), QList<int>({2}));
    QCOMPARE(Failure(), QStringLiteral("第 2 行：除数为零"));
}

void tst_ProgramFailure::theMarkGoesWithTheNextEdit()
{
    Tell({FailureAt(2)});
    WbTheme::Instance()->Apply(WbTheme::Scheme::Dark); // other colours are no edit
    QCOMPARE(MarkedLines(), QList<int>({2}));

    QTest::keyClicks(edit, QStringLiteral("x"));

    QCOMPARE(MarkedLines(), QList<int>());
    QCOMPARE(Failure(), QString());
}

void tst_ProgramFailure::theMarkGoesWithTheNextRun()
{
    Tell({FailureAt(3)});

    Tell({});

    QCOMPARE(MarkedLines(), QList<int>());
    QCOMPARE(Failure(), QString());
}

void tst_ProgramFailure::theMarkGoesWithTheProgram()
{
    Tell({FailureAt(3)});

    Main(app)->SetProgramText(QStringLiteral("1\n2\n3\n4\n5"));

    QCOMPARE(MarkedLines(), QList<int>());
}

void tst_ProgramFailure::marksNothingOfAnotherPlace_data()
{
    QTest::addColumn<RpaCheckInfo>("info");

    QTest::newRow("beyond the end") << FailureAt(5);
    RpaCheckInfo other = FailureAt(2);
    other.processName = QStringLiteral("别的流程");
    QTest::newRow("another process") << other;
    QTest::newRow("a statement") << FailureAt(0);
}

void tst_ProgramFailure::marksNothingOfAnotherPlace()
{
    QFETCH(RpaCheckInfo, info);

    Tell({info});

    QCOMPARE(MarkedLines(), QList<int>());
    QCOMPARE(Failure(), QString());
}

void tst_ProgramFailure::showsALine()
{
    widget->ShowLine(3);
    QCOMPARE(edit->textCursor().blockNumber(), 2);

    widget->ShowLine(99);
    QCOMPARE(edit->textCursor().blockNumber(), 3);
}

void tst_ProgramFailure::theHintIsNotPaintedOver()
{
    Show(QString());
    const auto coloursOfTheFirstLine = [this] {
        // Beside the cursor, and below the margin.
        const QRect text(20, 8, 200, edit->fontMetrics().height() - 8);
        const QImage line = edit->viewport()->grab(text).toImage();
        QSet<QRgb> colours;
        for (int x = 0; x < line.width(); ++x)
            for (int y = 0; y < line.height(); ++y)
                colours.insert(line.pixel(x, y));
        return colours.size();
    };
    QVERIFY(coloursOfTheFirstLine() > 1);

    QTest::keyClicks(edit, QStringLiteral("x"));
    QTest::keyClick(edit, Qt::Key_Home);
    QCOMPARE(coloursOfTheFirstLine(), 1); // the line of the cursor is marked
    QTest::keyClick(edit, Qt::Key_Delete);
    QVERIFY(coloursOfTheFirstLine() > 1);
}

RPA_TEST_MAIN(tst_ProgramFailure)

#include "tst_programfailure.moc"
