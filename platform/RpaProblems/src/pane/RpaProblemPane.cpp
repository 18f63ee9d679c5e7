// SPDX-License-Identifier: Apache-2.0

#include "ProblemDelegate_p.h"
#include "ProblemRows_p.h"
#include "RunFindings_p.h"
#include "ui_RpaProblemPane.h"

#include <OxBase/DpiTool.h>
#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaProblems/RpaProblemIgnores.h>
#include <RpaProblems/RpaProblemPane.h>
#include <RpaProblems/RpaProblemWatch.h>
#include <WbBaseUI/WbFocusForward.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QMenu>
#include <QScrollBar>
#include <QSet>
#include <QTimer>

namespace
{
// More than this nobody works through; the first ones matter.
constexpr int mostRows = 1000;
constexpr int placeWidth = 130;
} // namespace

class RpaProblemPane::Private
{
public:
    explicit Private(RpaProblemPane* pane) : q(pane) {}

    void SetUp();
    void Connect();
    void SlotChanged();
    void SlotFoldPressed();
    void Show();
    QVector<RpaProblem> All() const;
    QVector<ProblemRow> Rows(ProblemCounts& counts) const;
    void ShowRows(const QVector<ProblemRow>& rows);
    void EndRun();
    void SlotChosen() { emit q->SigProblemChosen(Current()); }
    void ShowMenu(const QPoint& position);
    void SlotFixAsked() { emit q->SigFixAsked(Current()); }
    void AskReason();
    void SlotReasonEdited(const QString& text) { ui.ignoreAccept->setEnabled(!text.trimmed().isEmpty()); }
    void Ignore();
    void TakeBack();

    RpaProblem Current() const { return ProblemRows::Get(ui.problemList->currentItem()); }
    RpaProblemIgnores Ignores() const
    {
        const RpaAppData* const app = watch.GetApp();
        return {RpaProblemIgnores::GetUsualFile(), app ? app->GetAppExtendInfo()->GetAppId() : QString()};
    }

    RpaProblemPane* const q;
    Ui::RpaProblemPane ui;
    RpaProblemWatch watch;
    RunFindings run;
    bool openedByRun = false;
    QVector<ProblemRow> shown;
    QTimer measuring; // the heights of the rows depend on the widths of the columns
};

void RpaProblemPane::Private::SetUp()
{
    ui.setupUi(q);
    WbScaledForm::Follow(q);
    new WbFocusForward(q, ui.problemList);
    ui.ignoreRow->hide();
    ui.problemList->setItemDelegate(new ProblemDelegate(ui.problemList));
    QHeaderView* const header = ui.problemList->header();
    header->setStretchLastSection(false);
    header->setSectionResizeMode(ProblemRows::MessageColumn, QHeaderView::Stretch);
    header->setSectionResizeMode(ProblemRows::RemedyColumn, QHeaderView::Stretch);
    header->setSectionResizeMode(ProblemRows::PlaceColumn, QHeaderView::Interactive);
    header->resizeSection(ProblemRows::PlaceColumn, DpiTool::ScaleDefault(placeWidth));
    measuring.setSingleShot(true);
    measuring.setInterval(0);
    q->SetOpen(false);
    Show();
}

void RpaProblemPane::Private::Connect()
{
    connect(&watch, &RpaProblemWatch::SigChanged, q, [this] { SlotChanged(); });
    connect(ui.problemList->header(), &QHeaderView::sectionResized, &measuring, qOverload<>(&QTimer::start));
    connect(&measuring, &QTimer::timeout, ui.problemList, &QTreeWidget::doItemsLayout);
    connect(ui.problemFoldButton, &QToolButton::clicked, q, [this] { SlotFoldPressed(); });
    connect(ui.checkRunOnly, &QCheckBox::toggled, q, [this] { Show(); });
    connect(ui.checkShowIgnored, &QCheckBox::toggled, q, [this] { Show(); });
    connect(ui.problemList, &QTreeWidget::itemActivated, q, [this] { SlotChosen(); });
    connect(ui.problemList, &QWidget::customContextMenuRequested, q,
            [this](const QPoint& position) { ShowMenu(position); });
    connect(ui.ignoreReason, &QLineEdit::returnPressed, q, [this] { Ignore(); });
    connect(ui.ignoreAccept, &QPushButton::clicked, q, [this] { Ignore(); });
    connect(ui.ignoreCancel, &QPushButton::clicked, ui.ignoreRow, &QWidget::hide);
    connect(ui.ignoreReason, &QLineEdit::textChanged, q,
            [this](const QString& text) { SlotReasonEdited(text); });
}

void RpaProblemPane::Private::SlotChanged()
{
    const bool wasRun = !run.Get().isEmpty();
    run.Compare(watch.Get(), watch.GetApp());
    if (wasRun && run.Get().isEmpty())
        EndRun();
    Show();
}

void RpaProblemPane::Private::SlotFoldPressed()
{
    openedByRun = false;
    q->SetOpen(ui.problemFoldButton->isChecked());
}

// The list goes as it came, unless the author has taken it over.
void RpaProblemPane::Private::EndRun()
{
    ui.checkRunOnly->setChecked(false);
    if (openedByRun)
        q->SetOpen(false);
    openedByRun = false;
}

// Those of the run first: where it failed is a problem that the app as it is now does not tell.
QVector<RpaProblem> RpaProblemPane::Private::All() const
{
    QVector<RpaProblem> all = run.Get();
    QSet<QString> told;
    for (const RpaProblem& problem : qAsConst(all))
        told.insert(problem.id);
    for (const RpaProblem& problem : watch.Get())
        if (!told.contains(problem.id))
            all.append(problem);
    return all;
}

