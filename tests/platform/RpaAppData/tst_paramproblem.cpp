// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTextPattern.h>
#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

#include <QDate>
#include <QDateTime>
#include <QtTest>

namespace
{
RpaParamItem Param(RpaParamType type)
{
    RpaParamItem item;
    item.name = QStringLiteral("name");
    item.label = QStringLiteral("数量");
    item.type = type;
    return item;
}

RpaParamItem Required(RpaParamType type)
{
    RpaParamItem item = Param(type);
    item.required = true;
    return item;
}

RpaParamItem Ranged(const QVariant& least, const QVariant& most, const QVariant& value)
{
    RpaParamItem item =
        Param(value.userType() == QMetaType::QDate ? RpaParamType::Date : RpaParamType::Number);
    item.least = least;
    item.most = most;
    item.value = value;
    return item;
}

RpaParamItem OfPattern(const QString& pattern, const QString& value)
{
    RpaParamItem item = Param(RpaParamType::Text);
    item.pattern = pattern;
    item.value = value;
    return item;
}
} // namespace

// What keeps a run from starting with a parameter.
class ParamProblem : public QObject
{
    Q_OBJECT

private slots:
    void tellsWhatIsMissing_data();
    void tellsWhatIsMissing();
    void tellsWhatIsOutOfRangeOrForm_data();
    void tellsWhatIsOutOfRangeOrForm();
    void aPatternThatTriesForEverIsGivenUp();
    void everyKnownPatternTakesItsExample();
    void limitsSurviveTheJson();
    void limitsOfAnotherTypeAreDropped();
    void everyTypeSurvivesTheJson_data();
    void everyTypeSurvivesTheJson();
    void aTypeOfANewerClientIsKeptWithItsSettings();
    void listsAndMomentsAreDemanded();
    void filesHaveTheirEndings();
    void whatRunsShowIsNotStored();
};

void ParamProblem::tellsWhatIsMissing_data()
{
    QTest::addColumn<RpaParamItem>("item");
    QTest::addColumn<QString>("problem");
    const QString fill = QStringLiteral("请填写“数量”");
    const QString pick = QStringLiteral("请选择“数量”");

    QTest::newRow("text") << Required(RpaParamType::Text) << fill;
    QTest::newRow("password") << Required(RpaParamType::Password) << fill;
    QTest::newRow("number") << Required(RpaParamType::Number) << fill;
    QTest::newRow("date") << Required(RpaParamType::Date) << pick;
    QTest::newRow("choice") << Required(RpaParamType::Choice) << pick;
    QTest::newRow("file") << Required(RpaParamType::File) << pick;
    QTest::newRow("switch") << Required(RpaParamType::Switch) << QString();
    QTest::newRow("not required") << Param(RpaParamType::Text) << QString();
    RpaParamItem blank = Required(RpaParamType::Text);
    blank.value = QStringLiteral("  ");
    QTest::newRow("blanks only") << blank << fill;
    RpaParamItem zero = Required(RpaParamType::Number);
    zero.value = 0.0;
    QTest::newRow("a number that is nought") << zero << QString();
    RpaParamItem preset = Required(RpaParamType::Text);
    preset.defaultValue = QStringLiteral("甲");
    QTest::newRow("a default") << preset << QString();
    RpaParamItem unlabelled = Required(RpaParamType::Text);
    unlabelled.label.clear();
    QTest::newRow("no label") << unlabelled << QStringLiteral("请填写“name”");
}

void ParamProblem::tellsWhatIsMissing()
{
    QFETCH(RpaParamItem, item);
    QFETCH(QString, problem);

    QCOMPARE(item.GetProblem(), problem);
    QCOMPARE(item.IsMissing(), !problem.isEmpty());
}

void ParamProblem::tellsWhatIsOutOfRangeOrForm_data()
{
    QTest::addColumn<RpaParamItem>("item");
    QTest::addColumn<QString>("problem");
    const QDate first(2024, 1, 5);
    const QDate last(2024, 2, 9);
    const QString mobile = RpaTextPattern::GetKnown().first().expression;

    QTest::newRow("within") << Ranged(1.0, 100.0, 100.0) << QString();
    QTest::newRow("above both") << Ranged(1.0, 100.0, 100.5) << QStringLiteral("“数量”应在 1 到 100 之间");
    QTest::newRow("below") << Ranged(1.0, {}, 0.0) << QStringLiteral("“数量”不能小于 1");
    QTest::newRow("above") << Ranged({}, 7.5, 8.0) << QStringLiteral("“数量”不能大于 7.5");
    QTest::newRow("date within") << Ranged(first, last, last) << QString();
    QTest::newRow("too early") << Ranged(first, {}, first.addDays(-1))
                               << QStringLiteral("“数量”不能早于 2024-01-05");
    QTest::newRow("too late") << Ranged({}, last, last.addDays(1))
                              << QStringLiteral("“数量”不能晚于 2024-02-09");
    QTest::newRow("no date and not required") << Ranged(first, last, QDate()) << QString();
    QTest::newRow("of the form") << OfPattern(mobile, QStringLiteral("13812345678")) << QString();
    QTest::newRow("of the form and more") << OfPattern(mobile, QStringLiteral("138123456789"))
                                          << QStringLiteral("“数量”不是有效的手机号码，例如 13800138000");
    QTest::newRow("nothing and not required") << OfPattern(mobile, QString()) << QString();
    QTest::newRow("own form") << OfPattern(QStringLiteral("A|B"), QStringLiteral("AB"))
                              << QStringLiteral("“数量”的格式不符合要求");
    RpaParamItem hinted = OfPattern(QStringLiteral("[0-9]{3}"), QStringLiteral("12"));
    hinted.hint = QStringLiteral("三位编号");
    QTest::newRow("own form with a hint") << hinted << QStringLiteral("“数量”的格式不符合要求：三位编号");
    QTest::newRow("no expression at all") << OfPattern(QStringLiteral("("), QStringLiteral("x")) << QString();
}

