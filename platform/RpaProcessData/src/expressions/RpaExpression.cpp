// SPDX-License-Identifier: Apache-2.0

#include "PythonNames_p.h"
#include "PythonTokens_p.h"

#include <RpaProcessData/RpaExpression.h>

#include <QRegularExpression>

namespace
{
using Tokens = QVector<PythonToken>;

bool IsTextLike(RpaArgumentType type)
{
    return type == RpaArgumentType::Text || type == RpaArgumentType::File ||
           type == RpaArgumentType::Folder || type == RpaArgumentType::Parameter;
}

// A number as Python writes it; empty when the text is none.
QString PythonNumber(const QString& text)
{
    static const QRegularExpression whole(QStringLiteral("^([+-]?)0*(\\d+)$"));
    static const QRegularExpression real(
        QStringLiteral("^[+-]?(\\d+\\.\\d*|\\.\\d+|\\d+(?=[eE]))([eE][+-]?\\d+)?$"));
    const auto match = whole.match(text);
    if (match.hasMatch())
        return match.captured(1) + match.captured(2);
    return real.match(text).hasMatch() ? text : QString();
}

QString PythonSwitch(const QString& text)
{
    if (text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("True");
    if (text.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("False");
    return QString();
}

// Python of the types that have a literal form of their own; empty when the text is not that form.
QString LiteralOf(RpaArgumentType type, const QString& text)
{
    if (type == RpaArgumentType::Number)
        return PythonNumber(text);
    return type == RpaArgumentType::Switch ? PythonSwitch(text) : QString();
}

// The literal that a text stands for: "'=…" is "=…".
QString WithoutMark(const QString& text)
{
    int quotes = 0;
    while (quotes < text.size() && text.at(quotes) == QLatin1Char('\''))
        ++quotes;
    const bool marked = quotes > 0 && quotes < text.size() && text.at(quotes) == QLatin1Char('=');
    return marked ? text.mid(1) : text;
}

// Several lines hold together inside brackets only.
QString OnOneStatement(const QString& python)
{
    return python.contains(QLatin1Char('\n')) ? QLatin1Char('(') + python + QLatin1Char(')') : python;
}

QString PythonOf(const QString& text)
{
    const QString trimmed = text.trimmed();
    return OnOneStatement(trimmed.startsWith(QLatin1Char('=')) ? trimmed.mid(1).trimmed() : trimmed);
}

bool Closes(QChar open, QChar close)
{
    return (open == QLatin1Char('(') && close == QLatin1Char(')')) ||
           (open == QLatin1Char('[') && close == QLatin1Char(']')) ||
           (open == QLatin1Char('{') && close == QLatin1Char('}'));
}

bool AreBracketsClosed(const Tokens& tokens)
{
    QString open;
    for (const PythonToken& token : tokens) {
        if (token.kind != PythonToken::Kind::Sign || token.text.size() != 1)
            continue;
        const QChar sign = token.text.at(0);
        if (QStringLiteral("([{").contains(sign)) {
            open.append(sign);
        } else if (QStringLiteral(")]}").contains(sign)) {
            if (open.isEmpty() || !Closes(open.back(), sign))
                return false;
            open.chop(1);
        }
    }
    return open.isEmpty();
}

bool EndsOpen(const PythonToken& last)
{
    static const QStringList openWords{QStringLiteral("and"), QStringLiteral("or"), QStringLiteral("not"),
                                       QStringLiteral("in"),  QStringLiteral("is"), QStringLiteral("if"),
                                       QStringLiteral("else")};
    if (last.kind == PythonToken::Kind::Name)
        return openWords.contains(last.text);
    const bool closing =
        last.IsSign(")") || last.IsSign("]") || last.IsSign("}") || last.IsSign(",") || last.IsSign("...");
    return last.kind == PythonToken::Kind::Sign && !closing;
}

bool IsComparison(const PythonToken& token)
{
    return token.IsSign("==") || token.IsSign("!=") || token.IsSign("<") || token.IsSign(">") ||
           token.IsSign("<=") || token.IsSign(">=") || token.IsName("in") || token.IsName("and") ||
           token.IsName("or");
}

// A comparison, "and" or "or" with nothing on one of its sides, as rows that are not filled in are written.
bool LacksOperand(const Tokens& tokens)
{
    for (int i = 0; i < tokens.size(); ++i) {
        if (!IsComparison(tokens.at(i)))
            continue;
        const bool opens = i == 0 || tokens.at(i - 1).IsSign("(") || tokens.at(i - 1).IsSign("[");
        const bool nextCloses =
            i + 1 < tokens.size() && (tokens.at(i + 1).IsSign(")") || tokens.at(i + 1).IsSign("]"));
        const bool another = i + 1 < tokens.size() && IsComparison(tokens.at(i + 1));
        if (opens || nextCloses || another)
            return true;
    }
    return false;
}

// "=" outside of brackets, and the signs that stand in statements only.
bool HasStatementSign(const Tokens& tokens)
{
    int depth = 0;
    for (const PythonToken& token : tokens) {
        if (token.IsSign("(") || token.IsSign("[") || token.IsSign("{"))
            ++depth;
        else if (token.IsSign(")") || token.IsSign("]") || token.IsSign("}"))
            --depth;
        const bool assigns = token.kind == PythonToken::Kind::Sign && token.text.endsWith(QLatin1Char('=')) &&
                             !token.IsSign("==") && !token.IsSign("!=") && !token.IsSign("<=") &&
                             !token.IsSign(">=");
        if (token.IsSign(";") || token.IsSign("->") ||
            (assigns && (depth == 0 || token.text.size() > 1) && !(token.IsSign(":=") && depth > 0)))
            return true;
    }
    return false;
}
} // namespace

bool RpaExpression::IsPython(RpaArgumentType type, const QString& text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return false;
    if (type == RpaArgumentType::Expression)
        return true;
    if (type == RpaArgumentType::Number || type == RpaArgumentType::Switch)
        return LiteralOf(type, trimmed).isEmpty();
    return IsTextLike(type) && text.startsWith(QLatin1Char('='));
}

QString RpaExpression::ToPython(RpaArgumentType type, const QString& text)
{
    if (type == RpaArgumentType::Variable)
        return text.trimmed();
    if (IsPython(type, text))
        return PythonOf(text);
    const bool hasNone = type == RpaArgumentType::Expression || type == RpaArgumentType::Number ||
                         type == RpaArgumentType::Switch;
    if (!hasNone)
        return ToPythonLiteral(IsTextLike(type) ? WithoutMark(text) : text);
    const QString literal = LiteralOf(type, text.trimmed());
    return literal.isEmpty() ? QStringLiteral("None") : literal;
}

QString RpaExpression::ToPythonLiteral(const QString& text)
{
    QString literal;
    literal.reserve(text.size() + 2);
    literal.append(QLatin1Char('"'));
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        const bool pair = c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        if (c == QLatin1Char('"') || c == QLatin1Char('\\'))
            literal.append(QLatin1Char('\\')).append(c);
        else if (c == QLatin1Char('\n'))
            literal.append(QLatin1String("\\n"));
        else if (c == QLatin1Char('\t'))
            literal.append(QLatin1String("\\t"));
        else if (pair)
            literal.append(c).append(text.at(++i));
        else if (c.isPrint() && !c.isSurrogate())
            literal.append(c);
        else
            literal.append(QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0')));
    }
    return literal.append(QLatin1Char('"'));
}

bool RpaExpression::IsWellFormed(const QString& python)
{
    const Tokens tokens = PythonTokens::Read(python);
    if (tokens.isEmpty() || EndsOpen(tokens.last()) || !AreBracketsClosed(tokens) ||
        HasStatementSign(tokens) || LacksOperand(tokens))
        return false;
    for (const PythonToken& token : tokens)
        if (token.kind == PythonToken::Kind::Bad)
            return false;
    return true;
}

QStringList RpaExpression::GetVariables(const QString& python)
{
    QStringList names;
    const QVector<PythonNames::Place> places = PythonNames::ReadIn(python);
    for (const PythonNames::Place& place : places)
        if (!names.contains(place.name))
            names.append(place.name);
    return names;
}

bool RpaExpression::IsVariableName(const QString& text)
{
    if (text.isEmpty() || !PythonTokens::IsNameStart(text.at(0)) || PythonNames::IsKeyword(text))
        return false;
    for (const QChar c : text)
        if (!PythonTokens::IsNamePart(c))
            return false;
    return true;
}
