// SPDX-License-Identifier: Apache-2.0

#include "ConditionReader_p.h"

namespace
{
struct Sign
{
    RpaComparison comparison;
    const char* sign;
};

constexpr Sign signs[] = {
    {RpaComparison::Equal, "=="},  {RpaComparison::NotEqual, "!="},
    {RpaComparison::Greater, ">"}, {RpaComparison::GreaterOrEqual, ">="},
    {RpaComparison::Less, "<"},    {RpaComparison::LessOrEqual, "<="},
    {RpaComparison::IsIn, "in"},   {RpaComparison::IsNotIn, "not in"},
    {RpaComparison::IsNone, "is"}, {RpaComparison::IsNotNone, "is not"},
};

QVector<int> Comparisons(const PythonParts& python)
{
    QVector<int> found;
    for (int i = 0; i < python.Count(); ++i) {
        for (const Sign& sign : signs) {
            const PythonToken& token = python.At(i);
            if (python.IsOutside(i) && (token.IsSign(sign.sign) || token.IsName(sign.sign)))
                found.append(i);
        }
    }
    return found;
}

bool IsEmptyThings(const PythonParts& python)
{
    const PythonParts empty(QString::fromLatin1(ConditionReader::emptyThings));
    bool same = python.Count() == empty.Count();
    for (int i = 0; same && i < empty.Count(); ++i)
        same = python.At(i).kind == empty.At(i).kind && python.At(i).text == empty.At(i).text;
    return same;
}

bool IsNothing(const PythonParts& python)
{
    return python.Count() == 1 && python.At(0).IsName("None");
}

// "a" in b: what b contains; a in b: whether a is one of b.
bool ReadsAsContains(const RpaValue& first)
{
    return !first.Is(RpaValuePart::Kind::Code);
}

bool IsJoin(const PythonParts& python, int i)
{
    return python.IsOutside(i) && (python.At(i).IsName("and") || python.At(i).IsName("or"));
}

bool HasJoinOrComparison(const PythonParts& python)
{
    return python.Has("and") || python.Has("or") || python.Has("not") || !Comparisons(python).isEmpty();
}

PythonParts WithoutBrackets(PythonParts python)
{
    static constexpr const char* needsBrackets[] = {",", "for", "if", "lambda", ":="};
    // Nobody writes more around one comparison; each pair is looked at as a whole.
    constexpr int mostPairs = 8;
    for (int i = 0; i < mostPairs && python.IsWithin("(", ")") && python.Count() > 2; ++i) {
        const PythonParts inside = python.Inside();
        for (const char* word : needsBrackets)
            if (inside.Has(word))
                return python;
        python = inside;
    }
    return python;
}
} // namespace

const char* ConditionReader::SignOf(RpaComparison comparison)
{
    for (const Sign& sign : signs)
        if (sign.comparison == comparison)
            return sign.sign;
    return "";
}

bool ConditionReader::Fail(const QString& why)
{
    reason = why;
    return false;
}

bool ConditionReader::Read()
{
    if (source.size() > RpaCondition::mostCharacters)
        return Fail(QStringLiteral("太长了"));
    const QString trimmed = source.trimmed();
    const PythonParts python(trimmed.startsWith(QLatin1Char('=')) && !trimmed.startsWith(QLatin1String("=="))
                                 ? trimmed.mid(1)
                                 : trimmed);
    if (python.IsBroken())
        return Fail(QStringLiteral("括号或引号没有成对"));
    if (python.Has("if") || python.Has("lambda") || python.Has(":=") || python.Has(",") || python.Has("="))
        return Fail(QStringLiteral("含有行里没有的写法"));
    int begin = 0;
    bool isOr = false;
    for (int i = 0; i <= python.Count(); ++i) {
        if (i < python.Count() && !IsJoin(python, i))
            continue;
        if (rows.size() == RpaCondition::mostRows)
            return Fail(QStringLiteral("超过 %1 行").arg(RpaCondition::mostRows));
        const PythonParts part = python.Mid(begin, i - begin);
        RpaConditionRow row;
        if (!ReadRow(WithoutBrackets(part), row))
            return false;
        row.isOr = isOr;
        rows.append(row);
        sources.append(part.Text());
        isOr = i < python.Count() && python.At(i).IsName("or");
        begin = i + 1;
    }
    return true;
}

