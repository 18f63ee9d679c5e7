// SPDX-License-Identifier: Apache-2.0

#include "CodeExplanation_p.h"
#include "CodeSignatures_p.h"
#include "CompletionItems_p.h"
#include "PythonWords_p.h"
#include "TextPlace_p.h"

#include <QTest>
#include <QTextDocument>

namespace
{
QStringList NamesOf(const CompletionItems& items)
{
    QStringList names;
    for (const CompletionItem& item : items)
        names.append(item.name);
    return names;
}

QVariantMap Signature(const QStringList& parameters, int current)
{
    return {{QStringLiteral("name"), QStringLiteral("f")},
            {QStringLiteral("parameters"), parameters},
            {QStringLiteral("current"), current},
            {QStringLiteral("text"), QStringLiteral("a < b\nnext")}};
}
} // namespace

// What needs neither a window nor a helper.
class tst_CompletionParts : public QObject
{
    Q_OBJECT

private slots:
    void findsPlacesAsPythonCounts_data();
    void findsPlacesAsPythonCounts();
    void staysWithinATextThatIsShorter();
    void filtersWhatWasTyped_data();
    void filtersWhatWasTyped();
    void leavesOutWhatIsNoName();
    void collectsTheWordsAround();
    void findsTheNameAroundAPlace_data();
    void findsTheNameAroundAPlace();
    void saysWhatIsNoName_data();
    void saysWhatIsNoName();
    void marksTheCurrentArgumentAndNothingElse();
    void showsTheFormThatTakesTheArgument();
    void explainsWithinLimits();
};

void tst_CompletionParts::findsPlacesAsPythonCounts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");

    QTest::newRow("begin") << QStringLiteral("ab") << 0 << 1 << 0;
    QTest::newRow("end of an empty text") << QString() << 0 << 1 << 0;
    QTest::newRow("end of a line") << QStringLiteral("ab\ncd") << 2 << 1 << 2;
    QTest::newRow("next line") << QStringLiteral("ab\ncd") << 3 << 2 << 0;
    QTest::newRow("Chinese") << QStringLiteral("名称 = 1") << 2 << 1 << 2;
    QTest::newRow("behind a character of two") << QStringLiteral("'\U0001F600' + x") << 7 << 1 << 6;
}

void tst_CompletionParts::findsPlacesAsPythonCounts()
{
    QFETCH(QString, text);
    QFETCH(int, offset);
    QFETCH(int, line);
    QFETCH(int, column);

    const TextPlace place = TextPlace::Of(text, offset);

    QCOMPARE(place.line, line);
    QCOMPARE(place.column, column);
    QCOMPARE(place.In(text), offset);
}

void tst_CompletionParts::staysWithinATextThatIsShorter()
{
    QCOMPARE((TextPlace{9, 9}.In(QStringLiteral("ab\ncd"))), 5);
    QCOMPARE((TextPlace{1, 9}.In(QStringLiteral("ab\ncd"))), 2);
    QCOMPARE((TextPlace{-3, -3}.In(QStringLiteral("ab"))), 0);
}

void tst_CompletionParts::filtersWhatWasTyped_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QStringList>("names");

    QTest::newRow("nothing: no private names")
        << QString() << QStringLiteral("Path path open_path 名称").split(QLatin1Char(' '));
    QTest::newRow("own case first") << QStringLiteral("pa")
                                    << QStringLiteral("path Path open_path").split(QLatin1Char(' '));
    QTest::newRow("one letter: nothing inside")
        << QStringLiteral("p") << QStringLiteral("path Path").split(QLatin1Char(' '));
    QTest::newRow("inside") << QStringLiteral("_p")
                            << QStringLiteral("_private open_path __path__").split(QLatin1Char(' '));
    QTest::newRow("Chinese") << QStringLiteral("名") << QStringLiteral("名称").split(QLatin1Char(' '));
    QTest::newRow("none") << QStringLiteral("xyz") << QStringList();
}

void tst_CompletionParts::filtersWhatWasTyped()
{
    QFETCH(QString, typed);
    QFETCH(QStringList, names);
    const CompletionItems items = CompletionLists::OfWords(
        QStringLiteral("Path path open_path 名称 _private __path__").split(QLatin1Char(' ')));

    QCOMPARE(NamesOf(CompletionLists::Filter(items, typed)), names);
}

void tst_CompletionParts::leavesOutWhatIsNoName()
{
    const QVariantList list{
        QVariantList{QStringLiteral("ok"), QStringLiteral("function")},
        QVariantList{QStringLiteral("named="), QStringLiteral("param")},
        QVariantList{QStringLiteral("<b>bold</b>"), QStringLiteral("function")},
        QVariantList{QStringLiteral("two words"), QStringLiteral("function")},
        QVariantList{QString(300, QLatin1Char('x')), QStringLiteral("function")},
        QVariantList{QString(), QString()},
        QStringLiteral("no list"),
        42,
    };

    const CompletionItems items = CompletionLists::Of({{QStringLiteral("items"), list}});

    QCOMPARE(NamesOf(items), (QStringLiteral("ok named=").split(QLatin1Char(' '))));
}

