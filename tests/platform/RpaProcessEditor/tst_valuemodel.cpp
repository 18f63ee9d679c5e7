// SPDX-License-Identifier: Apache-2.0

#include "ScriptedDebugSource.h"
#include "TestApp.h"
#include "ValueFilter_p.h"
#include "ValueModel_p.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

namespace
{
using Source = ScriptedDebugSource;

const QVector<RpaDebugFrame> someStack = {
    {QStringLiteral("f"), {QStringLiteral("主流程"), QString(), 3}},
    {QStringLiteral("<module>"), {QStringLiteral("主流程"), QString(), 9}}};

// "names(甲 乙) n": what is loaded.
QString Outline(const QAbstractItemModel& model, const QModelIndex& parent = QModelIndex())
{
    QStringList parts;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        const QString inside = Outline(model, index);
        parts << index.data().toString() +
                     (inside.isEmpty() ? QString() : QLatin1Char('(') + inside + QLatin1Char(')'));
    }
    return parts.join(QLatin1Char(' '));
}
} // namespace

class tst_ValueModel : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void asksForWhatIsInsideOnlyWhenSomebodyLooks();
    void asksOnce();
    void passesOverADoubledAnswer();
    void passesOverALateAnswerOfAnEarlierStop();
    void passesOverAnswersToOthers();
    void loadsLongValuesPageByPage();
    void endsAtAnEmptyPage();
    void tellsWhatCouldNotBeAsked();
    void setsAValueInPlace();
    void tellsWhyAValueIsRefused();
    void leavesAValueThatWasNotTyped();
    void marksWhatChanged();
    void forgetsWhatIsInsideOfAReplacedRoot();
    void findsNamesAndValues();
    void isAModel();

private:
    QModelIndex At(int row, int column = 0, const QModelIndex& parent = QModelIndex()) const
    {
        return model->index(row, column, parent);
    }
    // One heading with a list "names" of so many entries and a number "n"; the heading is opened.
    void ShowSome(int entries = 2);

    std::unique_ptr<Source> source;
    std::unique_ptr<ValueModel> model;
};

void tst_ValueModel::init()
{
    source = std::make_unique<Source>();
    model = std::make_unique<ValueModel>(source.get());
    source->Start();
    source->Stop(someStack);
}

void tst_ValueModel::cleanup()
{
    model.reset();
    source.reset();
}

void tst_ValueModel::ShowSome(int entries)
{
    model->SetRoots({Source::Heading(QStringLiteral("局部变量"), 1, 2)}, 1);
    model->fetchMore(At(0));
    source->Answer(source->Asked(QStringLiteral("children")).request,
                   {Source::Value(QStringLiteral("names"), QStringLiteral("[…]"), 2, entries),
                    Source::Value(QStringLiteral("n"), QStringLiteral("7"))});
    QCOMPARE(Outline(*model), QStringLiteral("局部变量(names n)"));
}

void tst_ValueModel::asksForWhatIsInsideOnlyWhenSomebodyLooks()
{
    ShowSome();
    const QModelIndex names = At(0, 0, At(0));
    const QModelIndex number = At(1, 0, At(0));
    QCOMPARE(source->questions.size(), 1);
    QVERIFY(model->hasChildren(names));
    QVERIFY(model->canFetchMore(names));
    QVERIFY(!model->hasChildren(number));
    QVERIFY(!model->canFetchMore(number));
    QCOMPARE(names.siblingAtColumn(ValueModel::SizeColumn).data().toString(), QStringLiteral("2"));
    QCOMPARE(names.siblingAtColumn(ValueModel::TypeColumn).data().toString(), QStringLiteral("list"));
    QCOMPARE(number.siblingAtColumn(ValueModel::SizeColumn).data().toString(), QString());

    model->fetchMore(names);
    const Source::Question asked = source->Asked(QStringLiteral("children"));
    QCOMPARE(asked.handle, 2);
    QCOMPARE(asked.first, 0);
    source->Answer(asked.request, {Source::Value(QStringLiteral("[0]"), QStringLiteral("'甲'")),
                                   Source::Value(QStringLiteral("[1]"), QStringLiteral("'乙'"))});

    QCOMPARE(Outline(*model), QStringLiteral("局部变量(names([0] [1]) n)"));
}

void tst_ValueModel::asksOnce()
{
    ShowSome();
    model->fetchMore(At(0, 0, At(0)));
    model->fetchMore(At(0, 0, At(0)));
    QCOMPARE(source->questions.size(), 2);
}

void tst_ValueModel::passesOverADoubledAnswer()
{
    ShowSome();
    const QModelIndex names = At(0, 0, At(0));
    model->fetchMore(names);
    const int request = source->Asked(QStringLiteral("children")).request;

    source->Answer(request, {Source::Value(QStringLiteral("[0]"), QStringLiteral("1"))});
    source->Answer(request, {Source::Value(QStringLiteral("[0]"), QStringLiteral("2"))});

    QCOMPARE(Outline(*model), QStringLiteral("局部变量(names([0]) n)"));
    QCOMPARE(At(0, ValueModel::ValueColumn, names).data().toString(), QStringLiteral("1"));
}

