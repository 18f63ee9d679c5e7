// SPDX-License-Identifier: Apache-2.0

#include "CodeHighlighter_p.h"
#include "TestApp.h"

#include <WbBaseUI/WbTheme.h>

#include <QSyntaxHighlighter>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

class tst_PythonHighlighter : public QObject
{
    Q_OBJECT

private slots:
    void coloursPython_data();
    void coloursPython();
    void carriesTripleQuotesOverLines();
};

namespace
{
QColor ColourAt(const QTextDocument& document, int line, int column)
{
    const auto formats = document.findBlockByNumber(line).layout()->formats();
    for (const QTextLayout::FormatRange& range : formats)
        if (column >= range.start && column < range.start + range.length)
            return range.format.foreground().color();
    return QColor();
}
} // namespace

void tst_PythonHighlighter::coloursPython_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("colour");

    QTest::newRow("keyword") << QStringLiteral("if x:") << 0 << int(WbColor::CodeKeyword);
    QTest::newRow("keyword behind text") << QStringLiteral("x = not y") << 5 << int(WbColor::CodeKeyword);
    QTest::newRow("string") << QStringLiteral("x = 'a\\'b'") << 8 << int(WbColor::CodeString);
    QTest::newRow("string that is not closed")
        << QStringLiteral("x = \"abc") << 7 << int(WbColor::CodeString);
    QTest::newRow("number") << QStringLiteral("x = 1.5e3") << 8 << int(WbColor::CodeNumber);
    QTest::newRow("comment") << QStringLiteral("x # if") << 5 << int(WbColor::CodeComment);
    QTest::newRow("call") << QStringLiteral("print(x)") << 2 << int(WbColor::CodeFunction);
    QTest::newRow("chinese name") << QStringLiteral("打印(x)") << 0 << int(WbColor::CodeFunction);
    QTest::newRow("hash inside a string") << QStringLiteral("'#' + x") << 1 << int(WbColor::CodeString);
    QTest::newRow("keyword inside a name") << QStringLiteral("iffy = 1") << 0 << -1;
}

void tst_PythonHighlighter::coloursPython()
{
    QFETCH(QString, text);
    QFETCH(int, column);
    QFETCH(int, colour);
    QTextDocument document(text);
    const auto highlighter = MakePythonHighlighter(document);

    highlighter->rehighlight();

    const QColor expected = colour < 0 ? QColor() : WbTheme::Instance()->Color(WbColor(colour));
    QCOMPARE(ColourAt(document, 0, column), expected);
}

void tst_PythonHighlighter::carriesTripleQuotesOverLines()
{
    QTextDocument document(QStringLiteral("x = \"\"\"a\nif\n\"\"\" ; if\nif"));
    const auto highlighter = MakePythonHighlighter(document);

    highlighter->rehighlight();

    const QColor string = WbTheme::Instance()->Color(WbColor::CodeString);
    const QColor keyword = WbTheme::Instance()->Color(WbColor::CodeKeyword);
    QCOMPARE(ColourAt(document, 1, 0), string);
    QCOMPARE(ColourAt(document, 2, 0), string);
    QCOMPARE(ColourAt(document, 2, 6), keyword);
    QCOMPARE(ColourAt(document, 3, 0), keyword);
}

RPA_TEST_MAIN(tst_PythonHighlighter)

#include "tst_pythonhighlighter.moc"
