// SPDX-License-Identifier: Apache-2.0

#include "PlaceTexts_p.h"
#include "VariableRenameDialog_p.h"

#include <OxBase/DpiTool.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaStatementNode.h>
#include <RpaProcessData/RpaVariableRename.h>

#include <QSet>
#include <QStyle>

namespace
{
// The first variable that the statement sets or changes.
QString VariableOf(const RpaStatementNode* node)
{
    if (!node || node->IsRoot())
        return QString();
    if (!node->GetValues().output.isEmpty())
        return node->GetValues().output;
    const RpaCommandInfo* command = RpaCommandCatalogue::Instance()->Find(node->GetCommand());
    if (!command)
        return QString();
    for (const RpaArgumentInfo& argument : command->arguments)
        if (argument.type == RpaArgumentType::Variable)
            return node->GetArgument(argument.name).trimmed();
    return QString();
}

QString CountText(const RpaVariableRename& rename)
{
    QSet<QString> processes;
    for (const RpaVariableRename::Change& change : rename.GetChanges())
        processes.insert(change.processName);
    return QStringLiteral("将修改 %1 个流程中的 %2 处").arg(processes.size()).arg(rename.CountPlaces());
}
} // namespace

VariableRenameDialog::VariableRenameDialog(const ProcessDataManager& manager, const RpaStatementNode* current,
                                           QWidget* parent)
    : WbBaseDialog(parent), processes(&manager)
{
    setObjectName(QStringLiteral("VariableRenameDialog"));
    SetTitle(QStringLiteral("重命名变量"));
    ui.setupUi(GetContentWidget());
    ui.layoutForm->setSpacing(DpiTool::ScaleDefault(10));
    ui.renamedPlaces->HidePart();
    GetContentWidget()->setMinimumSize(DpiTool::ScaleDefault(720), DpiTool::ScaleDefault(380));
    QComboBox* const variable = ui.comboBoxVariable;
    variable->addItems(RpaVariableRename::NamesIn(manager));
    variable->setCurrentIndex(qMax(0, variable->findText(VariableOf(current))));
    ui.lineEditVariableName->setText(variable->currentText());
    ui.lineEditVariableName->selectAll();

    connect(variable, &QComboBox::currentTextChanged, ui.lineEditVariableName, &QLineEdit::setText);
    connect(variable, &QComboBox::currentTextChanged, this, &VariableRenameDialog::SlotChanged);
    connect(ui.lineEditVariableName, &QLineEdit::textChanged, this, &VariableRenameDialog::SlotChanged);
    connect(ui.pushButtonRename, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui.buttonCancel, &QPushButton::clicked, this, &QDialog::reject);
    SlotChanged();
    ui.lineEditVariableName->setFocus();
}

QString VariableRenameDialog::To() const
{
    return ui.lineEditVariableName->text().trimmed();
}

void VariableRenameDialog::SlotChanged()
{
    if (!processes)
        return;
    const bool isSame = From() == To();
    const QString problem = From().isEmpty() ? QStringLiteral("应用中还没有变量")
                            : isSame         ? QString()
                                             : RpaVariableRename::Problem(*processes, To());
    const bool shows = problem.isEmpty() && !isSame;
    // What cannot be done yet shows where the variable stands.
    const RpaVariableRename rename(*processes, From(), shows ? To() : From());
    ui.renamedPlaces->SetPlaces(PlaceTexts::OfChanges(*processes, rename.GetChanges()));
    ui.renamedPlaces->ShowAfter(shows);
    ui.labelRename->setText(problem.isEmpty() ? CountText(rename) : problem);
    ui.labelRename->setProperty("wbRole",
                                problem.isEmpty() ? QStringLiteral("secondary") : QStringLiteral("error"));
    ui.labelRename->style()->unpolish(ui.labelRename);
    ui.labelRename->style()->polish(ui.labelRename);
    ui.pushButtonRename->setEnabled(shows);
}