void tst_ValueModel::passesOverALateAnswerOfAnEarlierStop()
{
    ShowSome();
    model->fetchMore(At(0, 0, At(0)));
    const int late = source->Asked(QStringLiteral("children")).request;
    source->Resume();
    source->Stop(someStack);
    ShowSome();

    source->Answer(late, {Source::Value(QStringLiteral("old"), QStringLiteral("0"))});

    QCOMPARE(Outline(*model), QStringLiteral("局部变量(names n)"));
}

void tst_ValueModel::passesOverAnswersToOthers()
{
    ShowSome();
    const int foreign = source->Evaluate(0, QStringLiteral("n"));
    source->Answer(foreign, {Source::Value(QString(), QStringLiteral("7"))});
    source->Answer(12345, {Source::Value(QStringLiteral("x"), QStringLiteral("7"))});
    QCOMPARE(Outline(*model), QStringLiteral("局部变量(names n)"));
}

void tst_ValueModel::loadsLongValuesPageByPage()
{
    ShowSome(5);
    const QModelIndex names = At(0, 0, At(0));
    const auto value = [](int number) {
        return Source::Value(QStringLiteral("[%1]").arg(number), QString::number(number));
    };
    model->fetchMore(names);
    source->Answer(source->Asked(QStringLiteral("children")).request, {value(0), value(1)}, 5);
    QCOMPARE(Outline(*model), QStringLiteral("局部变量(names([0] [1] 还有 3 项…) n)"));

    model->LoadMore(At(0, 0, names)); // an entry, not the row behind them
    const int asked = source->questions.size();
    model->LoadMore(At(2, 0, names));
    model->LoadMore(At(2, 0, names));
    QCOMPARE(source->questions.size(), asked + 1);
    QCOMPARE(source->Asked(QStringLiteral("children")).first, 2);
    source->Answer(source->Asked(QStringLiteral("children")).request, {value(2), value(3)}, 5);
    QCOMPARE(Outline(*model), QStringLiteral("局部变量(names([0] [1] [2] [3] 还有 1 项…) n)"));

    model->LoadMore(At(4, 0, names));
    source->Answer(source->Asked(QStringLiteral("children")).request, {value(4)}, 5);
    QCOMPARE(Outline(*model), QStringLiteral("局部变量(names([0] [1] [2] [3] [4]) n)"));
    QCOMPARE(At(4, 0, names).parent(), names);
}

void tst_ValueModel::endsAtAnEmptyPage()
{
    ShowSome(5);
    const QModelIndex names = At(0, 0, At(0));
    model->fetchMore(names);
    source->Answer(source->Asked(QStringLiteral("children")).request, {}, 5);

    QCOMPARE(Outline(*model), QStringLiteral("局部变量(names n)"));
    QVERIFY(!model->canFetchMore(names));
}

void tst_ValueModel::tellsWhatCouldNotBeAsked()
{
    ShowSome();
    QSignalSpy refused(model.get(), &ValueModel::SigRefused);
    model->fetchMore(At(0, 0, At(0)));
    source->Refuse(source->Asked(QStringLiteral("children")).request, QStringLiteral("这个值已不可用"));
    QCOMPARE(refused.size(), 1);
    QCOMPARE(refused.first().at(0).toString(), QStringLiteral("names"));
    QCOMPARE(refused.first().at(1).toString(), QStringLiteral("这个值已不可用"));
}

void tst_ValueModel::setsAValueInPlace()
{
    ShowSome();
    QSignalSpy set(model.get(), &ValueModel::SigValueSet);
    const QModelIndex value = At(1, ValueModel::ValueColumn, At(0));
    QVERIFY(value.flags() & Qt::ItemIsEditable);
    QVERIFY(!(At(0, ValueModel::ValueColumn).flags() & Qt::ItemIsEditable)); // the heading
    QVERIFY(!(At(1, 0, At(0)).flags() & Qt::ItemIsEditable));

    QVERIFY(model->setData(value, QStringLiteral(" n + 1 "), Qt::EditRole));
    const Source::Question asked = source->Asked(QStringLiteral("set"));
    QCOMPARE(asked.text, QStringLiteral("n=n + 1"));
    QCOMPARE(asked.handle, 1);
    QCOMPARE(asked.frame, 1);
    QCOMPARE(set.size(), 0);

    source->Answer(asked.request, {Source::Value(QStringLiteral("n"), QStringLiteral("8"))});
    QCOMPARE(set.size(), 1);
}

void tst_ValueModel::tellsWhyAValueIsRefused()
{
    ShowSome();
    QSignalSpy refused(model.get(), &ValueModel::SigRefused);
    model->setData(At(1, ValueModel::ValueColumn, At(0)), QStringLiteral("1/0"), Qt::EditRole);
    source->Refuse(source->Asked(QStringLiteral("set")).request, QStringLiteral("ZeroDivisionError"));
    QCOMPARE(refused.size(), 1);
    QCOMPARE(At(1, ValueModel::ValueColumn, At(0)).data().toString(), QStringLiteral("7"));
}

