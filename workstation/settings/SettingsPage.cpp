// SPDX-License-Identifier: Apache-2.0

#include "SettingsPage.h"

#include "UsageSection.h"
#include "WorkstationSettings.h"

#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbScaledForm.h>
#include <WbBaseUI/WbSystemDialogs.h>

#include <QDir>

namespace
{
constexpr auto chosen = QOverload<int>::of(&QComboBox::activated);
}

SettingsPage::SettingsPage(WorkstationSettings* store, QWidget* parent)
    : WbBaseWidget(parent), settings(store), usage(new UsageSection(store, this))
{
    ui.setupUi(this);
    for (int percent : WorkstationSettings::AllScales())
        ui.comboScale->addItem(QStringLiteral("%1 %").arg(percent), percent);
    for (DateLanguage language : AllDateLanguages())
        ui.comboDates->addItem(DateLanguageName(language), int(language));
    ui.layoutColumn->insertWidget(ui.layoutColumn->indexOf(ui.sectionLook) + 1, usage);
    WbScaledForm::Follow(this);
    ui.checkSuperAdmin->setChecked(settings->GetSuperAdmin());
    ui.checkTips->setChecked(settings->GetTips());
    ShowServer();
    ShowLook();
    ShowAccounts({}, -1);
    ShowSignedIn(QString());
    Connect();
}

void SettingsPage::Connect()
{
    ConnectServer();
    ConnectLook();
    connect(ui.comboAccount, chosen, this, &SettingsPage::SigSwitchAccount);
    connect(ui.checkSuperAdmin, &QCheckBox::toggled, settings, &WorkstationSettings::SetSuperAdmin);
    connect(ui.buttonSignOut, &QPushButton::clicked, this, &SettingsPage::SigSignOut);
    connect(ui.checkTips, &QCheckBox::toggled, settings, &WorkstationSettings::SetTips);
    connect(settings, &WorkstationSettings::SigTipsChanged, ui.checkTips, &QCheckBox::setChecked);
    connect(ui.buttonGuide, &QPushButton::clicked, this, &SettingsPage::SigGuide);
    connect(ui.buttonAbout, &QPushButton::clicked, this, &SettingsPage::SigAbout);
}

void SettingsPage::ConnectServer()
{
    connect(ui.radioEmbedded, &QRadioButton::toggled, this, &SettingsPage::UpdateServerForm);
    connect(ui.editAddress, &QLineEdit::textChanged, this, &SettingsPage::UpdateServerForm);
    connect(ui.editAddress, &QLineEdit::returnPressed, this, &SettingsPage::SlotConfirmServer);
    connect(ui.buttonUseServer, &QPushButton::clicked, this, &SettingsPage::SlotConfirmServer);
    connect(ui.buttonCaFile, &QPushButton::clicked, this, &SettingsPage::SlotChooseCaFile);
    connect(ui.buttonNoCaFile, &QPushButton::clicked, this, [this] { settings->SetCaFile(QString()); });
    connect(settings, &WorkstationSettings::SigServerChanged, this, &SettingsPage::ShowServer);
    connect(settings, &WorkstationSettings::SigCaFileChanged, this, &SettingsPage::ShowCaFile);
}

void SettingsPage::ConnectLook()
{
    connect(ui.comboTheme, chosen, this,
            [this] { settings->SetTheme(ThemeChoice(ui.comboTheme->currentIndex())); });
    connect(ui.comboScale, chosen, this,
            [this] { settings->SetScale(ui.comboScale->currentData().toInt()); });
    connect(ui.comboDates, chosen, this,
            [this] { settings->SetDateLanguage(DateLanguage(ui.comboDates->currentData().toInt())); });
    connect(settings, &WorkstationSettings::SigThemeChanged, this, &SettingsPage::ShowLook);
    connect(settings, &WorkstationSettings::SigScaleChanged, this, &SettingsPage::ShowLook);
    connect(settings, &WorkstationSettings::SigDateLanguageChanged, this, &SettingsPage::ShowLook);
}

