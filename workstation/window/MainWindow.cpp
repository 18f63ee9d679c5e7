// SPDX-License-Identifier: Apache-2.0

#include "MainWindow.h"

#include "ClickGuard.h"
#include "WindowFit.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QCloseEvent>

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
    ui.setupUi(this);
    WbScaledForm::Follow(this);
    setWindowIcon(QIcon(QStringLiteral(":/program/rpa-workstation.ico")));
    resize(usual);
    ui.labelTitle->setText(ProgramName());
    ui.buttonBack->setIcon(WbIcons::Get(QStringLiteral("back")));
    ui.buttonVersions->setIcon(WbIcons::Get(QStringLiteral("version")));
    ui.buttonRuns->setIcon(WbIcons::Get(QStringLiteral("log")));
    ui.buttonPackages->setIcon(WbIcons::Get(QStringLiteral("package")));
    ui.buttonSettings->setIcon(WbIcons::Get(QStringLiteral("settings")));
    UpdateHead();
    UpdateTitle();
    new ClickGuard(this); // the window owns them
    new WindowFit(this);
    Connect();
}

void MainWindow::Connect()
{
    connect(ui.buttonBack, &QPushButton::clicked, this, [this] { emit SigBack(CurrentPage()); });
    connect(ui.buttonVersions, &QPushButton::clicked, this, &MainWindow::SigVersions);
    connect(ui.buttonRuns, &QPushButton::clicked, this, &MainWindow::SigRuns);
    connect(ui.buttonPackages, &QPushButton::clicked, this, &MainWindow::SigPackages);
    connect(ui.buttonSettings, &QPushButton::clicked, this, &MainWindow::SigSettings);
    connect(ui.stackPages, &QStackedWidget::currentChanged, this, &MainWindow::UpdateHead);
    connect(ui.stackPages, &QStackedWidget::currentChanged, this, &MainWindow::UpdateTitle);
    connect(ui.stackPages, &QStackedWidget::currentChanged, this,
            [this] { emit SigPageShown(CurrentPage()); });
}

void MainWindow::AddPage(QWidget* page, const QString& backText)
{
    page->setProperty(backTextProperty, backText);
    ui.stackPages->addWidget(page);
    connect(page, &QWidget::windowTitleChanged, this, &MainWindow::UpdateTitle);
    UpdateHead();
}

void MainWindow::AddFoot(QWidget* foot)
{
    layout()->addWidget(foot);
}

void MainWindow::ShowAccount(const QString& name)
{
    signedIn = !name.isEmpty();
    const int widest = DpiTool::ScaleDefault(240);
    const QString shown = ui.labelAccount->fontMetrics().elidedText(name, Qt::ElideRight, widest);
    ui.labelAccount->setText(shown);
    ui.labelAccount->setToolTip(shown == name ? QString() : UIUtils::PlainToolTip(name));
    UpdateHead();
}

void MainWindow::UpdateHead()
{
    const QString back = CurrentPage() ? CurrentPage()->property(backTextProperty).toString() : QString();
    ui.buttonBack->setText(back);
    ui.buttonBack->setVisible(!back.isEmpty());
    ui.labelTitle->setVisible(back.isEmpty());
    ui.labelAccount->setVisible(signedIn);
    const bool isEditing = editingPage && CurrentPage() == editingPage;
    ui.buttonVersions->setVisible(isEditing);
    ui.buttonRuns->setVisible(isEditing);
    ui.buttonPackages->setVisible(isEditing);
    ui.buttonSettings->setVisible(signedIn);
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