void tst_CompletionParts::collectsTheWordsAround()
{
    QTextDocument document;
    document.setPlainText(QStringLiteral("alpha = beta\n名称 = alpha\nalp"));

    const QStringList words = PythonWords::Near(document, document.characterCount() - 1);

    QVERIFY(words.contains(QStringLiteral("alpha")));
    QVERIFY(words.contains(QStringLiteral("beta")));
    QVERIFY(words.contains(QStringLiteral("名称")));
    QVERIFY(words.contains(QStringLiteral("while")));
    QVERIFY(!words.contains(QStringLiteral("alp")));
    QCOMPARE(words.count(QStringLiteral("alpha")), 1);
}

void tst_CompletionParts::findsTheNameAroundAPlace_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("begin");
    QTest::addColumn<int>("end");

    // 0123456789
    // x = 名称_1.y
    QTest::newRow("inside") << 6 << 4 << 8;
    QTest::newRow("in front") << 4 << 4 << 8;
    QTest::newRow("behind") << 8 << 4 << 8;
    QTest::newRow("between blanks") << 3 << 3 << 3;
    QTest::newRow("attribute") << 9 << 9 << 10;
}

void tst_CompletionParts::findsTheNameAroundAPlace()
{
    QFETCH(int, offset);
    QFETCH(int, begin);
    QFETCH(int, end);
    QTextDocument document;
    document.setPlainText(QStringLiteral("x = 名称_1.y"));

    QCOMPARE(PythonWords::BeginOf(document, offset), begin);
    QCOMPARE(offset == 3 ? 3 : PythonWords::EndOf(document, offset), end);
}

void tst_CompletionParts::saysWhatIsNoName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isName");

    QTest::newRow("letters") << QStringLiteral("count") << true;
    QTest::newRow("Chinese") << QStringLiteral("数量2") << true;
    QTest::newRow("underscore") << QStringLiteral("_") << true;
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("digit first") << QStringLiteral("2a") << false;
    QTest::newRow("blank") << QStringLiteral("a b") << false;
    QTest::newRow("sign") << QStringLiteral("a-b") << false;
    QTest::newRow("keyword") << QStringLiteral("class") << false;
}

void tst_CompletionParts::saysWhatIsNoName()
{
    QFETCH(QString, name);
    QFETCH(bool, isName);

    QCOMPARE(PythonWords::ProblemOf(name).isEmpty(), isName);
}

void tst_CompletionParts::marksTheCurrentArgumentAndNothingElse()
{
    const QVariantMap answer{
        {QStringLiteral("signatures"),
         QVariantList{Signature({QStringLiteral("<i>a</i>"), QStringLiteral("b=1")}, 1)}}};

    QCOMPARE(CodeSignatures::TextOf(answer),
             QStringLiteral("f(&lt;i&gt;a&lt;/i&gt;, <b>b=1</b>)<br>a &lt; b<br>next"));
    QCOMPARE(CodeSignatures::TextOf({}), QString());
}

void tst_CompletionParts::showsTheFormThatTakesTheArgument()
{
    const QVariantMap answer{{QStringLiteral("signatures"),
                              QVariantList{Signature({QStringLiteral("one")}, -1),
                                           Signature({QStringLiteral("one"), QStringLiteral("two")}, 1)}}};

    QVERIFY(CodeSignatures::TextOf(answer).contains(QStringLiteral("<b>two</b>")));
}

void tst_CompletionParts::explainsWithinLimits()
{
    const QVariantMap name{
        {QStringLiteral("name"), QStringLiteral("数")},
        {QStringLiteral("kind"), QStringLiteral("statement")},
        {QStringLiteral("values"), QStringLiteral("int").split(QLatin1Char(' '))},
        {QStringLiteral("text"), QStringLiteral("x\n").repeated(500) + QString(500, QLatin1Char('y'))}};

    const QString text = CodeExplanation::TextOf({{QStringLiteral("names"), QVariantList{name}}});

    QVERIFY(text.startsWith(QStringLiteral("变量 数：int\n\nx\n")));
    QVERIFY(text.endsWith(QStringLiteral("\n…")));
    QVERIFY(text.count(QLatin1Char('\n')) <= 30);
    QCOMPARE(CodeExplanation::TextOf({}), QString());
}

QTEST_APPLESS_MAIN(tst_CompletionParts)

#include "tst_completionparts.moc"
