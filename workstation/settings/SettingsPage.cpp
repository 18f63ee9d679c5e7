// SPDX-License-Identifier: Apache-2.0

#include "SettingsPage.h"

#include "WorkstationSettings.h"

#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbComboBox.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>

#include <QBoxLayout>
#include <QCheckBox>
#include <QFormLayout>
#include <QRadioButton>
#include <QScrollArea>

namespace
{
// A titled card; what it holds goes into its layout.
QVBoxLayout* Section(QWidget*& section, const char* objectName, const QString& title, QWidget* parent)
{
    section = new WbBaseWidget(parent);
    section->setObjectName(QLatin1String(objectName));
    section->setProperty("card", true);
    auto* layout = new QVBoxLayout(section);
    layout->setContentsMargins(24, 18, 24, 20);
    layout->setSpacing(12);
    auto* heading = new WbLabel(title, section);
    heading->setProperty("sectionTitle", true);
    layout->addWidget(heading);
    return layout;
}

WbComboBox* Choice(const char* objectName, const QString& accessibleName, QWidget* parent)
{
    auto* combo = new WbComboBox(parent);
    combo->setObjectName(QLatin1String(objectName));
    combo->setAccessibleName(accessibleName);
    combo->setMinimumWidth(220);
    return combo;
}

void AddRow(QVBoxLayout* layout, const QString& caption, QWidget* field, QWidget* after = nullptr)
{
    auto* label = new WbLabel(caption, field->parentWidget());
    label->setMinimumWidth(96);
    label->setBuddy(field);
    auto* row = new QHBoxLayout;
    row->setSpacing(12);
    row->addWidget(label);
    row->addWidget(field);
    if (after)
        row->addWidget(after);
    row->addStretch();
    layout->addLayout(row);
}
} // namespace

SettingsPage::SettingsPage(WorkstationSettings* store, QWidget* parent)
    : WbBaseWidget(parent), settings(store)
{
    setObjectName(QStringLiteral("SettingsPage"));
    auto* column = new QWidget;
    column->setObjectName(QStringLiteral("settingsColumn"));
    column->setMaximumWidth(760);
    auto* columnLayout = new QVBoxLayout(column);
    columnLayout->setContentsMargins(28, 20, 28, 24);
    columnLayout->setSpacing(16);
    auto* title = new WbLabel(QStringLiteral("设置"), column);
    title->setObjectName(QStringLiteral("labelPageTitle"));
    columnLayout->addWidget(title);
    columnLayout->addWidget(CreateServerSection());
    columnLayout->addWidget(CreateAccountSection());
    columnLayout->addWidget(CreateLookSection());
    columnLayout->addWidget(CreateAboutSection());
    columnLayout->addStretch();

    auto* scroll = new QScrollArea(this);
    scroll->setObjectName(QStringLiteral("scrollSettings"));
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setAlignment(Qt::AlignHCenter);
    scroll->setWidget(column);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll);

    ShowServer();
    ShowLook();
    checkTips->setChecked(settings->GetTips());
    ShowAccounts({}, -1);
    ShowSignedIn(QString());
    Connect();
}

SettingsPage::~SettingsPage() = default;

QWidget* SettingsPage::CreateServerSection()
{
    QWidget* section = nullptr;
    QVBoxLayout* layout = Section(section, "sectionServer", QStringLiteral("版本服务"), this);
    radioEmbedded = new QRadioButton(QStringLiteral("使用本机的版本服务（数据保存在这台电脑上）"), section);
    radioEmbedded->setObjectName(QStringLiteral("radioEmbedded"));
    radioRemote = new QRadioButton(QStringLiteral("连接到服务器"), section);
    radioRemote->setObjectName(QStringLiteral("radioRemote"));
    editAddress = new WbLineEdit(section);
    editAddress->setObjectName(QStringLiteral("editAddress"));
    editAddress->setAccessibleName(QStringLiteral("服务器地址"));
    editAddress->setPlaceholderText(QStringLiteral("https://rpa.example.com:8443"));
    editAddress->setMinimumWidth(360);
    labelAddressProblem = new WbLabel(section);
    labelAddressProblem->setObjectName(QStringLiteral("labelAddressProblem"));
    labelAddressProblem->setWordWrap(true);
    buttonUseServer = new WbPushButton(section, Wb::SecondaryButton);
    buttonUseServer->setObjectName(QStringLiteral("buttonUseServer"));
    buttonUseServer->setText(QStringLiteral("切换并重新登录"));
    layout->addWidget(radioEmbedded, 0, Qt::AlignLeft);
    layout->addWidget(radioRemote, 0, Qt::AlignLeft);
    AddRow(layout, QStringLiteral("服务器地址"), editAddress);
    layout->addWidget(labelAddressProblem);
    layout->addWidget(buttonUseServer, 0, Qt::AlignLeft);
    return section;
}

