// SPDX-License-Identifier: Apache-2.0

#include "PackageTable_p.h"
#include "ui_RpaPackagePanel.h"

#include <OxBase/DpiTool.h>
#include <RpaPackage/RpaPackagePanel.h>
#include <WbBaseUI/WbIconPicture.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbTheme.h>

#include <QHeaderView>
#include <QShortcut>

class RpaPackagePanel::Private
{
public:
    Private(RpaPackagePanel& panel, PackageService& packages) : q(panel), service(packages), table(&panel) {}

    void Build();
    void Connect();

    void ShowList();
    void Add();
    void RemoveCurrent();
    void Install();
    void TellProblem(const QString& problem);
    void TellNote(const QString& note, WbColor color);
    void Colour();
    void UpdateState();
    void ShowOnly();

    RpaPackagePanel& q;
    PackageService& service;
    PackageTable table;
    QString shownConfiguration; // as the service has it
    QString savedList;          // the same, as the table writes it
    bool isEditable = true;
    bool installing = false;
    bool changed = false;
    WbColor noteColor = WbColor::TextSecondary;
    Ui::RpaPackagePanel ui{};
};

void RpaPackagePanel::Private::Build()
{
    ui.setupUi(&q);
    ui.tablePackages->setModel(&table);
    ui.tablePackages->verticalHeader()->setDefaultSectionSize(DpiTool::ScaleDefault(36));
    QHeaderView* const header = ui.tablePackages->horizontalHeader();
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setSectionResizeMode(QHeaderView::Stretch);
    // The state is the longest text that is not the user's own.
    header->setSectionResizeMode(PackageTable::Version, QHeaderView::Fixed);
    header->setSectionResizeMode(PackageTable::State, QHeaderView::Fixed);
    header->resizeSection(PackageTable::Version, DpiTool::ScaleDefault(130));
    header->resizeSection(PackageTable::State, DpiTool::ScaleDefault(220));
    ui.progressPackages->setFixedHeight(DpiTool::ScaleDefault(6));
    ui.layoutEmpty->insertWidget(1, new WbIconPicture(QStringLiteral("package"), 56, WbColor::TextDisabled));
    ui.buttonAddPackage->setIcon(WbIcons::Get(QStringLiteral("add")));
    ui.buttonRemovePackage->setIcon(WbIcons::Get(QStringLiteral("delete")));
    ui.buttonInstallPackages->setIcon(WbIcons::Get(QStringLiteral("download")));
    ui.buttonSavePackages->setIcon(WbIcons::Get(QStringLiteral("save"), WbColor::TextOnAccent));
}

