// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaTextPattern.h>

#include <QRegularExpression>

namespace
{
constexpr int longestExpression = 200;
constexpr int longestText = 10000;

// An app is written by strangers: an expression that tries for ever must not hold up its user.
QRegularExpression Compile(const QString& expression)
{
    return QRegularExpression(QStringLiteral("(*LIMIT_MATCH=100000)(*NO_JIT)\\A(?:%1)\\z").arg(expression),
                              QRegularExpression::UseUnicodePropertiesOption);
}
} // namespace

const QVector<RpaTextPattern>& RpaTextPattern::GetKnown()
{
    static const QVector<RpaTextPattern> known{
        {QStringLiteral("手机号码"), QStringLiteral("1[3-9][0-9]{9}"), QStringLiteral("13800138000")},
        {QStringLiteral("电子邮箱"), QStringLiteral("[^@\\s]+@[^@\\s]+\\.[^@\\s.]+"),
         QStringLiteral("name@example.com")},
        {QStringLiteral("网址"), QStringLiteral("https?://\\S+"), QStringLiteral("https://example.com")},
        {QStringLiteral("身份证号码"), QStringLiteral("[1-9][0-9]{16}[0-9Xx]"),
         QStringLiteral("11010119900307123X")},
        {QStringLiteral("数字"), QStringLiteral("[0-9]+"), QStringLiteral("20240001")},
        {QStringLiteral("字母和数字"), QStringLiteral("[A-Za-z0-9]+"), QStringLiteral("AB12")},
    };
    return known;
}

RpaTextPattern RpaTextPattern::Find(const QString& expression)
{
    for (const RpaTextPattern& pattern : GetKnown())
        if (pattern.expression == expression)
            return pattern;
    return {QString(), expression, QString()};
}

bool RpaTextPattern::IsUsable(const QString& expression)
{
    return expression.size() <= longestExpression && Compile(expression).isValid();
}

bool RpaTextPattern::Matches(const QString& expression, const QString& text)
{
    if (!IsUsable(expression))
        return true;
    return text.size() <= longestText && Compile(expression).match(text).hasMatch();
}
