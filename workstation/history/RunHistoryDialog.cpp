// SPDX-License-Identifier: Apache-2.0

#include "RunHistoryDialog.h"

#include "RunCompareDialog.h"
#include "RunFileDialog.h"
#include "RunListModel.h"
#include "RunWords.h"
#include "WorkstationSettings.h"

#include <WbBaseUI/PackagedMsgBox.h>
#include <WbBaseUI/WbScaledForm.h>
#include <WbBaseUI/WbSystemDialogs.h>
#include <WbBaseUI/WbToast.h>

#include <QHeaderView>
#include <QPointer>
#include <QScrollBar>
#include <QSignalBlocker>

#include <chrono>

namespace
{
using namespace std::chrono_literals;

constexpr std::chrono::milliseconds typingPause = 250ms;

QVector<RpaRunResult> ResultsOf(const QVariant& choice)
{
    return choice.isNull() ? QVector<RpaRunResult>() : QVector<RpaRunResult>{RpaRunResult(choice.toInt())};
}
} // namespace

RunHistoryDialog::RunHistoryDialog(RpaRunHistory* runHistory, const QString& app,
                                   WorkstationSettings* settings, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true), history(runHistory), appId(app),
      dateLanguage(settings->GetDateLanguage()), model(new RunListModel(dateLanguage, this))
{
    ui.setupUi(GetContentWidget());
    WbScaledForm::Follow(GetContentWidget());
    setObjectName(QStringLiteral("RunHistoryDialog"));
    SetTitle(QStringLiteral("运行记录"));
    ui.viewRuns->setModel(model);
    ui.viewRun->SetDateLanguage(dateLanguage);
    ui.checkKeep->setChecked(settings->GetKeepsRuns());
    connect(ui.checkKeep, &QCheckBox::toggled, settings, &WorkstationSettings::SetKeepsRuns);
    FillFilters();
    Connect();
    ShowSelected();
    Load();
    ui.viewRuns->setFocus();
}

void RunHistoryDialog::FillFilters()
{
    ui.comboResult->addItem(QStringLiteral("全部结果"));
    for (const RpaRunResult result :
         {RpaRunResult::Succeeded, RpaRunResult::Failed, RpaRunResult::Stopped, RpaRunResult::Lost})
        ui.comboResult->addItem(RunWords::Result(result), int(result));
    ui.comboVersion->addItem(QStringLiteral("全部版本"));
}

void RunHistoryDialog::Connect()
{
    typing.setSingleShot(true);
    typing.setInterval(typingPause);
    const auto chosen = QOverload<int>::of(&QComboBox::currentIndexChanged);
    connect(&typing, &QTimer::timeout, this, &RunHistoryDialog::Load);
    connect(ui.editText, &QLineEdit::textChanged, &typing, QOverload<>::of(&QTimer::start));
    connect(ui.comboResult, chosen, this, &RunHistoryDialog::Load);
    connect(ui.comboVersion, chosen, this, &RunHistoryDialog::Load);
    connect(ui.viewRuns->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &RunHistoryDialog::ShowSelected);
    connect(ui.viewRun, &RunView::SigShowPlace, this, &RunHistoryDialog::SigShowPlace);
    connect(ui.buttonCompare, &QPushButton::clicked, this, &RunHistoryDialog::Compare);
    connect(ui.buttonExport, &QPushButton::clicked, this, &RunHistoryDialog::Export);
    connect(ui.buttonOpen, &QPushButton::clicked, this, &RunHistoryDialog::OpenRunFile);
    connect(ui.buttonRemove, &QPushButton::clicked, this, &RunHistoryDialog::Remove);
    connect(ui.buttonRemoveAll, &QPushButton::clicked, this, &RunHistoryDialog::RemoveAll);
    connect(ui.buttonClose, &QPushButton::clicked, this, &QDialog::accept);
    connect(history, &RpaRunHistory::SigChanged, this, [this](const QString& changed) {
        if (changed == appId)
            Load();
    });
}

bool RunHistoryDialog::IsFiltered() const
{
    return ui.comboResult->currentIndex() > 0 || ui.comboVersion->currentIndex() > 0 ||
           !ui.editText->text().trimmed().isEmpty();
}

void RunHistoryDialog::Load()
{
    typing.stop();
    RpaRunFilter filter;
    filter.appId = appId;
    filter.results = ResultsOf(ui.comboResult->currentData());
    filter.versionName = ui.comboVersion->currentIndex() > 0 ? ui.comboVersion->currentText() : QString();
    filter.text = ui.editText->text().trimmed();
    const quint64 question = ++asked;
    history->List(filter, this, [this, question](const QVector<RpaRunRecord>& runs) {
        if (question == asked)
            ShowRuns(runs);
    });
}

