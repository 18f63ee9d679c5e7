// SPDX-License-Identifier: Apache-2.0

#include "PythonParts_p.h"

PythonParts::PythonParts(const QString& python) : source(python), tokens(PythonTokens::Read(python))
{
    ReadDepths();
}

// A closing bracket belongs to the level outside of it, as its opening one does.
void PythonParts::ReadDepths()
{
    QString open;
    depths.clear();
    for (const PythonToken& token : qAsConst(tokens)) {
        const QChar sign =
            token.kind == PythonToken::Kind::Sign && token.text.size() == 1 ? token.text.at(0) : QChar();
        const int closed = sign.isNull() ? -1 : QStringLiteral(")]}").indexOf(sign);
        if (closed >= 0) {
            broken = broken || open.isEmpty() || open.back() != QStringLiteral("([{").at(closed);
            open.chop(1);
        }
        depths.append(open.size());
        if (!sign.isNull() && QStringLiteral("([{").contains(sign))
            open.append(sign);
        broken = broken || token.kind == PythonToken::Kind::Bad;
    }
    broken = broken || !open.isEmpty();
}

int PythonParts::Find(const char* word, int from) const
{
    for (int i = from; i < tokens.size(); ++i)
        if (IsOutside(i) && (tokens.at(i).IsName(word) || tokens.at(i).IsSign(word)))
            return i;
    return -1;
}

PythonParts PythonParts::Mid(int first, int count) const
{
    PythonParts part;
    part.source = source;
    part.tokens = tokens.mid(first, count);
    part.ReadDepths();
    return part;
}

QVector<PythonParts> PythonParts::SplitAt(const char* sign) const
{
    QVector<PythonParts> parts;
    int begin = 0;
    for (int at = Find(sign); at >= 0; at = Find(sign, begin)) {
        parts.append(Mid(begin, at - begin));
        begin = at + 1;
    }
    parts.append(Mid(begin, Count() - begin));
    return parts;
}

bool PythonParts::IsWithin(const char* open, const char* close) const
{
    if (Count() < 2 || broken || !tokens.first().IsSign(open) || !tokens.last().IsSign(close))
        return false;
    for (int i = 1; i + 1 < Count(); ++i)
        if (IsOutside(i))
            return false;
    return true;
}

QString PythonParts::Text() const
{
    return IsEmpty() ? QString() : source.mid(tokens.first().from, tokens.last().to - tokens.first().from);
}
