// SPDX-License-Identifier: Apache-2.0

#include "CodeAssist_p.h"
#include "CodeCompletion_p.h"
#include "CodeDefinition_p.h"
#include "CodeExplanation_p.h"
#include "CodeQuestions_p.h"
#include "CodeRename_p.h"
#include "CodeSignatures_p.h"

#include <QAction>
#include <QPlainTextEdit>
#include <QTimer>

namespace
{
QAction* AddAct(QWidget* page, const QString& name, const QString& text, const QKeySequence& key)
{
    auto* action = new QAction(text, page);
    action->setObjectName(name);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    page->addAction(action);
    return action;
}
} // namespace

CodeAssist::CodeAssist(QPlainTextEdit* edit, QWidget* page) : QObject(edit)
{
    CodeQuestions* const questions = CodeQuestions::Instance();
    // When the page stands: the author is not to wait for a process to be made.
    QTimer::singleShot(0, questions, &CodeQuestions::Prepare);
    auto* signatures = new CodeSignatures(edit, questions);
    auto* completion = new CodeCompletion(edit, questions); // behind it: Escape closes the list first
    auto* explanation = new CodeExplanation(edit, questions);
    auto* definition = new CodeDefinition(edit, questions);
    auto* rename = new CodeRename(edit, questions);
    connect(
        AddAct(page, QStringLiteral("actionComplete"), QStringLiteral("补全名称"), Qt::CTRL + Qt::Key_Space),
        &QAction::triggered, completion, &CodeCompletion::Open);
    connect(AddAct(page, QStringLiteral("actionSignature"), QStringLiteral("参数提示"),
                   Qt::CTRL + Qt::SHIFT + Qt::Key_Space),
            &QAction::triggered, signatures, &CodeSignatures::Ask);
    nameActions = {
        AddAct(page, QStringLiteral("actionDefinition"), QStringLiteral("转到定义"), Qt::Key_F12),
        AddAct(page, QStringLiteral("actionRename"), QStringLiteral("重命名…"), Qt::Key_F2),
        AddAct(page, QStringLiteral("actionExplain"), QStringLiteral("名称的说明"), Qt::CTRL + Qt::Key_I),
    };
    connect(nameActions.at(0), &QAction::triggered, definition, &CodeDefinition::Go);
    connect(nameActions.at(1), &QAction::triggered, rename, &CodeRename::Begin);
    connect(nameActions.at(2), &QAction::triggered, explanation, &CodeExplanation::Ask);
}
