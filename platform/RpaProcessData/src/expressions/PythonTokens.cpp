// SPDX-License-Identifier: Apache-2.0

#include "PythonTokens_p.h"

namespace
{
// Longest first.
constexpr const char* longSigns[] = {"**=", "//=", ">>=", "<<=", "...", "**", "//", ">>",
                                     "<<",  "<=",  ">=",  "==",  "!=",  "->", ":=", "+=",
                                     "-=",  "*=",  "/=",  "%=",  "&=",  "|=", "^=", "@="};

constexpr const char* shortSigns = "+-*/%@<>=()[]{},.:;&|^~";
} // namespace

QVector<PythonToken> PythonTokens::Read(const QString& python)
{
    PythonTokens reader(python);
    while (reader.at < reader.source.size()) {
        const int begin = reader.at;
        const int known = reader.tokens.size();
        reader.ReadNext();
        if (reader.tokens.size() > known) {
            reader.tokens.last().from = begin;
            reader.tokens.last().to = qMin(reader.at, python.size());
        }
    }
    return reader.tokens;
}

bool PythonTokens::IsNameStart(QChar c)
{
    // Letters beyond the basic plane come as pairs of surrogates.
    return c == QLatin1Char('_') || c.isLetter() || c.isSurrogate();
}

void PythonTokens::ReadNext()
{
    const QChar c = Peek();
    if (c.isSpace())
        ++at;
    else if (IsNameStart(c))
        ReadName();
    else if (c.isDigit() || (c == QLatin1Char('.') && Peek(1).isDigit()))
        ReadNumber();
    else if (c == QLatin1Char('"') || c == QLatin1Char('\''))
        ReadText(false);
    else
        ReadSign();
}

void PythonTokens::ReadName()
{
    const int begin = at;
    while (at < source.size() && IsNamePart(source.at(at)))
        ++at;
    const QString name = source.mid(begin, at - begin);

    // r"…", f"…", b"…" and their pairs.
    const bool beforeQuote = Peek() == QLatin1Char('"') || Peek() == QLatin1Char('\'');
    if (beforeQuote && name.size() <= 2) {
        const QString prefix = name.toLower();
        ReadText(prefix.contains(QLatin1Char('f')));
        return;
    }
    tokens.append({PythonToken::Kind::Name, name, begin});
}

void PythonTokens::ReadNumber()
{
    const int begin = at;
    while (at < source.size()) {
        const QChar c = source.at(at);
        const QChar before = at > begin ? source.at(at - 1).toLower() : QChar();
        const bool exponentSign =
            (c == QLatin1Char('+') || c == QLatin1Char('-')) && before == QLatin1Char('e') &&
            !source.midRef(begin, 2).startsWith(QLatin1String("0x"), Qt::CaseInsensitive);
        if (!c.isLetterOrNumber() && c != QLatin1Char('.') && c != QLatin1Char('_') && !exponentSign)
            break;
        ++at;
    }
    tokens.append({PythonToken::Kind::Number, source.mid(begin, at - begin), begin});
}

void PythonTokens::ReadText(bool hasFields)
{
    const QChar quote = Peek();
    const bool triple = Peek(1) == quote && Peek(2) == quote;
    const QString close(triple ? 3 : 1, quote);
    at += close.size();
    const int begin = at;
    while (at < source.size() && source.midRef(at, close.size()) != close) {
        const bool lineEnds = source.at(at) == QLatin1Char('\n') && !triple;
        if (lineEnds)
            break;
        // In a raw text too a backslash keeps the quote behind it from closing.
        at += source.at(at) == QLatin1Char('\\') ? 2 : 1;
    }
    const bool closed = at < source.size() && source.midRef(at, close.size()) == close;
    const auto good = hasFields ? PythonToken::Kind::Fields : PythonToken::Kind::Text;
    tokens.append(
        {closed ? good : PythonToken::Kind::Bad, source.mid(begin, qMin(at, source.size()) - begin), begin});
    at += close.size();
}

void PythonTokens::ReadSign()
{
    for (const char* sign : longSigns) {
        const QLatin1String text(sign);
        if (source.midRef(at, text.size()) == text) {
            tokens.append({PythonToken::Kind::Sign, text, at});
            at += text.size();
            return;
        }
    }
    const QChar c = source.at(at++);
    const bool known = QLatin1String(shortSigns).contains(c);
    tokens.append({known ? PythonToken::Kind::Sign : PythonToken::Kind::Bad, QString(c), at - 1});
}