void SettingsPage::ShowServer()
{
    const bool embedded = settings->GetEmbeddedServer();
    ui.radioEmbedded->setChecked(embedded);
    ui.radioRemote->setChecked(!embedded);
    ui.editAddress->setText(settings->GetServerAddress().toString());
    ShowCaFile();
    UpdateServerForm();
}

void SettingsPage::UpdateServerForm()
{
    const bool remote = ui.radioRemote->isChecked();
    const QString address = ui.editAddress->text().trimmed();
    ui.editAddress->setEnabled(remote);
    ui.editCaFile->setEnabled(remote);
    ui.buttonCaFile->setEnabled(remote);
    ui.buttonNoCaFile->setEnabled(remote && !settings->GetCaFile().isEmpty());
    const QString problem =
        remote && !address.isEmpty() ? WorkstationSettings::AddressProblem(address) : QString();
    ui.labelAddressProblem->setText(problem);
    ui.labelAddressProblem->setVisible(!problem.isEmpty());
    const bool changed =
        remote == settings->GetEmbeddedServer() || (remote && QUrl(address) != settings->GetServerAddress());
    const bool usable = !remote || WorkstationSettings::AddressProblem(address).isEmpty();
    ui.buttonUseServer->setEnabled(changed && usable);
}

void SettingsPage::SlotConfirmServer()
{
    if (ui.buttonUseServer->isEnabled())
        emit SigUseServer(ui.radioEmbedded->isChecked(), QUrl(ui.editAddress->text().trimmed()));
}

void SettingsPage::SlotChooseCaFile()
{
    const QString path =
        WbSystemDialogs::OpenFile(this, QStringLiteral("选择 信任的证书"), settings->GetCaFile(),
                                  QStringLiteral("PEM 证书 (*.pem *.crt *.cer);;所有文件 (*)"));
    if (path.isEmpty())
        return;
    const QString problem = WorkstationSettings::CaFileProblem(path);
    TellCaProblem(problem);
    if (problem.isEmpty())
        settings->SetCaFile(path);
}

void SettingsPage::ShowCaFile()
{
    const QString path = settings->GetCaFile();
    ui.editCaFile->setText(QDir::toNativeSeparators(path));
    ui.editCaFile->setToolTip(UIUtils::PlainToolTip(ui.editCaFile->text()));
    TellCaProblem(path.isEmpty() ? QString() : WorkstationSettings::CaFileProblem(path));
    UpdateServerForm();
}

void SettingsPage::TellCaProblem(const QString& problem)
{
    ui.labelCaProblem->setText(problem);
    ui.labelCaProblem->setVisible(!problem.isEmpty());
}

void SettingsPage::ShowLook()
{
    ui.comboTheme->setCurrentIndex(int(settings->GetTheme()));
    ui.comboScale->setCurrentIndex(ui.comboScale->findData(settings->GetScale()));
    ui.comboDates->setCurrentIndex(ui.comboDates->findData(int(settings->GetDateLanguage())));
    ui.labelDateSample->setText(
        QStringLiteral("例如：%1").arg(DateText(QDateTime::currentDateTime(), settings->GetDateLanguage())));
}

void SettingsPage::ShowAccounts(const QStringList& names, int current)
{
    ui.accountChoice->setVisible(!names.isEmpty());
    ui.sectionAccount->setVisible(!ui.accountChoice->isHidden() || !ui.signedIn->isHidden());
    ui.comboAccount->clear();
    ui.comboAccount->addItems(names);
    ui.comboAccount->setCurrentIndex(current);
}

void SettingsPage::ShowSignedIn(const QString& name)
{
    ui.signedIn->setVisible(!name.isEmpty());
    ui.sectionAccount->setVisible(!ui.accountChoice->isHidden() || !ui.signedIn->isHidden());
    ui.labelSignedIn->setText(name);
}
