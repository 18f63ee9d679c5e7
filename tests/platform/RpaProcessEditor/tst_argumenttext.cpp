// SPDX-License-Identifier: Apache-2.0

#include "ArgumentText_p.h"

#include <QTest>

Q_DECLARE_METATYPE(RpaArgumentType)

class tst_ArgumentText : public QObject
{
    Q_OBJECT

private slots:
    void storesWhatIsShown_data();
    void storesWhatIsShown();
    void tellsWhatIsWrong_data();
    void tellsWhatIsWrong();
};

void tst_ArgumentText::storesWhatIsShown_data()
{
    QTest::addColumn<RpaArgumentType>("type");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<bool>("python");
    QTest::addColumn<QString>("stored");

    const auto text = RpaArgumentType::Text;
    QTest::newRow("literal") << text << QStringLiteral("a") << false << QStringLiteral("a");
    QTest::newRow("Python") << text << QStringLiteral("a+1") << true << QStringLiteral("=a+1");
    QTest::newRow("Python that begins with =")
        << text << QStringLiteral("=a") << true << QStringLiteral("==a");
    QTest::newRow("quoted =") << text << QStringLiteral("'=a") << false << QStringLiteral("''=a");
    QTest::newRow("two quotes") << text << QStringLiteral("''=a") << false << QStringLiteral("'''=a");
    QTest::newRow("quote without =") << text << QStringLiteral("'a") << false << QStringLiteral("'a");
    QTest::newRow("always Python") << RpaArgumentType::Expression << QStringLiteral("'=a") << false
                                   << QStringLiteral("'=a");
}

void tst_ArgumentText::storesWhatIsShown()
{
    QFETCH(RpaArgumentType, type);
    QFETCH(QString, shown);
    QFETCH(bool, python);
    QFETCH(QString, stored);

    QCOMPARE(ArgumentText::Stored(type, shown, python), stored);
    QCOMPARE(ArgumentText::Shown(type, stored), shown);
    QCOMPARE(ArgumentText::IsPython(type, stored), python);
}

void tst_ArgumentText::tellsWhatIsWrong_data()
{
    QTest::addColumn<RpaArgumentType>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("problem");

    const QString required = QStringLiteral("必须填写");
    QTest::newRow("nothing") << RpaArgumentType::Text << QString() << required;
    QTest::newRow("blanks") << RpaArgumentType::Text << QStringLiteral("  ") << required;
    QTest::newRow("empty expression")
        << RpaArgumentType::Text << QStringLiteral("=") << QStringLiteral("请填写表达式");
    QTest::newRow("open bracket") << RpaArgumentType::Text << QStringLiteral("=f(")
                                  << QStringLiteral("表达式不完整，请检查括号");
    QTest::newRow("text") << RpaArgumentType::Text << QStringLiteral("f(") << QString();
    QTest::newRow("begins with a digit")
        << RpaArgumentType::Variable << QStringLiteral("1a") << QStringLiteral("变量名不能以数字开头");
    QTest::newRow("with a blank") << RpaArgumentType::Variable << QStringLiteral("客户 名")
                                  << QStringLiteral("只能用文字、数字和下划线");
    QTest::newRow("word of Python") << RpaArgumentType::Variable << QStringLiteral("for")
                                    << QStringLiteral("这个名称不能用，请换一个");
    QTest::newRow("process") << RpaArgumentType::Process << QStringLiteral("登录") << QString();
    QTest::newRow("no process") << RpaArgumentType::Process << QStringLiteral("付款")
                                << QStringLiteral("没有这个流程，请重新选择");
    QTest::newRow("element") << RpaArgumentType::Element << QStringLiteral("e1") << QString();
    QTest::newRow("no element") << RpaArgumentType::Element << QStringLiteral("e2")
                                << QStringLiteral("元素已不存在，请重新选择");
    QTest::newRow("no choice") << RpaArgumentType::Choice << QStringLiteral("c")
                               << QStringLiteral("请从列表中选择");
}

void tst_ArgumentText::tellsWhatIsWrong()
{
    QFETCH(RpaArgumentType, type);
    QFETCH(QString, text);
    QFETCH(QString, problem);
    RpaArgumentInfo argument;
    argument.type = type;
    argument.required = true;
    FieldOffers offers;
    offers.processes = QStringList{QStringLiteral("登录")};
    offers.elements = {{QStringLiteral("e1"), QStringLiteral("按钮")}};

    QCOMPARE(ArgumentText::Problem(argument, text, offers), problem);
}

QTEST_APPLESS_MAIN(tst_ArgumentText)
#include "tst_argumenttext.moc"