void RunHistoryDialog::ShowRuns(const QVector<RpaRunRecord>& runs)
{
    const qint64 selected = Selected().id;
    AddVersions(runs);
    model->SetRuns(runs);
    const int row = qMax(0, model->RowOf(selected));
    ui.viewRuns->setCurrentIndex(model->index(row, 0));
    if (showsFailure)
        PickLastFailure();
    for (int column = 0; column < RunListModel::ColumnCount; ++column)
        ui.viewRuns->resizeColumnToContents(column);
    ui.labelCount->setText(QStringLiteral("共 %1 次").arg(runs.size()));
    ui.buttonRemoveAll->setEnabled(!runs.isEmpty() || IsFiltered());
    ShowSelected();
}

// A version that is filtered for stays, though no run is left of it.
void RunHistoryDialog::AddVersions(const QVector<RpaRunRecord>& runs)
{
    const QSignalBlocker quiet(ui.comboVersion);
    for (const RpaRunRecord& run : runs)
        if (!run.versionName.isEmpty() && ui.comboVersion->findText(run.versionName) < 0)
            ui.comboVersion->addItem(run.versionName);
}

RpaRunRecord RunHistoryDialog::Selected() const
{
    return model->GetRun(ui.viewRuns->currentIndex().row());
}

void RunHistoryDialog::ShowSelected()
{
    const RpaRunRecord run = Selected();
    const bool ended = run.id != 0 && run.result != RpaRunResult::Running;
    ui.buttonRemove->setEnabled(ended);
    ui.buttonExport->setEnabled(ended);
    ui.buttonCompare->setEnabled(ended && RunCompareDialog::RunBefore(model->GetRuns(), run.id) != 0);
    if (run.id == 0) {
        ui.viewRun->ShowRun(run, {},
                            IsFiltered()
                                ? QStringLiteral("没有符合条件的运行记录。")
                                : QStringLiteral("还没有运行记录。运行一次流程，结果和日志会留在这里。"));
        return;
    }
    history->Read(run.id, this, [this](const RpaRunRecord& record, const QVector<RpaLogLine>& log) {
        if (record.id != 0 && record.id == Selected().id)
            ShowRun(record, log);
    });
    history->ReadDetails(run.id, this, [this, id = run.id](const RpaRunDetails& details) {
        if (id == Selected().id)
            ui.viewRun->ShowDetails(details);
    });
}

void RunHistoryDialog::ShowRun(const RpaRunRecord& run, const QVector<RpaLogLine>& log)
{
    ui.viewRun->ShowRun(run, log);
}

void RunHistoryDialog::ShowLastFailure()
{
    showsFailure = true;
    Load();
}

void RunHistoryDialog::PickLastFailure()
{
    showsFailure = false;
    for (int row = 0; row < model->rowCount(); ++row) {
        if (model->GetRun(row).result != RpaRunResult::Failed)
            continue;
        ui.viewRuns->setCurrentIndex(model->index(row, 0));
        ui.viewRun->PickTab(RunView::FailureTab);
        return;
    }
}

void RunHistoryDialog::Compare()
{
    auto* dialog = new RunCompareDialog(history, model->GetRuns(), Selected().id, dateLanguage, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &RunCompareDialog::SigShowPlace, this, &RunHistoryDialog::SigShowPlace);
    dialog->show();
}

void RunHistoryDialog::Export()
{
    const QPointer<RunHistoryDialog> self(this);
    const qint64 id = Selected().id;
    const QString path = WbSystemDialogs::SaveFile(
        this, QStringLiteral("导出运行记录"), QStringLiteral("运行记录.rparun"), RunFileDialog::Filter());
    if (path.isEmpty() || !self)
        return;
    history->Export(id, path, history, [](const QString& problem) {
        if (problem.isEmpty())
            WbToast::Show(QStringLiteral("已导出，可以发给其他作者打开"), ToastSuccess);
        else
            WbToast::Show(problem, ToastError);
    });
}

void RunHistoryDialog::OpenRunFile()
{
    const QPointer<RunHistoryDialog> self(this);
    const QString path =
        WbSystemDialogs::OpenFile(this, QStringLiteral("打开运行记录"), QString(), RunFileDialog::Filter());
    if (path.isEmpty() || !self)
        return;
    history->ReadFile(path, this, [this](const RpaRunFile& file, const QString& problem) {
        if (problem.isEmpty())
            ShowFile(file);
        else
            WbToast::Show(problem, ToastError);
    });
}

void RunHistoryDialog::ShowFile(const RpaRunFile& file)
{
    auto* dialog = new RunFileDialog(file, dateLanguage, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
}

void RunHistoryDialog::Remove()
{
    history->Remove(Selected().id);
}

void RunHistoryDialog::RemoveAll()
{
    const QPointer<RunHistoryDialog> self(this);
    const int answer = PackagedMsgBox::question(
        QStringLiteral("删除这个应用的全部运行记录吗？删除后不能恢复。"), this,
        QMessageBox::Yes | QMessageBox::Cancel, true, nullptr, {{QMessageBox::Yes, QStringLiteral("删除")}});
    if (self && answer == QMessageBox::Yes)
        history->RemoveAll(appId);
}
