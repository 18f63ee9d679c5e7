// SPDX-License-Identifier: Apache-2.0

#include "RunView.h"

#include "RunWords.h"

#include <WbBaseUI/WbScaledForm.h>
#include <WbBaseUI/WbTheme.h>

RunView::RunView(QWidget* parent) : QWidget(parent)
{
    ui.setupUi(this);
    WbScaledForm::Follow(this);
    for (const QString& title : {QStringLiteral("日志"), QStringLiteral("时间线"), QStringLiteral("失败时")})
        ui.tabsRun->addTab(title);
    ui.textLog->setFont(WbTheme::CodeFont());
    connect(ui.tabsRun, &QTabBar::currentChanged, ui.stackRun, &QStackedWidget::setCurrentIndex);
    connect(ui.timeline, &RunTimeline::SigSelected, ui.labelSpan, &QLabel::setText);
    connect(ui.timeline, &RunTimeline::SigShowPlace, this, &RunView::SigShowPlace);
    connect(ui.viewFailure, &RunFailureView::SigShowPlace, this, &RunView::SigShowPlace);
}

void RunView::ShowRun(const RpaRunRecord& run, const QVector<RpaLogLine>& log, const QString& text)
{
    const bool isRun = !run.appId.isEmpty() || run.id != 0;
    ui.labelResult->setText(isRun ? RunWords::Outcome(run) : text);
    ui.labelFacts->setText(isRun ? RunWords::Facts(run, dateLanguage) : QString());
    ui.tabsRun->setVisible(isRun);
    ui.stackRun->setVisible(isRun);
    if (isRun)
        ShowLog(run, log);
    else
        ui.textLog->clear();
    const bool isOther = run.id != shown.id || !isRun;
    shown = run;
    if (isOther)
        ShowDetails({});
}

void RunView::ShowLog(const RpaRunRecord& run, const QVector<RpaLogLine>& log)
{
    QString text = RunWords::Log(run, log);
    if (text.isEmpty())
        text = QStringLiteral("这次运行没有写日志。");
    if (run.id != shown.id || text != ui.textLog->toPlainText())
        ui.textLog->setPlainText(text); // otherwise where the reader is stays
}

void RunView::ShowDetails(const RpaRunDetails& details)
{
    if (!ui.timeline->Shows(details.spans))
        ui.timeline->ShowSpans(details.spans); // otherwise where the reader is stays
    ui.viewFailure->ShowFailure(shown, details);
}
