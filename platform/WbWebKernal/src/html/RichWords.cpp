// SPDX-License-Identifier: Apache-2.0

#include "HtmlTokens_p.h"
#include "HtmlVocabulary_p.h"
#include "RichWords_p.h"

namespace
{
using HtmlVocabulary::Role;

constexpr int mostWords = 200 * 1000; // in characters
constexpr int mostLines = 10 * 1000;
constexpr int longestLine = 2000; // longer ones are broken

// The entities that writers of texts use; a rare one stays as it is written.
QString Decoded(const QStringRef& entity)
{
    static const QPair<QLatin1String, ushort> named[] = {
        {QLatin1String("lt"), '<'},   {QLatin1String("gt"), '>'},    {QLatin1String("amp"), '&'},
        {QLatin1String("quot"), '"'}, {QLatin1String("apos"), '\''}, {QLatin1String("nbsp"), ' '},
    };
    for (const auto& [name, character] : named)
        if (entity == name)
            return QString(QChar(character));
    if (!entity.startsWith(QLatin1Char('#')))
        return {};
    const bool hex = entity.mid(1).startsWith(QLatin1Char('x'), Qt::CaseInsensitive);
    const uint code = entity.mid(hex ? 2 : 1).toUInt(nullptr, hex ? 16 : 10);
    const bool character = code >= 0x20 && code <= 0x10ffff && (code < 0xd800 || code > 0xdfff);
    return character ? QString::fromUcs4(&code, 1) : QString();
}

class WordWriter
{
public:
    bool IsFull() const { return !words.complete; }

    void Append(QChar c)
    {
        if (c == QLatin1Char('\n')) {
            EndLine();
            return;
        }
        if (c.unicode() < 0x20)
            return;
        if (lineSize >= longestLine && !c.isLowSurrogate())
            EndLine();
        if (words.text.size() >= mostWords || lines >= mostLines) {
            words.complete = false;
            return;
        }
        words.text += c;
        ++lineSize;
    }

    void Append(const QString& text)
    {
        for (const QChar c : text)
            Append(c);
    }

    void EndLine()
    {
        if (lines < mostLines)
            words.text += QLatin1Char('\n');
        ++lines;
        lineSize = 0;
    }

    void EndParagraph()
    {
        if (lineSize > 0)
            EndLine();
    }

    RichWords Take()
    {
        while (words.text.endsWith(QLatin1Char('\n')))
            words.text.chop(1);
        return words;
    }

private:
    RichWords words;
    int lineSize = 0;
    int lines = 0;
};

void AppendText(WordWriter& writer, const QStringRef& text)
{
    constexpr int longestEntity = 10;
    bool space = true;
    for (int i = 0; i < text.size() && !writer.IsFull(); ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('&')) {
            const int end = text.mid(i, longestEntity).indexOf(QLatin1Char(';'));
            const QString decoded = end > 0 ? Decoded(text.mid(i + 1, end - 1)) : QString();
            if (!decoded.isEmpty()) {
                writer.Append(decoded);
                i += end;
                space = false;
                continue;
            }
        }
        if (!c.isSpace() || !space)
            writer.Append(c.isSpace() ? QChar(QLatin1Char(' ')) : c);
        space = c.isSpace();
    }
}

void TakeTag(WordWriter& writer, HtmlTokens& tokens)
{
    const HtmlTag& tag = tokens.GetTag();
    const QString name = HtmlVocabulary::NameOf(tag.name);
    const Role role = HtmlVocabulary::RoleOf(name);
    if (role == Role::Dropped) {
        if (!tag.closing)
            tokens.SkipElement(tag.name);
        return;
    }
    if (name == QLatin1String("br"))
        writer.EndLine();
    else if (name == QLatin1String("img"))
        writer.Append(QStringLiteral("[图片]"));
    else if (role == Role::Cell && tag.closing)
        writer.Append(QLatin1Char(' '));
    else if (role != Role::Unknown && role != Role::Inline && role != Role::Cell)
        writer.EndParagraph();
}
} // namespace

RichWords WordsOf(const QString& html)
{
    WordWriter writer;
    HtmlTokens tokens(html);
    while (!writer.IsFull()) {
        const HtmlTokens::Kind kind = tokens.Next();
        if (kind == HtmlTokens::End)
            break;
        if (kind == HtmlTokens::Text)
            AppendText(writer, tokens.GetText());
        else
            TakeTag(writer, tokens);
    }
    return writer.Take();
}

RichWords WordsOfPlainText(const QString& text)
{
    WordWriter writer;
    for (int i = 0; i < text.size() && !writer.IsFull(); ++i)
        writer.Append(text.at(i) == QLatin1Char('\t') ? QChar(QLatin1Char(' ')) : text.at(i));
    return writer.Take();
}