void RpaPackagePanel::Private::Connect()
{
    connect(ui.buttonAddPackage, &QPushButton::clicked, &q, [this] { Add(); });
    connect(ui.editPackageName, &QLineEdit::returnPressed, &q, [this] { Add(); });
    connect(ui.editPackageVersion, &QLineEdit::returnPressed, &q, [this] { Add(); });
    connect(ui.buttonRemovePackage, &QPushButton::clicked, &q, [this] { RemoveCurrent(); });
    connect(ui.buttonInstallPackages, &QPushButton::clicked, &q, [this] { Install(); });
    connect(ui.buttonSavePackages, &QPushButton::clicked, &q, &RpaPackagePanel::Save);
    connect(new QShortcut(QKeySequence::Delete, ui.tablePackages, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, &q, [this] { RemoveCurrent(); });
    connect(new QShortcut(QKeySequence::Save, &q, nullptr, nullptr, Qt::WidgetWithChildrenShortcut),
            &QShortcut::activated, &q, &RpaPackagePanel::Save);
    connect(&table, &PackageTable::SigEdited, &q, [this] {
        TellNote(QString(), WbColor::TextSecondary);
        UpdateState();
    });
    connect(&table, &PackageTable::SigRefused, &q, [this](const QString& problem) { TellProblem(problem); });
    connect(ui.tablePackages->selectionModel(), &QItemSelectionModel::selectionChanged, &q,
            [this] { UpdateState(); });
    connect(WbTheme::Instance(), &WbTheme::SigChanged, &q, [this] { Colour(); });
    connect(&service, &PackageService::SigStatesChanged, &q, [this] { ShowList(); });
    connect(&service, &PackageService::SigProgress, &q, [this](int step, int steps, const QString& text) {
        installing = true;
        ui.progressPackages->setRange(0, steps);
        ui.progressPackages->setValue(step - 1);
        TellNote(text, WbColor::TextSecondary);
        UpdateState();
    });
    connect(&service, &PackageService::SigInstallationEnded, &q, [this](const QString& problem) {
        installing = service.GetPendingCount() > 0;
        if (problem.isEmpty())
            TellNote(QStringLiteral("所有扩展包均已安装"), WbColor::SuccessText);
        else
            TellProblem(problem);
        UpdateState();
        if (q.hasFocus())
            ui.buttonInstallPackages->setFocus();
    });
}

void RpaPackagePanel::Private::ShowList()
{
    if (service.GetConfiguration() == shownConfiguration) {
        table.TakeStatus(service.GetStates());
    } else {
        shownConfiguration = service.GetConfiguration();
        table.SetStates(service.GetStates());
        savedList = table.GetList();
        TellNote(QString(), WbColor::TextSecondary);
    }
    UpdateState();
}

void RpaPackagePanel::Private::Add()
{
    QString problem;
    const int row =
        table.Add(ui.editPackageName->text().trimmed(), ui.editPackageVersion->text().trimmed(), &problem);
    if (row < 0) {
        TellProblem(problem);
        return;
    }
    ui.tablePackages->selectRow(row);
    ui.editPackageName->clear();
    ui.editPackageVersion->clear();
    ui.editPackageName->setFocus();
}

void RpaPackagePanel::Private::RemoveCurrent()
{
    const int row = ui.tablePackages->currentIndex().row();
    if (row < 0 || installing || !isEditable)
        return;
    table.Remove(row);
    ui.tablePackages->selectRow(qMin(row, table.rowCount() - 1));
}

void RpaPackagePanel::Private::Install()
{
    // What is installed must be what the app asks for, or the next run would not know of it.
    if (changed)
        q.Save();
    // What is switched off loses the keyboard; left to itself it would land in any field of the window.
    q.setFocus();
    installing = true;
    UpdateState();
    service.InstallCurrent();
}

void RpaPackagePanel::Private::TellProblem(const QString& problem)
{
    TellNote(problem, WbColor::DangerText);
}

void RpaPackagePanel::Private::TellNote(const QString& note, WbColor color)
{
    noteColor = color;
    ui.labelPackageNote->setText(note);
    Colour();
}

void RpaPackagePanel::Private::Colour()
{
    const auto paint = [](WbLabel* label, WbColor color) {
        label->setStyleSheet(QStringLiteral("color: %1").arg(WbTheme::Instance()->Color(color).name()));
    };
    paint(ui.labelPackageNote, noteColor);
    paint(ui.labelHint, WbColor::TextSecondary);
}

void RpaPackagePanel::Private::UpdateState()
{
    const bool isEmpty = table.rowCount() == 0;
    ui.stackPackages->setCurrentIndex(isEmpty ? 1 : 0);
    for (QWidget* widget : std::initializer_list<QWidget*>{ui.editPackageName, ui.editPackageVersion,
                                                           ui.buttonAddPackage, ui.tablePackages})
        widget->setEnabled(!installing);
    ui.buttonRemovePackage->setEnabled(!installing && ui.tablePackages->selectionModel()->hasSelection());
    ui.buttonInstallPackages->setEnabled(!installing && !isEmpty);
    ui.progressPackages->setVisible(installing);
    changed = table.GetList() != savedList;
    ui.buttonSavePackages->setEnabled(!installing && changed);
}

// What nobody would keep is not offered.
void RpaPackagePanel::Private::ShowOnly()
{
    for (QWidget* widget :
         std::initializer_list<QWidget*>{ui.editPackageName, ui.editPackageVersion, ui.buttonAddPackage,
                                         ui.buttonRemovePackage, ui.buttonSavePackages})
        widget->hide();
    ui.tablePackages->setEditTriggers(QAbstractItemView::NoEditTriggers);
    ui.labelHint->setText(QStringLiteral("流程中还没有需要扩展包的指令。"));
}

RpaPackagePanel::RpaPackagePanel(PackageService* service, QWidget* parent)
    : WbBaseWidget(parent), d(std::make_unique<Private>(*this, *service))
{
    d->Build();
    d->Connect();
    d->isEditable = service->IsListTaken();
    if (!d->isEditable)
        d->ShowOnly();

    d->installing = service->GetPendingCount() > 0;
    d->savedList = d->table.GetList();
    d->ShowList();
    d->Colour();
    service->Refresh();
}

RpaPackagePanel::~RpaPackagePanel() = default;

bool RpaPackagePanel::IsEditable() const
{
    return d->isEditable;
}

bool RpaPackagePanel::IsChanged() const
{
    return d->changed;
}

void RpaPackagePanel::Save()
{
    if (!d->changed)
        return;
    d->service.Save(d->table.GetList());
    d->TellNote(QStringLiteral("已保存到应用，请记得保存应用"), WbColor::SuccessText);
    d->service.Refresh();
}