void ParamProblem::tellsWhatIsOutOfRangeOrForm()
{
    QFETCH(RpaParamItem, item);
    QFETCH(QString, problem);

    QCOMPARE(item.GetProblem(), problem);
}

void ParamProblem::aPatternThatTriesForEverIsGivenUp()
{
    const QString costly = QStringLiteral("(?:a+)+x|a+y");

    QVERIFY(RpaTextPattern::Matches(costly, QString(5, QLatin1Char('a')) + QLatin1Char('y')));
    // Only after a million tries would the second way be gone.
    QVERIFY(!RpaTextPattern::Matches(costly, QString(20, QLatin1Char('a')) + QLatin1Char('y')));
    QVERIFY(!RpaTextPattern::IsUsable(QString(201, QLatin1Char('a'))));
}

void ParamProblem::everyKnownPatternTakesItsExample()
{
    for (const RpaTextPattern& pattern : RpaTextPattern::GetKnown()) {
        QVERIFY2(RpaTextPattern::IsUsable(pattern.expression), qPrintable(pattern.title));
        QVERIFY2(RpaTextPattern::Matches(pattern.expression, pattern.example), qPrintable(pattern.title));
        QVERIFY2(!RpaTextPattern::Matches(pattern.expression, QStringLiteral("甲 乙")),
                 qPrintable(pattern.title));
    }
}

void ParamProblem::limitsSurviveTheJson()
{
    RpaParamData params;
    RpaParamItem number = Ranged(1.5, 9.0, 2.0);
    RpaParamItem date = Ranged(QDate(2024, 1, 5), {}, QDate(2024, 1, 6));
    date.name = QStringLiteral("date");
    RpaParamItem text = OfPattern(QStringLiteral("[0-9]+\\s\"x\""), QStringLiteral("1"));
    text.name = QStringLiteral("text");
    params.SetContent({number, date, text});
    JsonWriter writer;
    params.WriteJson(writer);
    const QByteArray json = writer.Take();

    RpaParamData read;
    JsonReader reader(json);
    read.ReadJson(reader)();

    QCOMPARE(read.GetItems(), params.GetItems());
    QCOMPARE(read.GetItem(1).least, QVariant(QDate(2024, 1, 5)));
}

void ParamProblem::limitsOfAnotherTypeAreDropped()
{
    RpaParamData params;
    RpaParamItem item = Ranged(1.0, 9.0, 2.0);
    item.pattern = QStringLiteral("[0-9]");
    params.InsertItem(-1, item);
    QCOMPARE(params.GetItem(0).pattern, QString());

    item.type = RpaParamType::Text;
    params.SetItem(0, item);

    QVERIFY(!params.GetItem(0).least.isValid());
    QVERIFY(!params.GetItem(0).most.isValid());
    QCOMPARE(params.GetItem(0).pattern, QStringLiteral("[0-9]"));
}

void ParamProblem::everyTypeSurvivesTheJson_data()
{
    QTest::addColumn<RpaParamItem>("item");
    const auto row = [](const char* name, RpaParamItem item, const QVariant& initial, const QVariant& value) {
        item.defaultValue = initial;
        item.value = value;
        QTest::newRow(name) << item;
    };
    RpaParamItem lines = Param(RpaParamType::Lines);
    lines.lines = 6;
    row("lines", lines, QStringLiteral("a\nb"), QStringLiteral("c\nd"));
    row("folder", Param(RpaParamType::Folder), QStringLiteral("/a"), QStringLiteral("/b"));
    RpaParamItem files = Param(RpaParamType::Files);
    files.endings = QStringList{QStringLiteral("xlsx"), QStringLiteral("csv")};
    row("files", files, QStringList{QStringLiteral("/a"), QStringLiteral("/b")},
        QStringList{QStringLiteral("/c")});
    RpaParamItem choices = Param(RpaParamType::Choices);
    choices.choices = QStringList{QStringLiteral("甲"), QStringLiteral("乙")};
    row("choices", choices, QStringList(), choices.choices);
    RpaParamItem moment = Param(RpaParamType::DateTime);
    moment.least = QDateTime(QDate(2024, 1, 1), QTime(8, 0));
    moment.most = QDateTime(QDate(2024, 12, 31), QTime(18, 0, 7));
    row("moment", moment, QDateTime(QDate(2024, 2, 29), QTime(9, 30)),
        QDateTime(QDate(2024, 3, 1), QTime(10, 0)));
    RpaParamItem slider = Param(RpaParamType::Slider);
    slider.least = 0.5;
    slider.most = 2.5;
    slider.step = 0.25;
    row("slider", slider, 1.0, 1.5);
    RpaParamItem group = Param(RpaParamType::Group);
    group.columns = 2;
    row("group", group, QVariant(), QVariant());
}