QVector<ProblemRow> RpaProblemPane::Private::Rows(ProblemCounts& counts) const
{
    QVector<ProblemRow> rows;
    const RpaProblemIgnores ignores = Ignores();
    const QVector<RpaProblem> all = All();
    const int most = ui.checkRunOnly->isChecked() ? run.Get().size() : mostRows;
    for (const RpaProblem& problem : all) {
        const QString reason = ignores.GetReason(problem);
        counts.Add(problem, !reason.isEmpty());
        if (rows.size() < qMin(most, mostRows) && (reason.isEmpty() || ui.checkShowIgnored->isChecked()))
            rows.append({problem, reason});
    }
    return rows;
}

void RpaProblemPane::Private::Show()
{
    ProblemCounts counts;
    ShowRows(Rows(counts));
    ui.labelProblemCounts->setText(watch.GetApp() ? counts.GetText() : QString());
    ui.checkShowIgnored->setText(QStringLiteral("显示已忽略的 %1 个").arg(counts.ignored));
    ui.checkShowIgnored->setVisible(counts.ignored > 0 || ui.checkShowIgnored->isChecked());
    ui.checkRunOnly->setText(QStringLiteral("只看阻止运行的 %1 个").arg(run.Get().size()));
    ui.checkRunOnly->setVisible(!run.Get().isEmpty());
}

// The author may be in the middle of the list when an answer comes; most answers are the same as before.
void RpaProblemPane::Private::ShowRows(const QVector<ProblemRow>& rows)
{
    if (rows == shown)
        return;
    shown = rows;
    QList<QTreeWidgetItem*> items; // the list takes them
    for (const ProblemRow& row : rows)
        items.append(ProblemRows::Make(row));
    const QString current = Current().id;
    const int place = ui.problemList->verticalScrollBar()->value();
    ui.problemList->clear();
    ui.problemList->addTopLevelItems(items);
    for (QTreeWidgetItem* item : qAsConst(items))
        if (!current.isEmpty() && ProblemRows::Get(item).id == current)
            ui.problemList->setCurrentItem(item);
    ui.problemList->verticalScrollBar()->setValue(place);
    if (current.isEmpty() || Current().id != current)
        ui.ignoreRow->hide(); // what was to be ignored is gone
}

void RpaProblemPane::Private::ShowMenu(const QPoint& position)
{
    const RpaProblem problem = Current();
    if (problem.id.isEmpty())
        return;
    auto* menu = new QMenu(q);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    connect(menu->addAction(QStringLiteral("转到此处")), &QAction::triggered, q, [this] { SlotChosen(); });
    QAction* fix = menu->addAction(ProblemRows::FixText(problem.fix));
    fix->setEnabled(problem.fix != RpaProblemFix::None);
    connect(fix, &QAction::triggered, q, [this] { SlotFixAsked(); });
    menu->addSeparator();
    if (Ignores().GetReason(problem).isEmpty()) {
        QAction* ignore = menu->addAction(QStringLiteral("忽略（写明原因）"));
        ignore->setEnabled(problem.severity != RpaProblemSeverity::Error);
        connect(ignore, &QAction::triggered, q, [this] { AskReason(); });
    } else {
        connect(menu->addAction(QStringLiteral("不再忽略")), &QAction::triggered, q, [this] { TakeBack(); });
    }
    menu->popup(ui.problemList->viewport()->mapToGlobal(position));
}

void RpaProblemPane::Private::AskReason()
{
    ui.ignoreReason->clear();
    ui.ignoreAccept->setEnabled(false);
    ui.labelIgnoreFailed->hide();
    ui.ignoreRow->show();
    ui.ignoreReason->setFocus();
}

void RpaProblemPane::Private::Ignore()
{
    if (ui.ignoreReason->text().trimmed().isEmpty())
        return;
    if (!Ignores().Ignore(Current(), ui.ignoreReason->text())) {
        ui.labelIgnoreFailed->show();
        return;
    }
    ui.ignoreRow->hide();
    ui.problemList->setFocus();
    Show();
}

void RpaProblemPane::Private::TakeBack()
{
    Ignores().TakeBack(Current());
    Show();
}

RpaProblemPane::RpaProblemPane(QWidget* parent) : QWidget(parent), d(std::make_unique<Private>(this))
{
    d->SetUp();
    d->Connect();
}

RpaProblemPane::~RpaProblemPane() = default;

void RpaProblemPane::SetApp(RpaAppData* app)
{
    if (app == d->watch.GetApp())
        return;
    ShowRun({});
    d->watch.SetApp(app);
    d->Show();
}

RpaAppData* RpaProblemPane::GetApp() const
{
    return d->watch.GetApp();
}

void RpaProblemPane::ShowRun(const QList<RpaCheckInfo>& findings)
{
    d->run.Take(findings, d->watch.GetApp());
    if (d->watch.IsCurrent())
        d->run.Compare(d->watch.Get(), d->watch.GetApp());
    const bool stopped = !d->run.Get().isEmpty();
    if (!stopped)
        d->EndRun();
    else if (!d->ui.problemFoldButton->isChecked()) {
        d->openedByRun = true;
        SetOpen(true);
    }
    d->ui.checkRunOnly->setChecked(stopped);
    d->Show();
}

void RpaProblemPane::SetOpen(bool open)
{
    d->ui.problemFoldButton->setChecked(open);
    d->ui.problemFoldButton->setIcon(
        WbIcons::Get(open ? QStringLiteral("chevron-down") : QStringLiteral("chevron-right")));
    d->ui.problemBody->setVisible(open);
    // In a splitter the title alone takes no more than it needs.
    setSizePolicy(QSizePolicy::Preferred, open ? QSizePolicy::Preferred : QSizePolicy::Fixed);
}
