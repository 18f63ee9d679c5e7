// SPDX-License-Identifier: Apache-2.0

#include "VariableRenameDialog_p.h"

#include <OxBase/DpiTool.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaStatementNode.h>
#include <RpaProcessData/RpaVariableRename.h>
#include <WbBaseUI/WbComboBox.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>

#include <QFormLayout>
#include <QLabel>
#include <QSet>
#include <QStyle>

namespace
{
constexpr int mostLetters = 100;

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
    : WbBaseDialog(parent), processes(&manager), variable(new WbComboBox), edit(new WbLineEdit),
      message(new QLabel), okButton(new WbPushButton(nullptr, Wb::PrimaryButton))
{
    setObjectName(QStringLiteral("VariableRenameDialog"));
    SetTitle(QStringLiteral("重命名变量"));
    variable->setObjectName(QStringLiteral("comboBoxVariable"));
    variable->setAccessibleName(QStringLiteral("变量"));
    variable->addItems(RpaVariableRename::NamesIn(manager));
    const int proposed = variable->findText(VariableOf(current));
    variable->setCurrentIndex(qMax(0, proposed));
    edit->setObjectName(QStringLiteral("lineEditVariableName"));
    edit->setAccessibleName(QStringLiteral("新名称"));
    edit->setMaxLength(mostLetters);
    edit->setText(variable->currentText());
    edit->selectAll();
    message->setObjectName(QStringLiteral("labelRename"));
    message->setTextFormat(Qt::PlainText);
    message->setWordWrap(true);
    BuildLayout();

    connect(variable, &QComboBox::currentTextChanged, edit, &QLineEdit::setText);
    connect(variable, &QComboBox::currentTextChanged, this, &VariableRenameDialog::SlotChanged);
    connect(edit, &QLineEdit::textChanged, this, &VariableRenameDialog::SlotChanged);
    SlotChanged();
    edit->setFocus();
}

void VariableRenameDialog::BuildLayout()
{
    okButton->setObjectName(QStringLiteral("pushButtonRename"));
    okButton->setText(QStringLiteral("重命名"));
    okButton->setDefault(true);
    auto* cancel = new WbPushButton;
    cancel->setText(QStringLiteral("取消"));
    cancel->setAutoDefault(false);
    auto* form = new QFormLayout;
    form->setSpacing(DpiTool::ScaleDefault(10));
    form->addRow(QStringLiteral("变量"), variable);
    form->addRow(QStringLiteral("新名称"), edit);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(okButton);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(GetContentWidget());
    layout->setContentsMargins(16, 8, 16, 16);
    layout->addLayout(form);
    layout->addWidget(message);
    layout->addStretch();
    layout->addLayout(buttons);
    GetContentWidget()->setMinimumSize(DpiTool::ScaleDefault(380), DpiTool::ScaleDefault(190));
    connect(okButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

QString VariableRenameDialog::From() const
{
    return variable->currentText();
}

QString VariableRenameDialog::To() const
{
    return edit->text().trimmed();
}

void VariableRenameDialog::SlotChanged()
{
    if (!processes)
        return;
    const bool isSame = From() == To();
    const QString problem = From().isEmpty() ? QStringLiteral("应用中还没有变量")
                            : isSame         ? QString()
                                             : RpaVariableRename::Problem(*processes, To());
    message->setText(problem.isEmpty() ? CountText(RpaVariableRename(*processes, From(), To())) : problem);
    message->setProperty("wbRole", problem.isEmpty() ? QStringLiteral("secondary") : QStringLiteral("error"));
    message->style()->unpolish(message);
    message->style()->polish(message);
    okButton->setEnabled(problem.isEmpty() && !isSame);
}
