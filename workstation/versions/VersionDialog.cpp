// SPDX-License-Identifier: Apache-2.0

#include "VersionDialog.h"

#include "VersionController.h"
#include "VersionDetails.h"

#include <WbBaseUI/WbScaledForm.h>

#include <QSignalBlocker>

namespace
{
constexpr int shownSaves = 100;
}

VersionDialog::VersionDialog(VersionController* versionController, const QString& pin,
                             const QString& shownName, DateLanguage language, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true), desk(versionController), account(pin),
      dateLanguage(language), details(new VersionDetails(shownSaves))
{
    ui.setupUi(GetContentWidget());
    WbScaledForm::Follow(GetContentWidget());
    setObjectName(QStringLiteral("VersionDialog"));
    SetTitle(QStringLiteral("版本详情"));
    ui.layoutDetails->insertWidget(0, details);
    Connect();
    FillList(shownName);
    desk->Load();
    Update();
    ui.listVersions->setFocus();
}

void VersionDialog::Connect()
{
    connect(ui.listVersions, &QListWidget::currentRowChanged, this, &VersionDialog::Update);
    connect(ui.editNote, &QLineEdit::returnPressed, this, &VersionDialog::SaveNote);
    connect(ui.buttonNote, &QPushButton::clicked, this, &VersionDialog::SaveNote);
    connect(desk, &VersionController::SigChanged, this, &VersionDialog::Update);
    connect(desk, &VersionController::SigNoted, this, &VersionDialog::SlotNoted);
    connect(desk, &VersionController::SigNotNoted, this, &VersionDialog::SlotNotNoted);
    setTabOrder(ui.listVersions, ui.editNote);
    setTabOrder(ui.editNote, ui.buttonNote);
}

void VersionDialog::FillList(const QString& shownName)
{
    const QSignalBlocker quiet(ui.listVersions);
    for (const VersionFacts& version : desk->GetVersions()) {
        auto* item = new QListWidgetItem(VersionWords::Name(version), ui.listVersions);
        item->setData(Qt::UserRole, version.id);
        if (VersionWords::Name(version) == shownName && !ui.listVersions->currentItem())
            ui.listVersions->setCurrentItem(item);
    }
    if (!ui.listVersions->currentItem())
        ui.listVersions->setCurrentRow(0);
}

void VersionDialog::Update()
{
    const QListWidgetItem* const item = ui.listVersions->currentItem();
    VersionFacts shown;
    for (const VersionFacts& version : desk->GetVersions())
        if (item && version.id == item->data(Qt::UserRole).toString())
            shown = version;
    const bool isLoading = desk->IsLoading() && desk->GetReleases().isEmpty();
    const QString users =
        isLoading ? QStringLiteral("正在读取…") : VersionWords::UsersHave(desk->GetReleases());
    ui.labelUsersHave->setText(desk->GetProblem().isEmpty() ? users : desk->GetProblem());
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
        ui.editNote->setText(save.note); // what is being written stays
    const bool isOwn = !save.versionId.isEmpty() && save.pin == account;
    ui.editNote->setEnabled(isOwn);
    ui.buttonNote->setEnabled(isOwn);
    if (version.id.isEmpty()) {
        ui.labelNote->setText(
            QStringLiteral("还没有保存过的版本。保存（Ctrl+S）之后，可以在这里给这次保存写一句说明。"));
    } else if (!isOwn && !save.versionId.isEmpty()) {
        ui.labelNote->setText(QStringLiteral("最近一次保存的人是“%1”，只有本人可以写说明。").arg(save.name));
    } else if (isAnother) {
        ui.labelNote->setText(QStringLiteral("说明保存在服务器上，能编辑这个应用的人都看得到。"));
    }
}

void VersionDialog::SaveNote()
{
    if (!ui.buttonNote->isEnabled())
        return;
    ui.labelNote->setText(QStringLiteral("正在保存说明…"));
    ui.buttonNote->setEnabled(false);
    desk->Note(noted, ui.editNote->text().simplified());
}

void VersionDialog::SlotNoted()
{
    Update();
    ui.labelNote->setText(QStringLiteral("说明已保存。"));
}

void VersionDialog::SlotNotNoted(const QString& problem)
{
    Update();
    ui.labelNote->setText(QStringLiteral("说明没有保存：%1").arg(problem));
}
