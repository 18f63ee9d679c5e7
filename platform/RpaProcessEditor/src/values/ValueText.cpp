// SPDX-License-Identifier: Apache-2.0

#include "ValueText_p.h"

#include <RpaProcessData/RpaExpression.h>

#include <QRegularExpression>

namespace
{
using Kind = RpaValuePart::Kind;

bool IsQuoted(const QString& text)
{
    return text.size() > 1 && text.startsWith(QLatin1Char('"')) && text.endsWith(QLatin1Char('"'));
}

bool NeedsQuotes(const QString& text, const QStringList& variables)
{
    return text.isEmpty() || text.trimmed() != text || RpaValue::IsNumber(text) || IsQuoted(text) ||
           variables.contains(text);
}
} // namespace

QVector<RpaValuePart> ValueText::Shown(const RpaValue& value, const QStringList& variables)
{
    if (value.Is(Kind::Number))
        return {{Kind::Text, value.parts.first().text}};
    if (value.Is(Kind::Text) && NeedsQuotes(value.parts.first().text, variables))
        return {{Kind::Text, QLatin1Char('"') + value.parts.first().text + QLatin1Char('"')}};
    return value.parts;
}

RpaValue ValueText::Meant(const QVector<RpaValuePart>& typed, const QStringList& variables)
{
    RpaValue value{typed, false};
    if (!value.Is(Kind::Text))
        return value;
    const QString text = typed.first().text.trimmed();
    if (text.isEmpty())
        return RpaValue();
    if (RpaValue::IsNumber(text))
        return RpaValue::Number(text);
    if (variables.contains(text))
        return RpaValue::Code(text);
    return RpaValue::Text(IsQuoted(text) ? text.mid(1, text.size() - 2) : text);
}

QString ValueText::Label(const QString& python)
{
    struct Word
    {
        const char* python;
        const char* title;
    };
    static constexpr Word words[] = {{"True", "是"}, {"False", "否"}, {"None", "空值"}};
    for (const Word& word : words)
        if (python == QLatin1String(word.python))
            return QString::fromUtf8(word.title);
    static const QRegularExpression parameter(QStringLiteral("^rpa\\.get_param\\(\"([^\"\\\\]*)\"\\)$"));
    static const QRegularExpression column(QStringLiteral("^(\\w+)\\[\"([^\"\\\\]*)\"\\]$"),
                                           QRegularExpression::UseUnicodePropertiesOption);
    const auto parameterMatch = parameter.match(python);
    if (parameterMatch.hasMatch())
        return QStringLiteral("参数 ") + parameterMatch.captured(1);
    const auto columnMatch = column.match(python);
    if (columnMatch.hasMatch())
        return columnMatch.captured(1) + QStringLiteral("·") + columnMatch.captured(2);
    return RpaExpression::IsVariableName(python) ? python : QStringLiteral("ƒ ") + python.simplified();
}

QString ValueText::Line(const RpaValue& value, const QStringList& variables)
{
    QString line;
    for (const RpaValuePart& part : Shown(value, variables))
        line += part.kind == Kind::Code ? Label(part.text) : part.text;
    return line.simplified();
}
