// SPDX-License-Identifier: Apache-2.0

#include "ProcessNameDialog_p.h"

#include <OxBase/DpiTool.h>

ProcessNameDialog::ProcessNameDialog(const QString& title, const QString& name, const QStringList& taken,
                                     QWidget* parent)
    : WbBaseDialog(parent), takenNames(taken)
{
    setObjectName(QStringLiteral("ProcessNameDialog"));
    SetTitle(title);
    ui.setupUi(GetContentWidget());
    ui.callingPlaces->hide();
    ui.lineEditProcessName->setMaxLength(maximumLength);
    ui.lineEditProcessName->setText(name);
    ui.lineEditProcessName->selectAll();
    GetContentWidget()->setMinimumSize(DpiTool::ScaleDefault(360), DpiTool::ScaleDefault(140));
    connect(ui.lineEditProcessName, &QLineEdit::textChanged, this, &ProcessNameDialog::SlotEdited);
    connect(ui.lineEditProcessName, &QLineEdit::returnPressed, ui.pushButtonNameOk, &QPushButton::click);
    connect(ui.pushButtonNameOk, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui.buttonCancel, &QPushButton::clicked, this, &QDialog::reject);
    SlotEdited();
    ui.lineEditProcessName->setFocus();
}

QString ProcessNameDialog::Name() const
{
    return ui.lineEditProcessName->text().trimmed();
}

void ProcessNameDialog::ShowFollowers(const Followers& followers)
{
    placesFor = followers;
    if (placesFor(Name()).isEmpty())
        return;
    ui.callingPlaces->show();
    GetContentWidget()->setMinimumSize(DpiTool::ScaleDefault(720), DpiTool::ScaleDefault(320));
    SlotEdited();
}

QString ProcessNameDialog::Problem(const QString& name, const QStringList& taken)
{
    if (name.trimmed().isEmpty())
        return QStringLiteral("请填写名称");
    if (taken.contains(name.trimmed()))
        return QStringLiteral("名称已存在");
    return QString();
}

void ProcessNameDialog::SlotEdited()
{
    const QString text = Problem(ui.lineEditProcessName->text(), takenNames);
    ui.labelNameProblem->setText(text);
    ui.pushButtonNameOk->setEnabled(text.isEmpty());
    if (placesFor)
        ui.callingPlaces->SetPlaces(placesFor(Name()));
}