QWidget* SettingsPage::CreateLookSection()
{
    QWidget* section = nullptr;
    QVBoxLayout* layout = Section(section, "sectionLook", QStringLiteral("外观"), this);
    comboTheme = Choice("comboTheme", QStringLiteral("主题"), section);
    comboTheme->addItem(QStringLiteral("跟随系统"), int(ThemeChoice::System));
    comboTheme->addItem(QStringLiteral("浅色"), int(ThemeChoice::Light));
    comboTheme->addItem(QStringLiteral("深色"), int(ThemeChoice::Dark));
    comboDates = Choice("comboDates", QStringLiteral("日期语言"), section);
    for (DateLanguage language : AllDateLanguages())
        comboDates->addItem(DateLanguageName(language), int(language));
    labelDateSample = new WbLabel(section);
    labelDateSample->setObjectName(QStringLiteral("labelDateSample"));
    AddRow(layout, QStringLiteral("主题"), comboTheme);
    AddRow(layout, QStringLiteral("日期语言"), comboDates, labelDateSample);
    return section;
}

QWidget* SettingsPage::CreateAccountSection()
{
    QVBoxLayout* layout = Section(accountSection, "sectionAccount", QStringLiteral("账号"), this);
    layout->addWidget(CreateAccountChoice());
    layout->addWidget(CreateSignedIn());
    return accountSection;
}

QWidget* SettingsPage::CreateAccountChoice()
{
    accountChoice = new QWidget(accountSection);
    auto* layout = new QVBoxLayout(accountChoice);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    comboAccount = Choice("comboAccount", QStringLiteral("当前账号"), accountChoice);
    checkSuperAdmin =
        new QCheckBox(QStringLiteral("以超级管理员身份工作（可将应用生成为模板）"), accountChoice);
    checkSuperAdmin->setObjectName(QStringLiteral("checkSuperAdmin"));
    checkSuperAdmin->setChecked(settings->GetSuperAdmin());
    auto* hint = new WbLabel(QStringLiteral("切换账号会关闭正在编辑的应用。灰度与上线只对应用的创建者开放。"),
                             accountChoice);
    hint->setProperty("hint", true);
    hint->setWordWrap(true);
    AddRow(layout, QStringLiteral("当前账号"), comboAccount);
    layout->addWidget(hint);
    layout->addWidget(checkSuperAdmin, 0, Qt::AlignLeft);
    return accountChoice;
}

QWidget* SettingsPage::CreateSignedIn()
{
    signedIn = new QWidget(accountSection);
    auto* layout = new QVBoxLayout(signedIn);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    labelSignedIn = new WbLabel(signedIn);
    labelSignedIn->setObjectName(QStringLiteral("labelSignedIn"));
    labelSignedIn->setTextFormat(Qt::PlainText);
    buttonSignOut = new WbPushButton(signedIn, Wb::SecondaryButton);
    buttonSignOut->setObjectName(QStringLiteral("buttonSignOut"));
    buttonSignOut->setText(QStringLiteral("退出登录"));
    AddRow(layout, QStringLiteral("当前账号"), labelSignedIn);
    layout->addWidget(buttonSignOut, 0, Qt::AlignLeft);
    return signedIn;
}

QWidget* SettingsPage::CreateAboutSection()
{
    QWidget* section = nullptr;
    QVBoxLayout* layout = Section(section, "sectionAbout", QStringLiteral("帮助与关于"), this);
    checkTips =
        new QCheckBox(QStringLiteral("第一次打开页面时提示先做什么（重新勾选后再提示一遍）"), section);
    checkTips->setObjectName(QStringLiteral("checkTips"));
    buttonGuide = new WbPushButton(section, Wb::SecondaryButton);
    buttonGuide->setObjectName(QStringLiteral("buttonGuide"));
    buttonGuide->setText(QStringLiteral("打开使用指南"));
    layout->addWidget(checkTips, 0, Qt::AlignLeft);
    layout->addWidget(buttonGuide, 0, Qt::AlignLeft);
    buttonAbout = new WbPushButton(section, Wb::SecondaryButton);
    buttonAbout->setObjectName(QStringLiteral("buttonAbout"));
    buttonAbout->setText(QStringLiteral("关于工作站"));
    layout->addWidget(buttonAbout, 0, Qt::AlignLeft);
    return section;
}

