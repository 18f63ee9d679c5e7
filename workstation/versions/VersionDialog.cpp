// SPDX-License-Identifier: Apache-2.0

#include "VersionDialog.h"

#include "VersionController.h"
#include "VersionDetails.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>

#include <QBoxLayout>
#include <QListWidget>
#include <QScrollArea>
#include <QSignalBlocker>

namespace
{
constexpr int longestNote = 200;
constexpr int shownSaves = 100;

WbLabel* Hint(const char* objectName)
{
    auto* label = new WbLabel;
    label->setObjectName(QLatin1String(objectName));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setProperty("hint", true);
    return label;
}
} // namespace

VersionDialog::VersionDialog(VersionController* versionController, const QString& pin,
                             const QString& shownName, DateLanguage language, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true), desk(versionController), account(pin),
      dateLanguage(language), labelUsers(Hint("labelUsersHave")), list(new QListWidget)
{
    setObjectName(QStringLiteral("VersionDialog"));
    SetTitle(QStringLiteral("版本详情"));
    list->setObjectName(QStringLiteral("listVersions"));
    list->setAccessibleName(QStringLiteral("版本"));
    list->setTextElideMode(Qt::ElideRight);
    auto* columns = new QHBoxLayout;
    columns->setSpacing(16);
    columns->addWidget(list, 2);
    columns->addWidget(CreateDetails(), 3);
    auto* layout = new QVBoxLayout(GetContentWidget());
    layout->setContentsMargins(24, 16, 24, 20);
    layout->setSpacing(12);
    layout->addWidget(labelUsers);
    layout->addLayout(columns, 1);
    layout->addWidget(CreateNote());
    GetContentWidget()->setMinimumSize(DpiTool::ScaleDefault(640), DpiTool::ScaleDefault(380));

    connect(list, &QListWidget::currentRowChanged, this, &VersionDialog::Update);
    connect(editNote, &QLineEdit::returnPressed, this, &VersionDialog::SaveNote);
    connect(buttonNote, &QPushButton::clicked, this, &VersionDialog::SaveNote);
    connect(desk, &VersionController::SigChanged, this, &VersionDialog::Update);
    connect(desk, &VersionController::SigNoted, this, &VersionDialog::SlotNoted);
    connect(desk, &VersionController::SigNotNoted, this, &VersionDialog::SlotNotNoted);
    setTabOrder(list, editNote);
    setTabOrder(editNote, buttonNote);
    FillList(shownName);
    desk->Load();
    Update();
    list->setFocus();
}

VersionDialog::~VersionDialog() = default;

QWidget* VersionDialog::CreateDetails()
{
    details = new VersionDetails(shownSaves);
    auto* inner = new QWidget;
    auto* layout = new QVBoxLayout(inner);
    layout->setContentsMargins(0, 0, 8, 0);
    layout->addWidget(details);
    layout->addStretch();
    auto* scroll = new QScrollArea;
    scroll->setObjectName(QStringLiteral("scrollDetails"));
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(inner);
    return scroll;
}

QWidget* VersionDialog::CreateNote()
{
    labelNote = Hint("labelNote");
    editNote = new WbLineEdit;
    editNote->setObjectName(QStringLiteral("editNote"));
    editNote->setAccessibleName(QStringLiteral("最近一次保存的说明"));
    editNote->setPlaceholderText(QStringLiteral("最近一次保存改了什么，例如：登录页换了新的按钮"));
    editNote->setMaxLength(longestNote);
    buttonNote = new WbPushButton(nullptr, Wb::PrimaryButton);
    buttonNote->setObjectName(QStringLiteral("buttonNote"));
    buttonNote->setText(QStringLiteral("保存说明"));
    buttonNote->setAutoDefault(false);
    auto* field = new QHBoxLayout;
    field->setSpacing(12);
    field->addWidget(editNote, 1);
    field->addWidget(buttonNote);
    auto* area = new QWidget;
    auto* layout = new QVBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    layout->addLayout(field);
    layout->addWidget(labelNote);
    return area;
}

void VersionDialog::FillList(const QString& shownName)
{
    const QSignalBlocker quiet(list);
    for (const VersionFacts& version : desk->GetVersions()) {
        auto* item = new QListWidgetItem(VersionWords::Name(version), list);
        item->setData(Qt::UserRole, version.id);
        if (VersionWords::Name(version) == shownName && !list->currentItem())
            list->setCurrentItem(item);
    }
    if (!list->currentItem())
        list->setCurrentRow(0);
}

void VersionDialog::Update()
{
    const QListWidgetItem* const item = list->currentItem();
    VersionFacts shown;
    for (const VersionFacts& version : desk->GetVersions())
        if (item && version.id == item->data(Qt::UserRole).toString())
            shown = version;
    const bool isLoading = desk->IsLoading() && desk->GetReleases().isEmpty();
    const QString users =
        isLoading ? QStringLiteral("正在读取…") : VersionWords::UsersHave(desk->GetReleases());
    labelUsers->setText(desk->GetProblem().isEmpty() ? users : desk->GetProblem());
    details->setVisible(!shown.id.isEmpty());
    const QString progress = desk->IsLoading() ? QStringLiteral("正在读取保存记录…") : desk->GetProblem();
    details->Show(shown, progress, dateLanguage);
    ShowNote(shown);
}

void VersionDialog::ShowNote(const VersionFacts& version)
{
    const VersionServiceSave save = version.saves.value(0);
    const bool isAnother = save.versionId != noted.versionId || save.revision != noted.revision;
    noted = save;
    if (isAnother)
        editNote->setText(save.note); // what is being written stays
    const bool isOwn = !save.versionId.isEmpty() && save.pin == account;
    editNote->setEnabled(isOwn);
    buttonNote->setEnabled(isOwn);
    if (version.id.isEmpty()) {
        labelNote->setText(
            QStringLiteral("还没有保存过的版本。保存（Ctrl+S）之后，可以在这里给这次保存写一句说明。"));
    } else if (!isOwn && !save.versionId.isEmpty()) {
        labelNote->setText(QStringLiteral("最近一次保存的人是“%1”，只有本人可以写说明。").arg(save.name));
    } else if (isAnother) {
        labelNote->setText(QStringLiteral("说明保存在服务器上，能编辑这个应用的人都看得到。"));
    }
}

void VersionDialog::SaveNote()
{
    if (!buttonNote->isEnabled())
        return;
    labelNote->setText(QStringLiteral("正在保存说明…"));
    buttonNote->setEnabled(false);
    desk->Note(noted, editNote->text().simplified());
}

void VersionDialog::SlotNoted()
{
    Update();
    labelNote->setText(QStringLiteral("说明已保存。"));
}

void VersionDialog::SlotNotNoted(const QString& problem)
{
    Update();
    labelNote->setText(QStringLiteral("说明没有保存：%1").arg(problem));
}