void tst_ValueModel::leavesAValueThatWasNotTyped()
{
    ShowSome();
    const QModelIndex value = At(1, ValueModel::ValueColumn, At(0));
    QVERIFY(!model->setData(value, QStringLiteral("7"), Qt::EditRole));
    QVERIFY(!model->setData(value, QStringLiteral("  "), Qt::EditRole));
    source->Resume();
    QVERIFY(!model->setData(value, QStringLiteral("8"), Qt::EditRole));
    QCOMPARE(source->Asked(QStringLiteral("set")).request, 0);
}

void tst_ValueModel::marksWhatChanged()
{
    RpaDebugValue changed = Source::Value(QStringLiteral("n"), QStringLiteral("8"));
    changed.changed = true;
    model->SetRoots({changed, Source::Value(QStringLiteral("m"), QStringLiteral("1"))}, 0);
    const QModelIndex value = At(0, ValueModel::ValueColumn);
    QVERIFY(value.data(ValueModel::ChangedRole).toBool());
    QCOMPARE(value.data(Qt::AccessibleTextRole).toString(), QStringLiteral("8，已改变"));
    QVERIFY(value.data(Qt::ForegroundRole).isValid());
    QVERIFY(!At(1, ValueModel::ValueColumn).data(Qt::ForegroundRole).isValid());
}

void tst_ValueModel::forgetsWhatIsInsideOfAReplacedRoot()
{
    model->SetRoots({Source::Value(QStringLiteral("a"), QStringLiteral("[1]"), 1, 1),
                     Source::Value(QStringLiteral("b"), QStringLiteral("[2]"), 2, 1)},
                    0);
    model->fetchMore(At(0));
    const int first = source->Asked(QStringLiteral("children")).request;
    model->fetchMore(At(1));
    const int second = source->Asked(QStringLiteral("children")).request;

    model->SetRoot(0, Source::Value(QStringLiteral("a"), QStringLiteral("[3]"), 5, 1));
    source->Answer(first, {Source::Value(QStringLiteral("old"), QStringLiteral("1"))});
    source->Answer(second, {Source::Value(QStringLiteral("[0]"), QStringLiteral("2"))});

    QCOMPARE(Outline(*model), QStringLiteral("a b([0])"));
    model->fetchMore(At(0));
    QCOMPARE(source->Asked(QStringLiteral("children")).handle, 5);
    source->Answer(source->Asked(QStringLiteral("children")).request,
                   {Source::Value(QStringLiteral("[0]"), QStringLiteral("3"))});
    QCOMPARE(Outline(*model), QStringLiteral("a([0]) b([0])"));
    model->SetRoot(0, Source::Value(QStringLiteral("a"), QStringLiteral("4")));
    QCOMPARE(Outline(*model), QStringLiteral("a b([0])"));
}

void tst_ValueModel::findsNamesAndValues()
{
    ShowSome();
    model->fetchMore(At(0, 0, At(0)));
    source->Answer(source->Asked(QStringLiteral("children")).request,
                   {Source::Value(QStringLiteral("[0]"), QStringLiteral("'甲'")),
                    Source::Value(QStringLiteral("[1]"), QStringLiteral("'乙'"))});
    ValueFilter filter;
    filter.setSourceModel(model.get());

    filter.SetText(QStringLiteral("乙"));
    QCOMPARE(Outline(filter), QStringLiteral("局部变量(names([1]))"));
    filter.SetText(QStringLiteral("NAMES"));
    QCOMPARE(Outline(filter), QStringLiteral("局部变量(names([0] [1]))"));
    filter.SetText(QStringLiteral("nothing"));
    QCOMPARE(Outline(filter), QString());
    filter.SetText(QStringLiteral(" "));
    QCOMPARE(Outline(filter), QStringLiteral("局部变量(names([0] [1]) n)"));
}

void tst_ValueModel::isAModel()
{
    const QAbstractItemModelTester tester(model.get(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    model->SetRoots({Source::Heading(QStringLiteral("全局变量"), 1, 3)}, 0);
    model->fetchMore(At(0));
    const auto value = Source::Value(QStringLiteral("x"), QStringLiteral("1"));
    source->Answer(source->questions.last().request, {value, value}, 3);
    model->LoadMore(At(2, 0, At(0)));
    source->Answer(source->questions.last().request, {value}, 3);
    QCOMPARE(Outline(*model), QStringLiteral("全局变量(x x x)"));
    model->SetRoot(0, value);
    QCOMPARE(Outline(*model), QStringLiteral("x"));
    model->SetRoots({}, 0);
    QCOMPARE(model->rowCount(), 0);
}

RPA_TEST_MAIN(tst_ValueModel)
#include "tst_valuemodel.moc"
