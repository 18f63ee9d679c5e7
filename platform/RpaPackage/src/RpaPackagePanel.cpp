// SPDX-License-Identifier: Apache-2.0

#include "PackageTable_p.h"

#include <OxBase/DpiTool.h>
#include <RpaPackage/RpaPackagePanel.h>
#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbIconPicture.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbTheme.h>

#include <QBoxLayout>
#include <QHeaderView>
#include <QProgressBar>
#include <QShortcut>
#include <QStackedWidget>
#include <QTableView>

class RpaPackagePanel::Private
{
public:
    Private(RpaPackagePanel& panel, PackageService& packages) : q(panel), service(packages), table(&panel) {}

    QLayout* CreateAddRow();
    QWidget* CreateView();
    QWidget* CreateEmptyState();
    QLayout* CreateFooter();
    WbPushButton* Button(const char* name, const QString& text, const QString& icon, Wb::ButtonType type);
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

    WbLineEdit* editName = nullptr;
    WbLineEdit* editVersion = nullptr;
    WbPushButton* buttonAdd = nullptr;
    WbPushButton* buttonRemove = nullptr;
    WbPushButton* buttonInstall = nullptr;
    WbPushButton* buttonSave = nullptr;
    WbLabel* labelNote = nullptr;
    WbLabel* labelHint = nullptr;
    QProgressBar* progress = nullptr;
    QTableView* view = nullptr;
    QStackedWidget* stack = nullptr;
};

WbPushButton* RpaPackagePanel::Private::Button(const char* name, const QString& text, const QString& icon,
                                               Wb::ButtonType type)
{
    auto* button = new WbPushButton(&q, type);
    button->setObjectName(QLatin1String(name));
    button->setText(text);
    button->setIcon(
        WbIcons::Get(icon, type == Wb::PrimaryButton ? WbColor::TextOnAccent : WbColor::TextSecondary));
    button->setAutoDefault(false);
    return button;
}

QLayout* RpaPackagePanel::Private::CreateAddRow()
{
    editName = new WbLineEdit(&q);
    editName->setObjectName(QStringLiteral("editPackageName"));
    editName->setAccessibleName(QStringLiteral("扩展包名称"));
    editName->setPlaceholderText(QStringLiteral("名称，例如 openpyxl"));
    editVersion = new WbLineEdit(&q);
    editVersion->setObjectName(QStringLiteral("editPackageVersion"));
    editVersion->setAccessibleName(QStringLiteral("扩展包版本"));
    editVersion->setPlaceholderText(QStringLiteral("版本，留空为任意版本"));
    buttonAdd =
        Button("buttonAddPackage", QStringLiteral("添加"), QStringLiteral("add"), Wb::SecondaryButton);
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(editName, 3);
    row->addWidget(editVersion, 2);
    row->addWidget(buttonAdd);
    return row;
}

QWidget* RpaPackagePanel::Private::CreateView()
{
    view = new QTableView(&q);
    view->setObjectName(QStringLiteral("tablePackages"));
    view->setAccessibleName(QStringLiteral("扩展包列表"));
    view->setModel(&table);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setSelectionMode(QAbstractItemView::SingleSelection);
    view->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    view->setShowGrid(false);
    view->setWordWrap(false);
    view->setTabKeyNavigation(false);
    view->verticalHeader()->hide();
    view->verticalHeader()->setDefaultSectionSize(DpiTool::ScaleDefault(36));
    view->horizontalHeader()->setHighlightSections(false);
    view->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    view->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    // The state is the longest text that is not the user's own.
    view->horizontalHeader()->setSectionResizeMode(PackageTable::Version, QHeaderView::Fixed);
    view->horizontalHeader()->setSectionResizeMode(PackageTable::State, QHeaderView::Fixed);
    view->horizontalHeader()->resizeSection(PackageTable::Version, DpiTool::ScaleDefault(130));
    view->horizontalHeader()->resizeSection(PackageTable::State, DpiTool::ScaleDefault(220));
    stack = new QStackedWidget(&q);
    stack->addWidget(view);
    stack->addWidget(CreateEmptyState());
    return stack;
}

QWidget* RpaPackagePanel::Private::CreateEmptyState()
{
    auto* empty = new QWidget(&q);
    empty->setObjectName(QStringLiteral("emptyPackages"));
    auto* picture = new WbIconPicture(QStringLiteral("package"), 56, WbColor::TextDisabled, empty);
    auto* title = new WbLabel(QStringLiteral("还没有扩展包"), empty);
    title->setProperty("wbRole", QStringLiteral("heading"));
    labelHint = new WbLabel(
        QStringLiteral("流程要用到的 Python 扩展包会列在这里。在上方输入名称，再按“添加”。"), empty);
    labelHint->setWordWrap(true);
    auto* layout = new QVBoxLayout(empty);
    layout->setSpacing(8);
    layout->addStretch();
    layout->addWidget(picture);
    for (WbLabel* label : {title, labelHint}) {
        label->setAlignment(Qt::AlignCenter);
        layout->addWidget(label);
    }
    layout->addStretch();
    return empty;
}

