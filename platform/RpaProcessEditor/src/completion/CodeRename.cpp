// SPDX-License-Identifier: Apache-2.0

#include "CodeRenameDialog_p.h"
#include "CodeRename_p.h"
#include "TextPlace_p.h"

#include <WbBaseUI/WbToast.h>

#include <QPlainTextEdit>

#include <algorithm>

namespace
{
// Where the answer says the name stands, as far as it does.
QVector<int> OffsetsIn(const QString& text, const QString& name, const QVariantMap& answer)
{
    QVector<int> offsets;
    const QVariantList places = answer.value(QStringLiteral("places")).toList();
    for (const QVariant& each : places) {
        const QVariantList pair = each.toList();
        const int offset = TextPlace{pair.value(0).toInt(), pair.value(1).toInt()}.In(text);
        if (text.midRef(offset, name.size()) == name && !offsets.contains(offset))
            offsets.append(offset);
    }
    std::sort(offsets.begin(), offsets.end());
    return offsets;
}

QString WhyNot(const QVariantMap& answer)
{
    const QString reason = answer.value(QStringLiteral("refused")).toString();
    const QString name = answer.value(QStringLiteral("name")).toString();
    if (reason == QLatin1String("elsewhere"))
        return QStringLiteral("“%1”不是在这个程序中定义的，不能在这里重命名").arg(name);
    if (reason == QLatin1String("import"))
        return QStringLiteral("“%1”是导入的名称，请在 import 语句中用 as 给它另一个名称").arg(name);
    return QStringLiteral("光标处没有可以重命名的名称");
}
} // namespace

CodeRename::CodeRename(QPlainTextEdit* codeEdit, CodeQuestions* codeQuestions)
    : QObject(codeEdit), edit(codeEdit), questions(codeQuestions)
{
}

void CodeRename::Begin()
{
    const QString text = edit->toPlainText();
    questions->Ask(this, {CodeQuestion::Kind::Places, text, edit->textCursor().position()},
                   [this, text](const QVariantMap& answer) { TakeAnswer(text, answer); });
}

void CodeRename::TakeAnswer(const QString& text, const QVariantMap& answer)
{
    if (questions->IsMissing()) {
        WbToast::Show(QStringLiteral("重命名需要 jedi，请先安装 python3-jedi"), ToastWarning);
        return;
    }
    if (text != edit->toPlainText() || !edit->isVisible())
        return;
    const QString name = answer.value(QStringLiteral("name")).toString();
    const QVector<int> offsets = OffsetsIn(text, name, answer);
    if (answer.contains(QStringLiteral("refused")) || name.isEmpty() || offsets.isEmpty())
        WbToast::Show(WhyNot(answer), ToastWarning);
    else
        AskName(text, name, offsets);
}

void CodeRename::AskName(const QString& text, const QString& name, const QVector<int>& offsets)
{
    const QPointer<CodeRename> self(this);
    CodeRenameDialog dialog(text, name, offsets, edit);
    const bool isAccepted = dialog.exec() == QDialog::Accepted;
    // The page may have gone, or shown another app, while the dialog was open.
    if (!self || !isAccepted)
        return;
    if (text == edit->toPlainText())
        Replace(offsets, name.size(), dialog.GetName());
    else
        WbToast::Show(QStringLiteral("程序已经改变，没有重命名"), ToastWarning);
}

void CodeRename::Replace(const QVector<int>& offsets, int length, const QString& name)
{
    QTextCursor cursor(edit->document());
    cursor.beginEditBlock();
    // From the end, so that the places before stay where they are.
    for (auto offset = offsets.crbegin(); offset != offsets.crend(); ++offset) {
        cursor.setPosition(*offset);
        cursor.setPosition(*offset + length, QTextCursor::KeepAnchor);
        cursor.insertText(name);
    }
    cursor.endEditBlock();
}
