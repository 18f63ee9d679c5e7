// SPDX-License-Identifier: Apache-2.0

#include <RpaProcessData/RpaValue.h>

#include <QtTest>

Q_DECLARE_METATYPE(RpaValue)

class RpaValueTest : public QObject
{
    Q_OBJECT

private slots:
    void readsPythonAsPieces_data();
    void readsPythonAsPieces();
    void leavesCalculationsToTheExpression_data();
    void leavesCalculationsToTheExpression();
    void writesPieces_data();
    void writesPieces();
};

namespace
{
// "T:" text, "N:" number, "C:" code; one line each.
QString Shown(const RpaValue& value)
{
    QStringList parts;
    for (const RpaValuePart& part : value.parts)
        parts << QString(QLatin1Char("TNC"[int(part.kind)])) + QLatin1Char(':') + part.text;
    return parts.join(QLatin1Char('|'));
}
} // namespace

void RpaValueTest::readsPythonAsPieces_data()
{
    QTest::addColumn<QString>("python");
    QTest::addColumn<QString>("pieces");
    const auto row = [](const char* name, const char* python, const char* pieces) {
        QTest::newRow(name) << QString::fromUtf8(python) << QString::fromUtf8(pieces);
    };
    row("nothing", " ", "");
    row("text", R"("完成")", "T:完成");
    row("text in single quotes", "'a\"b'", "T:a\"b");
    row("empty text", R"("")", "T:");
    row("escapes", R"("a\n\"\\\u4e2d")", "T:a\n\"\\中");
    row("escape that is rare", R"("\x41")", R"(C:"\x41")");
    row("raw text", R"(r"\d")", R"(C:r"\d")");
    row("number", "3.50", "N:3.50");
    row("negative number", "-7", "N:-7");
    row("number of another kind", "0x1F", "C:0x1F");
    row("variable", " 数量 ", "C:数量");
    row("item and attribute", "行[\"金额\"].x", "C:行[\"金额\"].x");
    row("calculation", "a + b", "C:a + b");
    row("text with a variable", R"(f"订单{编号}号")", "T:订单|C:编号|T:号");
    row("text with braces", R"(f"{{{x}}}")", "T:{|C:x|T:}");
    row("text with a format", R"(f"{x:.2f}")", R"(C:f"{x:.2f}")");
    row("joined text", R"("共" + str(len(行)) + "人")", "T:共|C:len(行)|T:人");
    row("unclosed", "\"a", "C:\"a");
}

void RpaValueTest::readsPythonAsPieces()
{
    QFETCH(QString, python);
    QFETCH(QString, pieces);

    QCOMPARE(Shown(RpaValue::Read(python)), pieces);
}

void RpaValueTest::leavesCalculationsToTheExpression_data()
{
    QTest::addColumn<QString>("python");
    QTest::addColumn<bool>("shown");
    QTest::newRow("variable") << QStringLiteral("a") << true;
    QTest::newRow("call") << QStringLiteral("len(a)") << true;
    QTest::newRow("texts and variables") << QStringLiteral("f\"x{a}\"") << true;
    QTest::newRow("sum") << QStringLiteral("1 + 2") << false;
    QTest::newRow("text and bare variable") << QStringLiteral("\"x\" + a") << false;
    QTest::newRow("two arguments") << QStringLiteral("\"x\" + str(a, b)") << false;
    QTest::newRow("choice") << QStringLiteral("a if b else c") << false;
    QTest::newRow("unclosed") << QStringLiteral("len(a") << false;
}

void RpaValueTest::leavesCalculationsToTheExpression()
{
    QFETCH(QString, python);
    QFETCH(bool, shown);

    QCOMPARE(RpaValue::ReadText(python).has_value(), shown);
}

void RpaValueTest::writesPieces_data()
{
    QTest::addColumn<RpaValue>("value");
    QTest::addColumn<QString>("python");
    using Kind = RpaValuePart::Kind;
    const RpaValuePart text{Kind::Text, QStringLiteral("订\"{单")};
    const RpaValuePart code{Kind::Code, QStringLiteral("编号")};
    const RpaValuePart quoted{Kind::Code, QStringLiteral("d[\"k\"]")};
    QTest::newRow("nothing") << RpaValue() << QString();
    QTest::newRow("text") << RpaValue{{text}, false} << QStringLiteral(R"("订\"{单")");
    QTest::newRow("number") << RpaValue::Number(QStringLiteral("3.50")) << QStringLiteral("3.50");
    QTest::newRow("variable") << RpaValue{{code}, false} << QStringLiteral("编号");
    QTest::newRow("variable as text") << RpaValue{{code}, true} << QStringLiteral(R"(f"{编号}")");
    QTest::newRow("joined") << RpaValue{{text, code}, false} << QStringLiteral(R"(f"订\"{{单{编号}")");
    QTest::newRow("quotes in the code")
        << RpaValue{{text, quoted}, false} << QStringLiteral(R"("订\"{单" + str(d["k"]))");
}

void RpaValueTest::writesPieces()
{
    QFETCH(RpaValue, value);
    QFETCH(QString, python);

    QCOMPARE(value.ToPython(), python);
    QCOMPARE(Shown(RpaValue::Read(value.ToPython())), Shown(value));
}

QTEST_GUILESS_MAIN(RpaValueTest)

#include "tst_rpavalue.moc"
