// SPDX-License-Identifier: Apache-2.0

#include "ArgumentText_p.h"

#include <RpaProcessData/RpaCondition.h>
#include <RpaProcessData/RpaExpression.h>
#include <RpaProcessData/RpaGrid.h>

#include <algorithm>

namespace
{
// A literal that would read as an expression but for the "'" before its "=".
bool IsQuotedEquals(const QString& text)
{
    int quotes = 0;
    while (quotes < text.size() && text.at(quotes) == QLatin1Char('\''))
        ++quotes;
    return quotes > 0 && quotes < text.size() && text.at(quotes) == QLatin1Char('=');
}
} // namespace

bool ArgumentText::MayBePython(RpaArgumentType type)
{
    switch (type) {
    case RpaArgumentType::Text:
    case RpaArgumentType::Switch:
    case RpaArgumentType::File:
    case RpaArgumentType::Folder:
    case RpaArgumentType::Parameter:
        return true;
    default:
        return false;
    }
}

bool ArgumentText::IsPython(RpaArgumentType type, const QString& text)
{
    if (type == RpaArgumentType::Switch)
        return RpaExpression::IsPython(type, text);
    return MayBePython(type) && text.startsWith(QLatin1Char('='));
}

QString ArgumentText::Shown(RpaArgumentType type, const QString& text)
{
    const bool marked = MayBePython(type) && (text.startsWith(QLatin1Char('=')) || IsQuotedEquals(text));
    return marked ? text.mid(1) : text;
}

QString ArgumentText::Stored(RpaArgumentType type, const QString& shown, bool python)
{
    if (python)
        return QLatin1Char('=') + shown;
    return MayBePython(type) && IsQuotedEquals(shown) ? QLatin1Char('\'') + shown : shown;
}

QString ArgumentText::VariableProblem(const QString& name)
{
    if (RpaExpression::IsVariableName(name))
        return QString();
    if (!name.isEmpty() && name.at(0).isDigit())
        return QStringLiteral("变量名不能以数字开头");
    // Of the right letters, but a word of Python.
    return RpaExpression::IsVariableName(QLatin1Char('_') + name)
               ? QStringLiteral("这个名称不能用，请换一个")
               : QStringLiteral("只能用文字、数字和下划线");
}

bool ArgumentText::MayHavePieces(RpaArgumentType type)
{
    return type == RpaArgumentType::Text || type == RpaArgumentType::File || type == RpaArgumentType::Folder;
}

std::optional<RpaValue> ArgumentText::Pieces(RpaArgumentType type, const QString& text)
{
    const QString shown = Shown(type, text);
    if (IsPython(type, text))
        return RpaValue::ReadText(shown);
    return shown.isEmpty() ? RpaValue() : RpaValue::Text(shown);
}

QString ArgumentText::Stored(RpaArgumentType type, const RpaValue& value)
{
    if (!value.IsEmpty() && !value.IsPlain())
        return Stored(type, value.ToPython(), true);
    const QString literal = value.PlainText();
    const bool needsMark = literal.startsWith(QLatin1Char('=')) || IsQuotedEquals(literal);
    return needsMark ? QLatin1Char('\'') + literal : literal;
}

QString ArgumentText::Python(const RpaArgumentInfo& argument, const QString& text)
{
    const bool isExpression = argument.type == RpaArgumentType::Expression;
    if (isExpression || IsPython(argument.type, text))
        return isExpression ? text : Shown(argument.type, text);
    return text.isEmpty() ? QString() : RpaExpression::ToPython(argument.type, text);
}

QString ArgumentText::WhyPython(const RpaArgumentInfo& argument, const QString& text)
{
    QString reason;
    if (argument.form == RpaArgumentForm::Condition) {
        RpaCondition::Read(text, &reason);
        return reason;
    }
    if (argument.form != RpaArgumentForm::Code) {
        RpaGrid::Read(argument.form, text, &reason);
        return reason;
    }
    if (!IsPython(argument.type, text) || Shown(argument.type, text).trimmed().isEmpty())
        return QString();
    if (MayHavePieces(argument.type))
        return Pieces(argument.type, text) ? QString() : QStringLiteral("不只是文本和变量，而是要计算");
    return QStringLiteral("运行时才算出结果");
}

QString ArgumentText::Problem(const RpaArgumentInfo& argument, const QString& text, const FieldOffers& offers)
{
    const bool python = RpaExpression::IsPython(argument.type, text);
    const QString body = python && text.startsWith(QLatin1Char('=')) ? text.mid(1) : text;
    if (body.trimmed().isEmpty()) {
        if (python)
            return QStringLiteral("请填写表达式");
        return argument.required ? QStringLiteral("必须填写") : QString();
    }
    const auto condition =
        argument.form == RpaArgumentForm::Condition ? RpaCondition::Read(text) : std::nullopt;
    if (condition && condition->FindIncomplete() >= 0)
        return QStringLiteral("第 %1 行还没有填完整").arg(condition->FindIncomplete() + 1);
    if (python)
        return RpaExpression::IsWellFormed(body) ? QString() : QStringLiteral("表达式不完整，请检查括号");
    const auto lacks = [&text](const QVector<RpaChoice>& choices) {
        return std::none_of(choices.begin(), choices.end(),
                            [&text](const RpaChoice& c) { return c.value == text; });
    };
    switch (argument.type) {
    case RpaArgumentType::Variable:
        return VariableProblem(text);
    case RpaArgumentType::Process:
        return offers.processes.contains(text) ? QString() : QStringLiteral("没有这个流程，请重新选择");
    case RpaArgumentType::Element:
        return lacks(offers.elements) ? QStringLiteral("元素已不存在，请重新选择") : QString();
    case RpaArgumentType::Choice:
        return lacks(argument.choices) ? QStringLiteral("请从列表中选择") : QString();
    default:
        return QString();
    }
}
