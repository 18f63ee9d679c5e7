// SPDX-License-Identifier: Apache-2.0

#include "HtmlTokens_p.h"

#include <algorithm>

namespace
{
bool IsLetter(QChar c)
{
    return (c >= QLatin1Char('a') && c <= QLatin1Char('z')) ||
           (c >= QLatin1Char('A') && c <= QLatin1Char('Z'));
}

bool EndsName(QChar c)
{
    return c.isSpace() || c == QLatin1Char('>') || c == QLatin1Char('/') || c == QLatin1Char('=') ||
           c == QLatin1Char('<');
}

bool EndsValue(QChar c)
{
    return c.isSpace() || c == QLatin1Char('>') || c == QLatin1Char('<');
}

// So often the text may be looked through for tags that turn out to be none.
constexpr qint64 mostLooks = 4;
} // namespace

QString HtmlTag::Attribute(const QString& attribute) const
{
    const auto found = std::find_if(attributes.cbegin(), attributes.cend(),
                                    [&attribute](const auto& each) { return each.first == attribute; });
    return found == attributes.cend() ? QString() : found->second;
}

HtmlTokens::Kind HtmlTokens::Next()
{
    while (at < source.size()) {
        if (StartsMarkup() && TakeMarkup()) {
            if (!tag.name.isEmpty())
                return Tag;
            continue;
        }
        const int begin = at;
        do {
            ++at;
        } while (at < source.size() && !StartsMarkup());
        text = source.midRef(begin, at - begin);
        return Text;
    }
    return End;
}

bool HtmlTokens::StartsMarkup() const
{
    if (source.at(at) != QLatin1Char('<') || at + 1 >= source.size() || wasted > mostLooks * source.size())
        return false;
    const QChar next = source.at(at + 1);
    return IsLetter(next) || next == QLatin1Char('/') || next == QLatin1Char('!') || next == QLatin1Char('?');
}

// False when it is text after all. A tag without a name is something that says nothing.
bool HtmlTokens::TakeMarkup()
{
    tag.name.clear();
    tag.attributes.clear();
    const QChar next = source.at(at + 1);
    if (source.midRef(at, 4) == QLatin1String("<!--")) {
        SkipBehind(QStringLiteral("-->"));
        return true;
    }
    if (next == QLatin1Char('!') || next == QLatin1Char('?')) {
        SkipBehind(QStringLiteral(">"));
        return true;
    }
    return TakeTag();
}

bool HtmlTokens::TakeTag()
{
    tag.closing = source.at(at + 1) == QLatin1Char('/');
    const int begin = at + (tag.closing ? 2 : 1);
    int end = begin;
    while (end < source.size() && source.at(end).isLetterOrNumber())
        ++end;
    tag.name = source.mid(begin, end - begin).toLower();
    while (end < source.size() && source.at(end) != QLatin1Char('>') && source.at(end) != QLatin1Char('<'))
        end = TakeAttribute(end);
    if (end >= source.size() || source.at(end) == QLatin1Char('<')) {
        wasted += end - at;
        return false;
    }
    at = end + 1;
    return true;
}

// Gives the place behind the attribute; the end of the text when its quote is never closed.
int HtmlTokens::TakeAttribute(int from)
{
    const QChar first = source.at(from);
    if (first.isSpace() || first == QLatin1Char('/') || first == QLatin1Char('='))
        return from + 1;
    int end = from;
    while (end < source.size() && !EndsName(source.at(end)))
        ++end;
    const QString name = source.mid(from, end - from).toLower();
    while (end < source.size() && source.at(end).isSpace())
        ++end;
    QString value;
    if (end < source.size() && source.at(end) == QLatin1Char('='))
        end = TakeValue(end + 1, value);
    constexpr int mostAttributes = 32; // nobody needs more; all are looked through by name
    if (tag.attributes.size() < mostAttributes)
        tag.attributes.append({name, value});
    return end;
}

int HtmlTokens::TakeValue(int from, QString& value)
{
    while (from < source.size() && source.at(from).isSpace())
        ++from;
    if (from >= source.size())
        return from;
    const QChar quote = source.at(from);
    if (quote != QLatin1Char('"') && quote != QLatin1Char('\'')) {
        int end = from;
        while (end < source.size() && !EndsValue(source.at(end)))
            ++end;
        value = source.mid(from, end - from);
        return end;
    }
    const int end = source.indexOf(quote, from + 1);
    if (end < 0)
        return source.size();
    value = source.mid(from + 1, end - from - 1);
    return end + 1;
}

void HtmlTokens::SkipBehind(const QString& mark)
{
    const int end = source.indexOf(mark, at);
    at = end < 0 ? source.size() : end + mark.size();
}

void HtmlTokens::SkipElement(const QString& name)
{
    const int end = source.indexOf(QLatin1String("</") + name, at, Qt::CaseInsensitive);
    at = end < 0 ? source.size() : end;
}
