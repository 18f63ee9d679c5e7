// SPDX-License-Identifier: Apache-2.0

#include "StatementCheck_p.h"

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaExpression.h>
#include <RpaProcessData/RpaProcess.h>

namespace
{
QString TitlesOf(const QStringList& commands)
{
    QStringList titles;
    for (const QString& name : commands) {
        const RpaCommandInfo* command = RpaCommandCatalogue::Instance()->Find(name);
        titles.append(QStringLiteral("“%1”").arg(command ? command->title : name));
    }
    return titles.join(QStringLiteral("或"));
}

bool IsChoice(const RpaArgumentInfo& argument, const QString& text)
{
    for (const RpaChoice& choice : argument.choices)
        if (choice.value == text)
            return true;
    return false;
}

// What is wrong with a text that is not empty; empty when nothing is.
QString FaultOf(const RpaArgumentInfo& argument, const QString& text)
{
    if (argument.type == RpaArgumentType::Variable && !RpaExpression::IsVariableName(text.trimmed()))
        return QStringLiteral("“%1”不能作为变量名").arg(text);
    if (argument.type == RpaArgumentType::Choice && !IsChoice(argument, text))
        return QStringLiteral("“%1”不在可选范围内").arg(text);
    if (RpaExpression::IsPython(argument.type, text) &&
        !RpaExpression::IsWellFormed(RpaExpression::ToPython(argument.type, text)))
        return QStringLiteral("表达式“%1”不完整").arg(text);
    return QString();
}

const RpaStatementNode* NextEnabled(const RpaStatementNode& parent, int row)
{
    while (++row < parent.GetChildCount())
        if (parent.GetChild(row)->GetValues().enabled)
            return parent.GetChild(row);
    return nullptr;
}
} // namespace

StatementCheck::StatementCheck(const RpaProcess& checkedProcess, const ProcessDataManager& allProcesses,
                               QList<RpaCheckInfo>& found)
    : process(checkedProcess), processes(allProcesses), findings(found)
{
}

void StatementCheck::SetElementIds(const QStringList& ids)
{
    elementIds = QSet<QString>(ids.cbegin(), ids.cend());
    elementsKnown = true;
}

void StatementCheck::Run()
{
    CheckChildren(*process.GetRoot(), false);
}

void StatementCheck::CheckChildren(const RpaStatementNode& parent, bool inLoop)
{
    // Disabled statements leave no trace in the program, so neighbours are the enabled ones.
    const RpaStatementNode* before = nullptr;
    const RpaStatementNode* node = NextEnabled(parent, -1);
    while (node) {
        const RpaStatementNode* behind = NextEnabled(parent, node->GetRow());
        CheckStatement(*node, before, behind, inLoop);
        before = node;
        node = behind;
    }
}

void StatementCheck::CheckStatement(const RpaStatementNode& node, const RpaStatementNode* before,
                                    const RpaStatementNode* behind, bool inLoop)
{
    const RpaCommandInfo* command = RpaCommandCatalogue::Instance()->Find(node.GetCommand());
    if (!command) {
        Report(node, "unknown-command", QStringLiteral("未知的指令“%1”").arg(node.GetCommand()),
               QStringLiteral("请删除此步骤，或更新到支持它的版本"));
        CheckChildren(node, inLoop);
        return;
    }
    CheckPlace(node, *command, before, behind, inLoop);
    for (const RpaArgumentInfo& argument : command->arguments)
        CheckArgument(node, *command, argument);
    CheckOutput(node, *command);
    CheckChildren(node, inLoop || command->blockKind == RpaBlockKind::Loop);
}

void StatementCheck::CheckPlace(const RpaStatementNode& node, const RpaCommandInfo& command,
                                const RpaStatementNode* before, const RpaStatementNode* behind, bool inLoop)
{
    if (command.onlyInLoop && !inLoop)
        Report(node, "outside-loop", QStringLiteral("“%1”不在循环中").arg(command.title),
               QStringLiteral("请把它移到循环里面，或删除它"));
    if (!command.follows.isEmpty() && (!before || !command.follows.contains(before->GetCommand())))
        Report(node, "misplaced-branch", QStringLiteral("“%1”前面缺少对应的步骤").arg(command.title),
               QStringLiteral("请把它放在%1的紧后面").arg(TitlesOf(command.follows)));
    if (!command.followedBy.isEmpty() && (!behind || !command.followedBy.contains(behind->GetCommand())))
        Report(node, "misplaced-branch", QStringLiteral("“%1”后面缺少对应的步骤").arg(command.title),
               QStringLiteral("请在它的紧后面添加%1").arg(TitlesOf(command.followedBy)));
}

void StatementCheck::CheckArgument(const RpaStatementNode& node, const RpaCommandInfo& command,
                                   const RpaArgumentInfo& argument)
{
    const QString text = node.GetValues().arguments.value(argument.name, argument.defaultValue);
    const QString place = QStringLiteral("“%1”的“%2”").arg(command.title, argument.title);
    if (text.trimmed().isEmpty()) {
        if (argument.required)
            Report(node, "missing-argument", QStringLiteral("%1没有填写").arg(place),
                   QStringLiteral("请在属性中填写“%1”").arg(argument.title), argument.name);
        return;
    }
    const QString fault = FaultOf(argument, text);
    if (!fault.isEmpty())
        Report(node, "wrong-argument", QStringLiteral("%1有误：%2").arg(place, fault),
               QStringLiteral("请在属性中修改“%1”").arg(argument.title), argument.name);
    if (argument.type == RpaArgumentType::Process && !processes.FindProcess(text))
        Report(node, "missing-process", QStringLiteral("找不到流程“%1”").arg(text),
               QStringLiteral("请选择已有的流程，或新建同名的流程"), text);
    if (argument.type == RpaArgumentType::Element && elementsKnown && !elementIds.contains(text))
        Report(node, "missing-element", QStringLiteral("%1指向的元素已不存在").arg(place),
               QStringLiteral("请重新捕获或选择元素"), argument.name);
}

void StatementCheck::CheckOutput(const RpaStatementNode& node, const RpaCommandInfo& command)
{
    const QString output = node.GetValues().output;
    if (command.output.title.isEmpty())
        return;
    if (output.isEmpty()) {
        if (command.output.required)
            Report(node, "missing-output",
                   QStringLiteral("“%1”没有指定保存“%2”的变量").arg(command.title, command.output.title),
                   QStringLiteral("请填写输出变量的名称"));
    } else if (!RpaExpression::IsVariableName(output)) {
        Report(node, "wrong-argument",
               QStringLiteral("“%1”的输出变量“%2”不能作为变量名").arg(command.title, output),
               QStringLiteral("变量名只能由文字、数字和下划线组成，且不能以数字开头"));
    }
}

void StatementCheck::Report(const RpaStatementNode& node, const char* rule, const QString& message,
                            const QString& remedy, const QString& subject)
{
    findings.append({process.GetName(), node.GetId(), QLatin1String(rule), message, remedy, 0, subject});
}
