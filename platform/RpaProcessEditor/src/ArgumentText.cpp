#include "ArgumentText_p.h"

#include <RpaProcessData/RpaExpression.h>

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

QString ArgumentText::Problem(const RpaArgumentInfo& argument, const QString& text, const FieldOffers& offers)
{
    const bool python = RpaExpression::IsPython(argument.type, text);
    const QString body = python && text.startsWith(QLatin1Char('=')) ? text.mid(1) : text;
    if (body.trimmed().isEmpty()) {
        if (python)
            return QStringLiteral("请填写表达式");
        return argument.required ? QStringLiteral("必须填写") : QString();
    }
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
