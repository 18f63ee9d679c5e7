// SPDX-License-Identifier: Apache-2.0

#include "PythonParts_p.h"

#include <RpaProcessData/RpaExpression.h>
#include <RpaProcessData/RpaValue.h>

#include <QRegularExpression>

#include <algorithm>

namespace
{
using Kind = RpaValuePart::Kind;
using Parts = QVector<RpaValuePart>;

void AddText(Parts& parts, const QString& text)
{
    if (!parts.isEmpty() && parts.last().kind == Kind::Text)
        parts.last().text += text;
    else if (!text.isEmpty())
        parts.append({Kind::Text, text});
}

// The character that an escape at this place means, and how long the escape is; nothing for the rare ones.
std::optional<QChar> Unescaped(const QString& source, int at, int& length)
{
    static const QString names = QStringLiteral("ntr\\\"'");
    static const QString meanings = QStringLiteral("\n\t\r\\\"'");
    length = 2;
    const QChar name = source.size() > at + 1 ? source.at(at + 1) : QChar();
    const int known = name.isNull() ? -1 : names.indexOf(name);
    if (known >= 0)
        return meanings.at(known);
    if (name != QLatin1Char('u') || source.size() < at + 6)
        return std::nullopt;
    length = 6;
    bool good = false;
    const ushort code = source.midRef(at + 2, 4).toUShort(&good, 16);
    return good ? std::optional<QChar>(QChar(code)) : std::nullopt;
}

std::optional<QString> Decoded(const QString& content)
{
    QString text;
    for (int i = 0; i < content.size();) {
        int length = 1;
        QChar c = content.at(i);
        if (c == QLatin1Char('\\')) {
            const auto meant = Unescaped(content, i, length);
            if (!meant)
                return std::nullopt;
            c = *meant;
        }
        text.append(c);
        i += length;
    }
    return text;
}

// Where the field that opens here is closed; -1 when it is not.
int EndOfField(const QString& content, int open)
{
    int depth = 0;
    for (int i = open; i < content.size(); ++i)
        if (QStringLiteral("([{").contains(content.at(i)))
            ++depth;
        else if (QStringLiteral(")]}").contains(content.at(i)) && --depth == 0)
            return i;
    return -1;
}

// A field with a format or a conversion is no value that could stand elsewhere.
bool IsBareField(const QString& code)
{
    const PythonParts python(code);
    return !python.IsEmpty() && !python.IsBroken() && !python.Has(":") && !python.Has("=");
}

// Texts and fields of an f-string, in their order.
std::optional<Parts> Fields(const QString& content)
{
    Parts parts;
    QString text;
    const auto addText = [&parts](const QString& source) {
        const auto decoded = Decoded(source);
        AddText(parts, decoded.value_or(QString()));
        return decoded.has_value();
    };
    for (int i = 0; i < content.size(); ++i) {
        const QChar c = content.at(i);
        const bool brace = c == QLatin1Char('{') || c == QLatin1Char('}');
        if (!brace || (i + 1 < content.size() && content.at(i + 1) == c)) {
            text.append(c);
            i += brace ? 1 : 0;
            continue;
        }
        const int end = c == QLatin1Char('{') ? EndOfField(content, i) : -1;
        const QString code = content.mid(i + 1, end - i - 1).trimmed();
        if (end < 0 || !IsBareField(code) || !addText(text))
            return std::nullopt;
        text.clear();
        parts.append({Kind::Code, code});
        i = end;
    }
    if (!addText(text))
        return std::nullopt;
    return parts;
}

// A text in ordinary quotes; nothing for raw, byte and long texts, which are rare and shown as they stand.
std::optional<Parts> Literal(const PythonToken& token, const QString& source)
{
    const bool fields = token.kind == PythonToken::Kind::Fields;
    if (token.kind != PythonToken::Kind::Text && !fields)
        return std::nullopt;
    const int around = source.size() - token.text.size();
    const bool ordinary = fields ? around == 3 && source.startsWith(QLatin1Char('f')) : around == 2;
    if (!ordinary)
        return std::nullopt;
    if (fields)
        return Fields(token.text);
    const auto text = Decoded(token.text);
    return text ? std::optional<Parts>(Parts{{Kind::Text, *text}}) : std::nullopt;
}

bool IsPrimary(const PythonParts& python)
{
    // Something to begin with, then only brackets and attributes.
    for (int i = 0; i < python.Count(); ++i) {
        const PythonToken& token = python.At(i);
        const bool bracket = QStringLiteral("([{)]}").contains(token.text);
        if (!python.IsOutside(i) || (token.kind == PythonToken::Kind::Sign && (bracket || token.IsSign("."))))
            continue;
        const bool follows = i > 0 && !python.At(i - 1).IsSign(".");
        if (token.kind != PythonToken::Kind::Name || follows || token.IsName("not") || token.IsName("lambda"))
            return false;
    }
    return !python.IsEmpty() && !python.IsBroken();
}

std::optional<Parts> Joined(const PythonParts& python)
{
    Parts parts;
    const QVector<PythonParts> pieces = python.SplitAt("+");
    for (const PythonParts& piece : pieces) {
        const auto literal = piece.Count() == 1 ? Literal(piece.At(0), piece.Text()) : std::nullopt;
        const bool turned = piece.Count() > 3 && piece.At(0).IsName("str") &&
                            piece.Mid(1, piece.Count() - 1).IsWithin("(", ")") &&
                            !piece.Mid(2, piece.Count() - 3).Has(",");
        if (!literal && !turned)
            return std::nullopt;
        if (turned)
            parts.append({Kind::Code, piece.Mid(2, piece.Count() - 3).Text()});
        for (const RpaValuePart& part : literal.value_or(Parts()))
            if (part.kind == Kind::Text)
                AddText(parts, part.text);
            else
                parts.append(part);
    }
    return parts;
}

// The pieces of a text, a number or something with a name; nothing for Python that calculates.
constexpr int mostCharacters = 100000; // more takes long to be shown in pieces

std::optional<RpaValue> Pieces(const QString& source)
{
    if (source.size() > mostCharacters)
        return std::nullopt;
    const PythonParts python(source);
    const QString text = python.Text();
    if (python.IsEmpty())
        return RpaValue();
    if (RpaValue::IsNumber(text))
        return RpaValue::Number(text);
    if (!python.IsBroken()) {
        if (auto parts = Joined(python)) {
            if (parts->isEmpty())
                parts->append({Kind::Text, QString()});
            return RpaValue{*parts, true};
        }
    }
    return IsPrimary(python) ? std::optional<RpaValue>(RpaValue::Code(text)) : std::nullopt;
}

// What Python 3.11 does not take inside the field of an f-string.
bool FitsIntoField(const QString& code)
{
    return !code.startsWith(QLatin1Char('{')) && !code.endsWith(QLatin1Char('}')) &&
           std::none_of(code.begin(), code.end(),
                        [](QChar c) { return QStringLiteral("\"\\\n#").contains(c); });
}

QString WithFields(const Parts& parts)
{
    QString python = QStringLiteral("f\"");
    for (const RpaValuePart& part : parts) {
        if (part.kind == Kind::Code) {
            python += QLatin1Char('{') + part.text + QLatin1Char('}');
            continue;
        }
        QString text = RpaExpression::ToPythonLiteral(part.text);
        text.replace(QLatin1Char('{'), QLatin1String("{{")).replace(QLatin1Char('}'), QLatin1String("}}"));
        python += text.midRef(1, text.size() - 2);
    }
    return python + QLatin1Char('"');
}

QString WithSum(const Parts& parts)
{
    QStringList pieces;
    for (const RpaValuePart& part : parts) {
        pieces.append(part.kind == Kind::Code ? QStringLiteral("str(%1)").arg(part.text)
                                              : RpaExpression::ToPythonLiteral(part.text));
    }
    return pieces.join(QLatin1String(" + "));
}
} // namespace

