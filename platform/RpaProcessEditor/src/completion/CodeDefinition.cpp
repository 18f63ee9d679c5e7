// SPDX-License-Identifier: Apache-2.0

#include "CodeDefinition_p.h"
#include "TextPlace_p.h"

#include <WbBaseUI/WbToast.h>

#include <QDir>
#include <QPlainTextEdit>

namespace
{
QString WhereIs(const QVariantMap& definition)
{
    const QString name = definition.value(QStringLiteral("name")).toString();
    const QString file = definition.value(QStringLiteral("file")).toString();
    if (definition.value(QStringLiteral("own")).toBool())
        return QStringLiteral("“%1”由工作站提供").arg(name);
    if (file.isEmpty())
        return QStringLiteral("“%1”是 Python 自带的").arg(name);
    return QStringLiteral("“%1”的定义在 %2 第 %3 行")
        .arg(name, QDir::toNativeSeparators(file))
        .arg(definition.value(QStringLiteral("fileLine")).toInt());
}
} // namespace

CodeDefinition::CodeDefinition(QPlainTextEdit* codeEdit, CodeQuestions* codeQuestions)
    : QObject(codeEdit), edit(codeEdit), questions(codeQuestions)
{
}

void CodeDefinition::Go()
{
    const QString text = edit->toPlainText();
    questions->Ask(this, {CodeQuestion::Kind::Define, text, edit->textCursor().position()},
                   [this, text](const QVariantMap& answer) { TakeAnswer(text, answer); });
}

void CodeDefinition::TakeAnswer(const QString& text, const QVariantMap& answer)
{
    if (questions->IsMissing()) {
        WbToast::Show(QStringLiteral("转到定义需要 jedi，请先安装 python3-jedi"), ToastWarning);
        return;
    }
    if (text != edit->toPlainText())
        return; // whoever writes on has given it up
    const QVariantList definitions = answer.value(QStringLiteral("definitions")).toList();
    if (definitions.isEmpty()) {
        WbToast::Show(QStringLiteral("没有找到光标处名称的定义"), ToastInformation);
        return;
    }
    for (const QVariant& each : definitions) {
        const TextPlace place{each.toMap().value(QStringLiteral("line")).toInt(),
                              each.toMap().value(QStringLiteral("column")).toInt()};
        if (place.line < 1)
            continue;
        QTextCursor cursor(edit->document());
        cursor.setPosition(place.In(text));
        edit->setTextCursor(cursor);
        edit->centerCursor();
        return;
    }
    WbToast::Show(WhereIs(definitions.first().toMap()), ToastInformation);
}
