// SPDX-License-Identifier: Apache-2.0

// What a user sends to the author: everything is seen before, and parts are struck.

#include "ReportText.h"
#include "RunAccount.h"
#include "RunReport.h"
#include "TestApp.h"

#include <QCheckBox>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <QtTest>

#include <memory>

namespace
{
const ReportParts abc{{QStringLiteral("A"), QStringLiteral("aaa")},
                      {QStringLiteral("B"), QStringLiteral("b1\nb2")},
                      {QStringLiteral("C"), QStringLiteral("ccc")}};

void Insert(QTextDocument* document, const QString& before, const QString& text)
{
    QTextCursor cursor = document->find(before);
    QVERIFY(!cursor.isNull());
    cursor.setPosition(cursor.selectionStart());
    cursor.insertText(text);
}
} // namespace

class tst_ReportText : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void partsAreTakenOutAndPutBack_data();
    void partsAreTakenOutAndPutBack();
    void whatTheUserWroteComesBackToo();
    void takenOutTwiceIsTakenOutOnce();
    void theDialogOffersEachPart();
    void anAccountTellsARunWithoutItsHistory();
    void anAccountLeavesOutWhatIsNotThere();

private:
    std::unique_ptr<QTextDocument> document;
    std::unique_ptr<ReportText> text;
};

void tst_ReportText::init()
{
    document = std::make_unique<QTextDocument>();
    text = std::make_unique<ReportText>();
    text->Fill(document.get(), abc);
}

void tst_ReportText::partsAreTakenOutAndPutBack_data()
{
    QTest::addColumn<QVector<int>>("order");
    QTest::newRow("one after the other") << QVector<int>{0, 1, 2};
    QTest::newRow("backwards") << QVector<int>{2, 1, 0};
    QTest::newRow("the middle first") << QVector<int>{1, 0, 2};
}

void tst_ReportText::partsAreTakenOutAndPutBack()
{
    QFETCH(QVector<int>, order);
    const QString whole = document->toPlainText();
    QCOMPARE(whole, QStringLiteral("aaa\nb1\nb2\nccc\n"));

    for (const int part : order)
        text->SetIncluded(part, false);
    QCOMPARE(document->toPlainText().trimmed(), QString());
    for (const int part : order)
        text->SetIncluded(part, true);

    QCOMPARE(document->toPlainText(), whole);
    text->SetIncluded(1, false);
    QCOMPARE(document->toPlainText(), QStringLiteral("aaa\n\nccc\n"));
}

void tst_ReportText::whatTheUserWroteComesBackToo()
{
    Insert(document.get(), QStringLiteral("b2"), QStringLiteral("mine "));
    Insert(document.get(), QStringLiteral("aaa"), QStringLiteral("first "));

    text->SetIncluded(1, false);
    QCOMPARE(document->toPlainText(), QStringLiteral("first aaa\n\nccc\n"));
    text->SetIncluded(1, true);

    QCOMPARE(document->toPlainText(), QStringLiteral("first aaa\nb1\nmine b2\nccc\n"));
}

void tst_ReportText::takenOutTwiceIsTakenOutOnce()
{
    text->SetIncluded(0, false);
    text->SetIncluded(0, false);
    text->SetIncluded(0, true);
    text->SetIncluded(0, true);

    QCOMPARE(document->toPlainText(), QStringLiteral("aaa\nb1\nb2\nccc\n"));
}

void tst_ReportText::theDialogOffersEachPart()
{
    const ReportParts kept{{QStringLiteral("变量"), QStringLiteral("工资 = 9000")},
                           {QStringLiteral("运行日志"), QStringLiteral("kept line")}};
    RunReportDialog dialog(RunReportDialog::Parts(QStringLiteral("报销"), QStringLiteral("失败"),
                                                  QStringLiteral("Traceback"), kept),
                           nullptr);
    dialog.show();
    const auto* report = dialog.findChild<QPlainTextEdit*>(QStringLiteral("textReport"));
    QVERIFY(report->toPlainText().contains(QStringLiteral("变量：\n工资 = 9000")));
    QVERIFY(report->toPlainText().contains(QStringLiteral("kept line")));
    QStringList titles;
    QCheckBox* variables = nullptr;
    for (auto* box : dialog.findChildren<QCheckBox*>()) {
        titles << box->text();
        variables = box->text() == QStringLiteral("变量") ? box : variables;
    }
    QCOMPARE(titles,
             (QStringList{QStringLiteral("详细信息"), QStringLiteral("变量"), QStringLiteral("运行日志")}));

    QTest::mouseClick(variables, Qt::LeftButton, {}, QPoint(8, variables->height() / 2));

    QVERIFY(!report->toPlainText().contains(QStringLiteral("工资")));
    QVERIFY(report->toPlainText().contains(QStringLiteral("Traceback")));
}

void tst_ReportText::anAccountTellsARunWithoutItsHistory()
{
    RpaRunRecord run;
    run.parameters = {{QStringLiteral("月"), QStringLiteral("5")}};
    run.packages = QStringList{QStringLiteral("openpyxl 3.1")};
    RpaLogLine line;
    line.text = QStringLiteral("一行");
    RpaRunDetails details;
    const RpaRunPlace place{QStringLiteral("主流程"), QStringLiteral("s3"), 3,
                            QStringLiteral("读取文本文件")};
    details.failure.stack = {{QStringLiteral("f"), place}};
    details.failure.scopes = {
        {QStringLiteral("全局变量"), {{QStringLiteral("x"), QStringLiteral("int"), QStringLiteral("7")}}}};
    for (int i = 0; i < 30; ++i) {
        RpaRunSpan span;
        span.kind = i == 29 ? RpaSpanKind::Position : RpaSpanKind::File;
        span.place = place;
        span.input = QStringLiteral("/f%1.").arg(i);
        details.spans.spans.append(span);
    }

    const auto parts = RunAccount::Parts(run, {line}, details);

    QStringList titles;
    QString spans;
    for (const auto& part : parts) {
        titles << part.first;
        spans = part.first == QStringLiteral("最后的操作") ? part.second : spans;
    }
    QCOMPARE(titles,
             (QStringList{QStringLiteral("参数"), QStringLiteral("扩展包"), QStringLiteral("调用"),
                          QStringLiteral("变量"), QStringLiteral("最后的操作"), QStringLiteral("运行日志")}));
    QCOMPARE(parts.at(0).second, QStringLiteral("月 = 5"));
    QCOMPARE(parts.at(2).second, QStringLiteral("主流程 第 3 步 读取文本文件"));
    QCOMPARE(parts.at(3).second, QStringLiteral("x = 7"));
    QCOMPARE(spans.count(QLatin1Char('\n')), 19);
    QVERIFY(spans.contains(QStringLiteral("/f28.")) && spans.contains(QStringLiteral("/f9.")));
    QVERIFY(!spans.contains(QStringLiteral("/f8.")));
    QVERIFY(parts.last().second.contains(QStringLiteral("一行")));
}

void tst_ReportText::anAccountLeavesOutWhatIsNotThere()
{
    const auto parts = RunAccount::Parts({}, {}, {});

    QCOMPARE(parts.size(), 1);
    QCOMPARE(parts.first().first, QStringLiteral("运行日志"));
}

RPA_TEST_MAIN(tst_ReportText)
#include "tst_reporttext.moc"