RpaValue RpaValue::Read(const QString& python)
{
    RpaValue value = Pieces(python).value_or(Code(python.trimmed()));
    if (value.Is(Kind::Text))
        value.isText = false;
    return value;
}

std::optional<RpaValue> RpaValue::ReadText(const QString& python)
{
    auto value = Pieces(python);
    if (value && value->Is(Kind::Number))
        value = Code(value->parts.first().text);
    if (value && value->Is(Kind::Text))
        value->isText = false;
    return value;
}

QString RpaValue::ToPython() const
{
    if (parts.isEmpty())
        return QString();
    if (IsPlain())
        return RpaExpression::ToPythonLiteral(PlainText());
    if (parts.size() == 1 && !isText)
        return parts.first().text;
    const bool fits = std::all_of(parts.begin(), parts.end(), [](const RpaValuePart& part) {
        return part.kind != Kind::Code || FitsIntoField(part.text);
    });
    return fits ? WithFields(parts) : WithSum(parts);
}

bool RpaValue::IsPlain() const
{
    return !parts.isEmpty() && std::all_of(parts.begin(), parts.end(),
                                           [](const RpaValuePart& part) { return part.kind == Kind::Text; });
}

QString RpaValue::PlainText() const
{
    QString text;
    for (const RpaValuePart& part : parts)
        text += part.text;
    return text;
}

bool RpaValue::IsNumber(const QString& text)
{
    static const QRegularExpression number(QStringLiteral("^-?(0|[1-9][0-9]*)(\\.[0-9]+)?$"));
    return number.match(text).hasMatch();
}