bool ConditionReader::ReadRow(const PythonParts& python, RpaConditionRow& row)
{
    for (int i = 0; i < python.Count(); ++i)
        if (IsJoin(python, i))
            return Fail(QStringLiteral("含有用括号分组的条件"));
    const QVector<int> found = Comparisons(python);
    if (found.size() > 1)
        return Fail(QStringLiteral("含有连续比较，例如 1 < 数量 < 3"));
    const bool negated = !python.IsEmpty() && python.At(0).IsName("not");
    if (negated) {
        const PythonParts rest = WithoutBrackets(python.Mid(1, python.Count() - 1));
        if (HasJoinOrComparison(rest))
            return Fail(QStringLiteral("含有对整个条件的否定"));
        row.comparison = RpaComparison::HoldsNot;
        row.left = RpaValue::Read(python.Mid(1, python.Count() - 1).Text());
        return true;
    }
    if (!found.isEmpty())
        return ReadComparison(python, found.first(), row);
    if (!python.IsEmpty())
        ReadCall(python, row);
    return true;
}

bool ConditionReader::ReadComparison(const PythonParts& python, int sign, RpaConditionRow& row)
{
    QString word = python.At(sign).text;
    PythonParts left = python.Mid(0, sign);
    PythonParts right = python.Mid(sign + 1, python.Count() - sign - 1);
    if (word == QLatin1String("in") && !left.IsEmpty() && left.At(sign - 1).IsName("not")) {
        word = QStringLiteral("not in");
        left = left.Mid(0, sign - 1);
    } else if (word == QLatin1String("is") && !right.IsEmpty() && right.At(0).IsName("not")) {
        word = QStringLiteral("is not");
        right = right.Mid(1, right.Count() - 1);
    }
    if (left.Has("not") || right.Has("not"))
        return Fail(QStringLiteral("含有对整个条件的否定"));
    for (const Sign& known : signs)
        if (word == QLatin1String(known.sign))
            row.comparison = known.comparison;
    row.left = RpaValue::Read(left.Text());
    row.right = RpaValue::Read(right.Text());
    if (word.startsWith(QLatin1String("is"))) {
        row.right = RpaValue();
        return IsNothing(right) || Fail(QStringLiteral("含有行里没有的比较"));
    }
    const bool isNotIn = row.comparison == RpaComparison::IsNotIn;
    if (row.comparison != RpaComparison::IsIn && !isNotIn)
        return true;
    if (IsEmptyThings(right)) {
        row.comparison = isNotIn ? RpaComparison::IsNotEmpty : RpaComparison::IsEmpty;
        row.right = RpaValue();
    } else if (ReadsAsContains(row.left)) {
        row.comparison = isNotIn ? RpaComparison::ContainsNot : RpaComparison::Contains;
        qSwap(row.left, row.right);
    }
    return true;
}

// str(…).startswith(…), and the same without str().
void ConditionReader::ReadCall(const PythonParts& python, RpaConditionRow& row) const
{
    row.comparison = RpaComparison::Holds;
    row.left = RpaValue::Read(python.Text());
    int open = python.Count() - 1;
    while (open > 0 && !(python.IsOutside(open) && python.At(open).IsSign("(")))
        --open;
    const bool starts = open > 2 && python.At(open - 1).IsName("startswith");
    const bool ends = open > 2 && python.At(open - 1).IsName("endswith");
    const PythonParts brackets = python.Mid(open, python.Count() - open);
    if ((!starts && !ends) || !python.At(open - 2).IsSign(".") || !brackets.IsWithin("(", ")") ||
        brackets.Inside().Has(","))
        return;
    const PythonParts whole = python.Mid(0, open - 2);
    const PythonParts argument = whole.Mid(1, whole.Count() - 1);
    const bool turned = whole.Count() > 3 && whole.At(0).IsName("str") && argument.IsWithin("(", ")");
    // Arithmetic before the dot belongs to the row as a whole: a + b.startswith(c).
    if (!turned && !RpaValue::ReadText(whole.Text()))
        return;
    row.comparison = starts ? RpaComparison::StartsWith : RpaComparison::EndsWith;
    row.left = RpaValue::Read(turned ? argument.Inside().Text() : whole.Text());
    row.right = RpaValue::Read(brackets.Inside().Text());
}
