// SPDX-License-Identifier: Apache-2.0

#include "GivenDialog_p.h"
#include "LastValues_p.h"

#include <OxBase/DpiTool.h>
#include <RpaProcessData/RpaExpression.h>
#include <WbBaseUI/WbLineEdit.h>

#include <QLabel>

GivenDialog::GivenDialog(const RpaPartVariables& variables, const LastValues& values, QWidget* parent)
    : WbBaseDialog(parent)
{
    setObjectName(QStringLiteral("GivenDialog"));
    SetTitle(QStringLiteral("运行前给出变量"));
    ui.setupUi(GetContentWidget());
    ui.labelProblem->setProperty("wbRole", QStringLiteral("error"));
    ui.layoutVariables->setSpacing(DpiTool::ScaleDefault(8));
    GetContentWidget()->setMinimumSize(DpiTool::ScaleDefault(460), DpiTool::ScaleDefault(320));
    QStringList withoutValue;
    for (const QString& name : variables.needed) {
        const QString value = values.Find(name);
        if (value.isEmpty())
            withoutValue << name;
        AddRow(name, value, QStringLiteral("上次的值未知"));
    }
    for (const QString& name : variables.unknown)
        AddRow(name, values.Find(name), QStringLiteral("没有步骤设置它"));
    QStringList notes;
    if (!withoutValue.isEmpty())
        notes << QStringLiteral("上次的值未知：%1").arg(withoutValue.join(QStringLiteral("、")));
    if (!variables.unknown.isEmpty())
        notes << QStringLiteral("没有步骤设置：%1").arg(variables.unknown.join(QStringLiteral("、")));
    ui.labelUnknown->setText(notes.join(QLatin1Char('\n')));
    ui.labelUnknown->setVisible(!notes.isEmpty());
    connect(ui.pushButtonRun, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui.buttonCancel, &QPushButton::clicked, this, &QDialog::reject);
    SlotEdited();
    rows.first().edit->setFocus();
}

void GivenDialog::AddRow(const QString& name, const QString& value, const QString& hint)
{
    auto* edit = new WbLineEdit;
    edit->setObjectName(QStringLiteral("given_") + name);
    edit->setAccessibleName(name);
    edit->setPlaceholderText(hint);
    edit->setText(value);
    auto* label = new QLabel(name);
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(edit);
    ui.layoutVariables->addRow(label, edit);
    connect(edit, &QLineEdit::textChanged, this, &GivenDialog::SlotEdited);
    rows.append({name, edit});
}

QMap<QString, QString> GivenDialog::GetGiven() const
{
    QMap<QString, QString> given;
    for (const Row& row : rows)
        if (!row.edit->text().trimmed().isEmpty())
            given.insert(row.name, row.edit->text().trimmed());
    return given;
}

void GivenDialog::SlotEdited()
{
    QString problem;
    const QMap<QString, QString> given = GetGiven();
    for (auto it = given.begin(); it != given.end() && problem.isEmpty(); ++it)
        if (!RpaExpression::IsWellFormed(it.value()))
            problem = QStringLiteral("“%1”的值不是完整的 Python 表达式").arg(it.key());
    ui.labelProblem->setText(problem);
    ui.pushButtonRun->setEnabled(problem.isEmpty());
}
