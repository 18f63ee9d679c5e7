// SPDX-License-Identifier: Apache-2.0

#include "RunCompareDialog.h"

#include "RunWords.h"
#include "SpanWords.h"

#include <WbBaseUI/WbScaledForm.h>

#include <QHeaderView>

namespace
{
constexpr int placeRole = Qt::UserRole;
constexpr int spansAround = 3; // of the first that differs
constexpr int mostPlaces = 100;

QString Words(const QVector<RpaRunSpan>& spans, int number)
{
    if (number < 0 || number >= spans.size())
        return QStringLiteral("（没有）");
    const RpaRunSpan& span = spans.at(number);
    const QString outcome = span.error.isEmpty() ? span.result : span.error;
    return QStringLiteral("%1  %2  %3").arg(span.call, span.input, outcome).trimmed();
}

QString Times(qint64 count, qint64 time)
{
    return count == 0 ? QStringLiteral("（没有）")
                      : QStringLiteral("%1，%2 次").arg(SpanWords::Time(time)).arg(count);
}
} // namespace

RunCompareDialog::RunCompareDialog(RpaRunHistory* runHistory, const QVector<RpaRunRecord>& given,
                                   qint64 later, DateLanguage language, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true), history(runHistory), runs(given)
{
    ui.setupUi(GetContentWidget());
    WbScaledForm::Follow(GetContentWidget());
    setObjectName(QStringLiteral("RunCompareDialog"));
    SetTitle(QStringLiteral("比较两次运行"));
    ui.treeCompare->header()->setSectionResizeMode(QHeaderView::Stretch);
    for (const RpaRunRecord& run : runs)
        for (QComboBox* combo :
             {static_cast<QComboBox*>(ui.comboBefore), static_cast<QComboBox*>(ui.comboAfter)})
            combo->addItem(
                QStringLiteral("%1  %2  %3")
                    .arg(DateText(run.started, language), RunWords::Result(run.result), run.versionName),
                run.id);
    ui.comboAfter->setCurrentIndex(ui.comboAfter->findData(later));
    ui.comboBefore->setCurrentIndex(qMax(0, ui.comboBefore->findData(RunBefore(runs, later))));
    const auto chosen = QOverload<int>::of(&QComboBox::currentIndexChanged);
    connect(ui.comboBefore, chosen, this, &RunCompareDialog::Compare);
    connect(ui.comboAfter, chosen, this, &RunCompareDialog::Compare);
    connect(ui.treeCompare, &QTreeWidget::itemActivated, this, &RunCompareDialog::Activate);
    connect(ui.treeCompare, &QTreeWidget::itemClicked, this, &RunCompareDialog::Activate);
    connect(ui.buttonClose, &QPushButton::clicked, this, &QDialog::accept);
    Compare();
}

qint64 RunCompareDialog::RunBefore(const QVector<RpaRunRecord>& runs, qint64 after)
{
    qint64 last = 0;
    for (const RpaRunRecord& run : runs) {
        if (run.id >= after || run.result == RpaRunResult::Running)
            continue;
        if (run.result == RpaRunResult::Succeeded)
            return run.id;
        last = qMax(last, run.id);
    }
    return last;
}

RpaRunRecord RunCompareDialog::RunOf(const QComboBox* combo) const
{
    return runs.value(combo->currentIndex());
}

void RunCompareDialog::Compare()
{
    const quint64 question = ++asked;
    answered = 0;
    history->ReadDetails(RunOf(ui.comboBefore).id, this, [this, question](const RpaRunDetails& details) {
        TakeDetails(question, false, details);
    });
    history->ReadDetails(RunOf(ui.comboAfter).id, this, [this, question](const RpaRunDetails& details) {
        TakeDetails(question, true, details);
    });
}

void RunCompareDialog::TakeDetails(quint64 question, bool isAfter, const RpaRunDetails& details)
{
    if (question != asked)
        return;
    (isAfter ? after : before) = details;
    if (++answered == 2)
        Show(RpaRunComparison::Of(RunOf(ui.comboBefore), before, RunOf(ui.comboAfter), after));
}

void RunCompareDialog::Show(const RpaRunComparison& comparison)
{
    ui.treeCompare->clear();
    places.clear();
    AddParameters(comparison);
    ShowFirstDifference(comparison);
    AddPlaces(comparison);
}

QTreeWidgetItem* RunCompareDialog::AddHeading(const QString& title)
{
    auto* heading = new QTreeWidgetItem(ui.treeCompare, {title});
    heading->setFirstColumnSpanned(true);
    heading->setExpanded(true);
    return heading;
}

void RunCompareDialog::AddParameters(const RpaRunComparison& comparison)
{
    QTreeWidgetItem* const heading = AddHeading(QStringLiteral("不同的参数"));
    for (const RpaParameterDifference& parameter : comparison.parameters)
        new QTreeWidgetItem(heading, {parameter.name, parameter.before, parameter.after});
    if (comparison.parameters.isEmpty())
        new QTreeWidgetItem(heading, {QStringLiteral("参数相同")});
}

void RunCompareDialog::ShowFirstDifference(const RpaRunComparison& comparison)
{
    const int first = qMax(comparison.spanBefore, comparison.spanAfter);
    QString text = QStringLiteral("两次运行的操作相同。");
    if (first >= 0) {
        const RpaRunSpan span =
            comparison.spanAfter >= 0 ? comparison.spansAfter.at(first) : comparison.spansBefore.at(first);
        text =
            QStringLiteral("第一处不同：第 %1 次操作，%2").arg(first + 1).arg(SpanWords::Place(span.place));
    }
    if (comparison.isPartial)
        text += QStringLiteral("\n操作太多，较早的只有合计，没有参与比较。");
    ui.labelDifference->setText(text);
    if (first < 0)
        return;
    QTreeWidgetItem* const heading = AddHeading(QStringLiteral("第一处不同的操作"));
    for (int number = qMax(0, first - spansAround); number <= first + spansAround; ++number) {
        const bool there = number < comparison.spansAfter.size();
        if (!there && number >= comparison.spansBefore.size())
            break;
        const RpaRunPlace place = (there ? comparison.spansAfter : comparison.spansBefore).at(number).place;
        auto* item =
            new QTreeWidgetItem(heading, {SpanWords::Place(place), Words(comparison.spansBefore, number),
                                          Words(comparison.spansAfter, number)});
        item->setData(0, placeRole, places.size());
        places.append(place);
        QFont font = item->font(0);
        font.setBold(number == first);
        for (int column = 0; column < 3; ++column)
            item->setFont(column, font);
    }
}

void RunCompareDialog::AddPlaces(const RpaRunComparison& comparison)
{
    QTreeWidgetItem* const heading = AddHeading(QStringLiteral("用时"));
    const RpaRunRecord earlier = RunOf(ui.comboBefore);
    const RpaRunRecord later = RunOf(ui.comboAfter);
    new QTreeWidgetItem(heading,
                        {QStringLiteral("整次运行"), RunWords::Duration(earlier), RunWords::Duration(later)});
    for (const RpaPlaceDifference& place : comparison.places.mid(0, mostPlaces)) {
        auto* item = new QTreeWidgetItem(heading, {SpanWords::Place(place.place),
                                                   Times(place.countBefore, place.timeBefore),
                                                   Times(place.countAfter, place.timeAfter)});
        item->setData(0, placeRole, places.size());
        places.append(place.place);
    }
}

void RunCompareDialog::Activate(const QTreeWidgetItem* item)
{
    const QVariant number = item->data(0, placeRole);
    if (number.isValid())
        emit SigShowPlace(places.at(number.toInt()));
}
