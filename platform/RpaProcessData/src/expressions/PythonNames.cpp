// SPDX-License-Identifier: Apache-2.0

#include "PythonNames_p.h"
#include "PythonTokens_p.h"

namespace
{
using Tokens = QVector<PythonToken>;

const QSet<QString>& Keywords()
{
    static const QSet<QString> words = [] {
        const QString text = QStringLiteral(
            "False None True and as assert async await break class continue def del elif else except finally "
            "for from "
            "global if import in is lambda nonlocal not or pass raise return try while with yield");
        const QStringList list = text.split(QLatin1Char(' '));
        return QSet<QString>(list.cbegin(), list.cend());
    }();
    return words;
}

const QSet<QString>& BuiltIns()
{
    static const QSet<QString> words = [] {
        const QString text = QStringLiteral("abs all any ascii bin bool bytearray bytes callable chr complex "
                                            "dict dir divmod enumerate eval filter float "
                                            "format frozenset getattr hasattr hash hex id input int "
                                            "isinstance iter len list map max min next object oct "
                                            "open ord pow print range repr reversed round set slice sorted "
                                            "str sum tuple type vars zip Exception "
                                            "ValueError TypeError KeyError IndexError RuntimeError rpa");
        const QStringList list = text.split(QLatin1Char(' '));
        return QSet<QString>(list.cbegin(), list.cend());
    }();
    return words;
}

// Names bound inside the expression itself: targets of comprehensions, parameters of lambdas, walrus.
QSet<QString> BoundNames(const Tokens& tokens)
{
    QSet<QString> bound;
    bool inTargets = false;
    bool inParameters = false;
    for (int i = 0; i < tokens.size(); ++i) {
        const PythonToken& token = tokens.at(i);
        if (token.IsName("for"))
            inTargets = true;
        else if (token.IsName("in"))
            inTargets = false;
        else if (token.IsName("lambda"))
            inParameters = true;
        else if (token.IsSign(":"))
            inParameters = false;
        else if (token.kind == PythonToken::Kind::Name &&
                 (inTargets || inParameters || (i + 1 < tokens.size() && tokens.at(i + 1).IsSign(":="))))
            bound.insert(token.text);
    }
    return bound;
}

// The expressions inside the fields of an f-string.
QVector<PythonNames::Place> FieldsOf(const QString& text)
{
    QVector<PythonNames::Place> fields;
    int depth = 0;
    int begin = 0;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        const bool doubled = depth == 0 && i + 1 < text.size() && text.at(i + 1) == c;
        if ((c == QLatin1Char('{') || c == QLatin1Char('}')) && doubled)
            ++i;
        else if (c == QLatin1Char('{') && depth++ == 0)
            begin = i + 1;
        else if (c == QLatin1Char('}') && depth > 0 && --depth == 0)
            fields.append({text.mid(begin, i - begin), begin});
    }
    return fields;
}

// A field without its conversion and format.
QString ExpressionOfField(const QString& field)
{
    int depth = 0;
    for (int i = 0; i < field.size(); ++i) {
        const QChar c = field.at(i);
        if (QStringLiteral("([{").contains(c))
            ++depth;
        else if (QStringLiteral(")]}").contains(c))
            --depth;
        const bool conversion =
            c == QLatin1Char('!') && i + 1 < field.size() && field.at(i + 1) != QLatin1Char('=');
        if (depth == 0 && (c == QLatin1Char(':') || conversion))
            return field.left(i);
    }
    return field;
}

bool IsNamedArgument(const Tokens& tokens, int i)
{
    const bool before = i > 0 && (tokens.at(i - 1).IsSign("(") || tokens.at(i - 1).IsSign(","));
    return before && i + 1 < tokens.size() && tokens.at(i + 1).IsSign("=");
}

bool IsReadName(const Tokens& tokens, int i)
{
    const PythonToken& token = tokens.at(i);
    const bool attribute = i > 0 && tokens.at(i - 1).IsSign(".");
    return token.kind == PythonToken::Kind::Name && !attribute && !IsNamedArgument(tokens, i) &&
           !PythonNames::IsKeyword(token.text) && !PythonNames::IsBuiltIn(token.text);
}

// A field's names stand where the field stands in the whole.
void AppendFields(const PythonToken& token, QVector<PythonNames::Place>& places)
{
    const QVector<PythonNames::Place> fields = FieldsOf(token.text);
    for (const PythonNames::Place& field : fields) {
        const QVector<PythonNames::Place> inside = PythonNames::ReadIn(ExpressionOfField(field.name));
        for (const PythonNames::Place& place : inside)
            places.append({place.name, token.begin + field.begin + place.begin});
    }
}
} // namespace

bool PythonNames::IsKeyword(const QString& name)
{
    return Keywords().contains(name);
}

bool PythonNames::IsBuiltIn(const QString& name)
{
    return BuiltIns().contains(name);
}

QVector<PythonNames::Place> PythonNames::ReadIn(const QString& python)
{
    const Tokens tokens = PythonTokens::Read(python);
    const QSet<QString> bound = BoundNames(tokens);
    QVector<Place> places;
    for (int i = 0; i < tokens.size(); ++i)
        if (tokens.at(i).kind == PythonToken::Kind::Fields)
            AppendFields(tokens.at(i), places);
        else if (IsReadName(tokens, i))
            places.append({tokens.at(i).text, tokens.at(i).begin});
    QVector<Place> read;
    for (const Place& place : qAsConst(places))
        if (!bound.contains(place.name))
            read.append(place);
    return read;
}

QSet<QString> PythonNames::AllIn(const QString& python)
{
    QSet<QString> names;
    const Tokens tokens = PythonTokens::Read(python);
    for (const PythonToken& token : tokens) {
        if (token.kind == PythonToken::Kind::Name)
            names.insert(token.text);
        if (token.kind != PythonToken::Kind::Fields)
            continue;
        const QVector<Place> fields = FieldsOf(token.text);
        for (const Place& field : fields)
            names.unite(AllIn(ExpressionOfField(field.name)));
    }
    return names;
}