void SettingsPage::Connect()
{
    const auto chosen = QOverload<int>::of(&QComboBox::activated);
    connect(radioEmbedded, &QRadioButton::toggled, this, &SettingsPage::UpdateServerForm);
    connect(editAddress, &QLineEdit::textChanged, this, &SettingsPage::UpdateServerForm);
    connect(editAddress, &QLineEdit::returnPressed, this, &SettingsPage::SlotConfirmServer);
    connect(buttonUseServer, &QPushButton::clicked, this, &SettingsPage::SlotConfirmServer);
    connect(comboTheme, chosen, this,
            [this] { settings->SetTheme(ThemeChoice(comboTheme->currentData().toInt())); });
    connect(comboDates, chosen, this,
            [this] { settings->SetDateLanguage(DateLanguage(comboDates->currentData().toInt())); });
    connect(settings, &WorkstationSettings::SigThemeChanged, this, &SettingsPage::ShowLook);
    connect(settings, &WorkstationSettings::SigDateLanguageChanged, this, &SettingsPage::ShowLook);
    connect(comboAccount, chosen, this, &SettingsPage::SigSwitchAccount);
    connect(checkSuperAdmin, &QCheckBox::toggled, settings, &WorkstationSettings::SetSuperAdmin);
    connect(buttonSignOut, &QPushButton::clicked, this, &SettingsPage::SigSignOut);
    connect(checkTips, &QCheckBox::toggled, settings, &WorkstationSettings::SetTips);
    connect(settings, &WorkstationSettings::SigTipsChanged, checkTips, &QCheckBox::setChecked);
    connect(buttonGuide, &QPushButton::clicked, this, &SettingsPage::SigGuide);
    connect(buttonAbout, &QPushButton::clicked, this, &SettingsPage::SigAbout);
    connect(settings, &WorkstationSettings::SigServerChanged, this, &SettingsPage::ShowServer);
}

void SettingsPage::ShowServer()
{
    const bool embedded = settings->GetEmbeddedServer();
    radioEmbedded->setChecked(embedded);
    radioRemote->setChecked(!embedded);
    editAddress->setText(settings->GetServerAddress().toString());
    UpdateServerForm();
}

void SettingsPage::UpdateServerForm()
{
    const bool remote = radioRemote->isChecked();
    const QString address = editAddress->text().trimmed();
    editAddress->setEnabled(remote);
    const QString problem =
        remote && !address.isEmpty() ? WorkstationSettings::AddressProblem(address) : QString();
    labelAddressProblem->setText(problem);
    labelAddressProblem->setVisible(!problem.isEmpty());
    const bool changed =
        remote == settings->GetEmbeddedServer() || (remote && QUrl(address) != settings->GetServerAddress());
    const bool usable = !remote || WorkstationSettings::AddressProblem(address).isEmpty();
    buttonUseServer->setEnabled(changed && usable);
}

void SettingsPage::SlotConfirmServer()
{
    if (buttonUseServer->isEnabled())
        emit SigUseServer(radioEmbedded->isChecked(), QUrl(editAddress->text().trimmed()));
}

void SettingsPage::ShowLook()
{
    comboTheme->setCurrentIndex(comboTheme->findData(int(settings->GetTheme())));
    comboDates->setCurrentIndex(comboDates->findData(int(settings->GetDateLanguage())));
    labelDateSample->setText(
        QStringLiteral("例如：%1").arg(DateText(QDateTime::currentDateTime(), settings->GetDateLanguage())));
}

void SettingsPage::ShowAccounts(const QStringList& names, int current)
{
    accountChoice->setVisible(!names.isEmpty());
    accountSection->setVisible(!accountChoice->isHidden() || !signedIn->isHidden());
    comboAccount->clear();
    comboAccount->addItems(names);
    comboAccount->setCurrentIndex(current);
}

void SettingsPage::ShowSignedIn(const QString& name)
{
    signedIn->setVisible(!name.isEmpty());
    accountSection->setVisible(!accountChoice->isHidden() || !signedIn->isHidden());
    labelSignedIn->setText(name);
}