QLayout* RpaPackagePanel::Private::CreateFooter()
{
    buttonRemove =
        Button("buttonRemovePackage", QStringLiteral("移除"), QStringLiteral("delete"), Wb::SecondaryButton);
    buttonInstall = Button("buttonInstallPackages", QStringLiteral("安装"), QStringLiteral("download"),
                           Wb::SecondaryButton);
    buttonSave =
        Button("buttonSavePackages", QStringLiteral("保存"), QStringLiteral("save"), Wb::PrimaryButton);
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(buttonRemove);
    row->addStretch();
    row->addWidget(buttonInstall);
    row->addWidget(buttonSave);
    return row;
}

void RpaPackagePanel::Private::Connect()
{
    connect(buttonAdd, &QPushButton::clicked, &q, [this] { Add(); });
    connect(editName, &QLineEdit::returnPressed, &q, [this] { Add(); });
    connect(editVersion, &QLineEdit::returnPressed, &q, [this] { Add(); });
    connect(buttonRemove, &QPushButton::clicked, &q, [this] { RemoveCurrent(); });
    connect(buttonInstall, &QPushButton::clicked, &q, [this] { Install(); });
    connect(buttonSave, &QPushButton::clicked, &q, &RpaPackagePanel::Save);
    connect(new QShortcut(QKeySequence::Delete, view, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, &q, [this] { RemoveCurrent(); });
    connect(new QShortcut(QKeySequence::Save, &q, nullptr, nullptr, Qt::WidgetWithChildrenShortcut),
            &QShortcut::activated, &q, &RpaPackagePanel::Save);
    connect(&table, &PackageTable::SigEdited, &q, [this] {
        TellNote(QString(), WbColor::TextSecondary);
        UpdateState();
    });
    connect(&table, &PackageTable::SigRefused, &q, [this](const QString& problem) { TellProblem(problem); });
    connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, &q, [this] { UpdateState(); });
    connect(WbTheme::Instance(), &WbTheme::SigChanged, &q, [this] { Colour(); });
    connect(&service, &PackageService::SigStatesChanged, &q, [this] { ShowList(); });
    connect(&service, &PackageService::SigProgress, &q, [this](int step, int steps, const QString& text) {
        installing = true;
        progress->setRange(0, steps);
        progress->setValue(step - 1);
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
            buttonInstall->setFocus();
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
    const int row = table.Add(editName->text().trimmed(), editVersion->text().trimmed(), &problem);
    if (row < 0) {
        TellProblem(problem);
        return;
    }
    view->selectRow(row);
    editName->clear();
    editVersion->clear();
    editName->setFocus();
}

void RpaPackagePanel::Private::RemoveCurrent()
{
    const int row = view->currentIndex().row();
    if (row < 0 || installing || !isEditable)
        return;
    table.Remove(row);
    view->selectRow(qMin(row, table.rowCount() - 1));
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
    labelNote->setText(note);
    Colour();
}

void RpaPackagePanel::Private::Colour()
{
    const auto paint = [](WbLabel* label, WbColor color) {
        label->setStyleSheet(QStringLiteral("color: %1").arg(WbTheme::Instance()->Color(color).name()));
    };
    paint(labelNote, noteColor);
    paint(labelHint, WbColor::TextSecondary);
}

void RpaPackagePanel::Private::UpdateState()
{
    const bool isEmpty = table.rowCount() == 0;
    stack->setCurrentIndex(isEmpty ? 1 : 0);
    for (QWidget* widget : std::initializer_list<QWidget*>{editName, editVersion, buttonAdd, view})
        widget->setEnabled(!installing);
    buttonRemove->setEnabled(!installing && view->selectionModel()->hasSelection());
    buttonInstall->setEnabled(!installing && !isEmpty);
    progress->setVisible(installing);
    changed = table.GetList() != savedList;
    buttonSave->setEnabled(!installing && changed);
}

// What nobody would keep is not offered.
void RpaPackagePanel::Private::ShowOnly()
{
    for (QWidget* widget :
         std::initializer_list<QWidget*>{editName, editVersion, buttonAdd, buttonRemove, buttonSave})
        widget->hide();
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    labelHint->setText(QStringLiteral("流程中还没有需要扩展包的指令。"));
}

RpaPackagePanel::RpaPackagePanel(PackageService* service, QWidget* parent)
    : WbBaseWidget(parent), d(std::make_unique<Private>(*this, *service))
{
    setObjectName(QStringLiteral("RpaPackagePanel"));
    d->labelNote = new WbLabel(this);
    d->labelNote->setObjectName(QStringLiteral("labelPackageNote"));
    d->labelNote->setWordWrap(true);
    d->progress = new QProgressBar(this);
    d->progress->setObjectName(QStringLiteral("progressPackages"));
    d->progress->setTextVisible(false);
    d->progress->setFixedHeight(DpiTool::ScaleDefault(6));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    layout->addLayout(d->CreateAddRow());
    layout->addWidget(d->CreateView(), 1);
    layout->addWidget(d->labelNote);
    layout->addWidget(d->progress);
    layout->addLayout(d->CreateFooter());
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
