// SPDX-License-Identifier: Apache-2.0

#include "MainWindow.h"

#include "ClickGuard.h"
#include "ServerStatusIndicator.h"
#include "WindowFit.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QBoxLayout>
#include <QCloseEvent>
#include <QStackedWidget>

namespace
{
constexpr QSize usual(1280, 720);
constexpr char backTextProperty[] = "backText";

QString ProgramName()
{
    return QStringLiteral("RPA 工作站");
}
} // namespace

MainWindow::MainWindow(QWidget* parent) : WbBaseWidget(parent)
{
    setObjectName(QStringLiteral("MainWindow"));
    setWindowIcon(QIcon(QStringLiteral(":/program/rpa-workstation.ico")));
    resize(usual);

    pages = new QStackedWidget(this);
    pages->setObjectName(QStringLiteral("stackPages"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(CreateHead());
    layout->addWidget(pages, 1);
    UpdateHead();
    UpdateTitle();
    new ClickGuard(this); // the window owns them
    new WindowFit(this);

    connect(buttonBack, &QPushButton::clicked, this, [this] { emit SigBack(CurrentPage()); });
    connect(buttonVersions, &QPushButton::clicked, this, &MainWindow::SigVersions);
    connect(buttonPackages, &QPushButton::clicked, this, &MainWindow::SigPackages);
    connect(buttonSettings, &QPushButton::clicked, this, &MainWindow::SigSettings);
    connect(pages, &QStackedWidget::currentChanged, this, &MainWindow::UpdateHead);
    connect(pages, &QStackedWidget::currentChanged, this, &MainWindow::UpdateTitle);
    connect(pages, &QStackedWidget::currentChanged, this, [this] { emit SigPageShown(CurrentPage()); });
}

MainWindow::~MainWindow() = default;

QWidget* MainWindow::CreateHead()
{
    auto* head = new WbBaseWidget(this);
    head->setObjectName(QStringLiteral("mainHead"));
    buttonBack = new WbPushButton(head, Wb::SecondaryButton);
    buttonBack->setObjectName(QStringLiteral("buttonBack"));
    buttonBack->setIcon(WbIcons::Get(QStringLiteral("back")));
    labelTitle = new WbLabel(ProgramName(), head);
    labelTitle->setObjectName(QStringLiteral("labelTitle"));
    serverMark = new ServerStatusIndicator(head);
    labelAccount = new WbLabel(head);
    labelAccount->setObjectName(QStringLiteral("labelAccount"));
    buttonVersions = new WbPushButton(head, Wb::SecondaryButton);
    buttonVersions->setObjectName(QStringLiteral("buttonVersions"));
    buttonVersions->setText(QStringLiteral("版本详情"));
    buttonVersions->setIcon(WbIcons::Get(QStringLiteral("version")));
    buttonVersions->setToolTip(
        QStringLiteral("谁保存了版本、使用者现在使用哪个，给保存写说明（Ctrl+Shift+I）"));
    buttonPackages = new WbPushButton(head, Wb::SecondaryButton);
    buttonPackages->setObjectName(QStringLiteral("buttonPackages"));
    buttonPackages->setText(QStringLiteral("扩展包"));
    buttonPackages->setIcon(WbIcons::Get(QStringLiteral("package")));
    buttonPackages->setToolTip(QStringLiteral("查看和安装流程使用的 Python 扩展包"));
    buttonSettings = new WbPushButton(head, Wb::SecondaryButton);
    buttonSettings->setObjectName(QStringLiteral("buttonSettings"));
    buttonSettings->setText(QStringLiteral("设置"));
    buttonSettings->setIcon(WbIcons::Get(QStringLiteral("settings")));
    buttonSettings->setToolTip(QStringLiteral("设置（Ctrl+,）"));
    auto* layout = new QHBoxLayout(head);
    layout->setContentsMargins(28, 0, 28, 0);
    layout->setSpacing(16);
    layout->addWidget(buttonBack);
    layout->addWidget(labelTitle);
    layout->addStretch();
    layout->addWidget(buttonVersions);
    layout->addWidget(buttonPackages);
    layout->addWidget(serverMark);
    layout->addWidget(labelAccount);
    layout->addWidget(buttonSettings);
    head->setFixedHeight(48);
    WbScaledForm::Follow(head);
    return head;
}

void MainWindow::AddPage(QWidget* page, const QString& backText)
{
    page->setProperty(backTextProperty, backText);
    pages->addWidget(page);
    connect(page, &QWidget::windowTitleChanged, this, &MainWindow::UpdateTitle);
    UpdateHead();
}

void MainWindow::AddFoot(QWidget* foot)
{
    layout()->addWidget(foot);
}

void MainWindow::ShowPage(QWidget* page)
{
    pages->setCurrentWidget(page);
}

QWidget* MainWindow::CurrentPage() const
{
    return pages->currentWidget();
}

void MainWindow::ShowAccount(const QString& name)
{
    signedIn = !name.isEmpty();
    const int widest = DpiTool::ScaleDefault(240);
    const QString shown = labelAccount->fontMetrics().elidedText(name, Qt::ElideRight, widest);
    labelAccount->setText(shown);
    labelAccount->setToolTip(shown == name ? QString() : UIUtils::PlainToolTip(name));
    UpdateHead();
}

void MainWindow::UpdateHead()
{
    const QString back = CurrentPage() ? CurrentPage()->property(backTextProperty).toString() : QString();
    buttonBack->setText(back);
    buttonBack->setVisible(!back.isEmpty());
    labelTitle->setVisible(back.isEmpty());
    labelAccount->setVisible(signedIn);
    const bool isEditing = editingPage && CurrentPage() == editingPage;
    buttonVersions->setVisible(isEditing);
    buttonPackages->setVisible(isEditing);
    buttonSettings->setVisible(signedIn);
}

void MainWindow::UpdateTitle()
{
    QString shown = CurrentPage() ? CurrentPage()->windowTitle().simplified() : QString();
    shown.replace(QLatin1String("[*]"), QLatin1String("[*][*]")); // alone it marks a modified document
    setWindowTitle(shown.isEmpty() ? ProgramName() : QStringLiteral("%1 - %2").arg(shown, ProgramName()));
}

void MainWindow::CloseForGood()
{
    mayClose = true;
    close();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (mayClose) {
        event->accept();
        return;
    }
    event->ignore();
    // Announced afterwards: a window that is being closed cannot be closed from within.
    QMetaObject::invokeMethod(this, &MainWindow::SigCloseRequested, Qt::QueuedConnection);
}