void ParamProblem::everyTypeSurvivesTheJson()
{
    QFETCH(RpaParamItem, item);
    RpaParamData written;
    QVERIFY(written.InsertItem(-1, item) >= 0);
    QCOMPARE(written.GetItem(0), item);
    JsonWriter writer;
    written.WriteJson(writer);
    const QByteArray json = writer.Take();
    JsonReader reader(json);
    RpaParamData read;
    const auto apply = read.ReadJson(reader);
    QVERIFY(reader.Finish());
    apply();

    QVERIFY(read.GetItem(0) == item);
}

void ParamProblem::aTypeOfANewerClientIsKeptWithItsSettings()
{
    const QByteArray json = R"([{"name":"a","label":"b","type":"colour","value":["x",1],"required":false,)"
                            R"("step":0.5,"endings":["png"],"shade":{"deep":true}}])";
    JsonReader reader(json);
    RpaParamData params;
    params.ReadJson(reader)();
    JsonWriter writer;
    params.WriteJson(writer);

    QCOMPARE(writer.Take(), json);
}

void ParamProblem::listsAndMomentsAreDemanded()
{
    RpaParamItem choices = Required(RpaParamType::Choices);
    choices.choices = QStringList{QStringLiteral("甲"), QStringLiteral("乙")};
    QCOMPARE(choices.GetProblem(), QStringLiteral("请选择“数量”"));
    choices.value = choices.choices;
    QCOMPARE(choices.GetProblem(), QString());
    QCOMPARE(Required(RpaParamType::Files).GetProblem(), QStringLiteral("请选择“数量”"));
    QCOMPARE(Required(RpaParamType::Folder).GetProblem(), QStringLiteral("请选择“数量”"));
    QCOMPARE(Required(RpaParamType::Lines).GetProblem(), QStringLiteral("请填写“数量”"));
    QCOMPARE(Required(RpaParamType::Slider).GetProblem(), QString());
    QCOMPARE(Required(RpaParamType::Progress).GetProblem(), QString());

    RpaParamItem moment = Required(RpaParamType::DateTime);
    QCOMPARE(moment.GetProblem(), QStringLiteral("请选择“数量”"));
    moment.least = QDateTime(QDate(2024, 1, 1), QTime(8, 30));
    moment.value = QDateTime(QDate(2024, 1, 1), QTime(8, 29));
    QCOMPARE(moment.GetProblem(), QStringLiteral("“数量”不能早于 2024-01-01 08:30"));
    RpaParamItem slider = Param(RpaParamType::Slider);
    slider.least = 1.0;
    slider.most = 3.0;
    QCOMPARE(slider.GetProblem(), QString());
    slider.value = 4.0;
    QCOMPARE(slider.GetProblem(), QStringLiteral("“数量”应在 1 到 3 之间"));
}

void ParamProblem::filesHaveTheirEndings()
{
    RpaParamItem files = Param(RpaParamType::Files);
    files.endings = QStringList{QStringLiteral("xlsx"), QStringLiteral("csv")};
    QCOMPARE(files.GetProblem(), QString());
    files.value = QStringList{QStringLiteral("/a.b/one.XLSX"), QStringLiteral("C:\\x\\two.csv")};
    QCOMPARE(files.GetProblem(), QString());
    files.value = QStringList{QStringLiteral("/one.csv"), QStringLiteral("/a.csv/two")};
    QCOMPARE(files.GetProblem(), QStringLiteral("“数量”中的“two”不是 xlsx、csv 文件"));
    RpaParamItem file = Param(RpaParamType::File);
    file.endings = QStringList{QStringLiteral("pdf")};
    file.value = QStringLiteral("/a.docx");
    QCOMPARE(file.GetProblem(), QStringLiteral("“数量”中的“a.docx”不是 pdf 文件"));
}

void ParamProblem::whatRunsShowIsNotStored()
{
    RpaParamData params;
    params.InsertItem(-1, Param(RpaParamType::Progress));
    RpaParamItem picture = Param(RpaParamType::Picture);
    picture.name = QStringLiteral("picture");
    params.InsertItem(-1, picture);
    JsonWriter before;
    params.WriteJson(before);
    QVERIFY(params.SetResult(0, 50));
    QVERIFY(params.SetResult(1, QStringLiteral("/a.png")));
    JsonWriter after;
    params.WriteJson(after);

    QCOMPARE(after.Take(), before.Take());
    QCOMPARE(params.GetItem(0).GetEffectiveValue(), QVariant(50.0));
    QCOMPARE(params.GetResultCount(), 0);
}

QTEST_APPLESS_MAIN(ParamProblem)

#include "tst_paramproblem.moc"
