// SPDX-License-Identifier: Apache-2.0

#include "HtmlTokens_p.h"
#include "HtmlVocabulary_p.h"
#include "RichHtmlSanitizer_p.h"
#include "RichImages_p.h"
#include "RichLimits_p.h"

#include <QStringList>
#include <QUrl>

#include <algorithm>

namespace
{
using HtmlVocabulary::Role;

class Screen
{
public:
    Screen(const QString& html, RichImages& pictures) : tokens(html), images(pictures)
    {
        out.reserve(html.size());
    }

    SanitizedHtml Run()
    {
        while (tally.GetProblem().isEmpty()) {
            const HtmlTokens::Kind kind = tokens.Next();
            if (kind == HtmlTokens::End)
                break;
            if (kind == HtmlTokens::Text)
                TakeText(tokens.GetText());
            else
                TakeTag(tokens.GetTag());
        }
        CloseDownTo(0);
        tally.EndParagraph();
        return {out, tally};
    }

private:
    struct Element
    {
        QString name;
        Role role;
        bool keepsLines;
    };

    void TakeText(const QStringRef& text)
    {
        const bool blank = text.trimmed().isEmpty();
        if (blank && IsBetweenCells())
            return;
        EnsureCell();
        if (!open.isEmpty() && open.last().keepsLines)
            CountLines(text);
        else if (!blank)
            tally.AddText(text.size());
        out += text.toString().replace(QLatin1Char('<'), QLatin1String("&lt;"));
    }

    void CountLines(const QStringRef& text)
    {
        const QVector<QStringRef> lines = text.split(QLatin1Char('\n'));
        for (int i = 0; i < lines.size(); ++i) {
            if (i > 0)
                tally.BeginParagraph();
            tally.AddText(lines.at(i).size());
        }
    }

    void TakeTag(const HtmlTag& tag)
    {
        const QString name = HtmlVocabulary::NameOf(tag.name);
        const Role role = HtmlVocabulary::RoleOf(name);
        tally.AddTag();
        if (tag.closing) {
            Close(name, role);
            return;
        }
        switch (role) {
        case Role::Unknown:
            break;
        case Role::Dropped:
            tokens.SkipElement(tag.name);
            break;
        case Role::Void:
            EnsureCell();
            TakeVoid(tag, name);
            break;
        case Role::Row:
            OpenRow();
            break;
        case Role::Cell:
            OpenCell(tag, name);
            break;
        default:
            EnsureCell();
            Open(tag, name, role);
        }
    }

    void TakeVoid(const HtmlTag& tag, const QString& name)
    {
        if (name == QLatin1String("img")) {
            TakePicture(tag);
            return;
        }
        if (name == QLatin1String("hr"))
            tally.BeginParagraph();
        tally.AddText(1);
        out += QLatin1Char('<') + name + QLatin1Char('>');
    }

    void TakePicture(const HtmlTag& tag)
    {
        const QString address = tag.Attribute(QStringLiteral("src")).trimmed();
        QString name = address;
        if (address.startsWith(QLatin1String("data:"), Qt::CaseInsensitive))
            name = images.AddDataUri(address);
        if (images.IsFull())
            tally.Refuse(QStringLiteral("的图片太多或太大"));
        // A picture from elsewhere would be fetched behind the reader's back.
        if (!images.Contains(name))
            return;
        tally.AddText(1);
        out += QLatin1String("<img src=\"") + name + QLatin1Char('"') +
               HtmlVocabulary::AttributesOf(tag, QStringLiteral("img")) + QLatin1Char('>');
    }

    void Open(const HtmlTag& tag, const QString& name, Role role)
    {
        if (role != Role::Inline) {
            CloseOne(QStringLiteral("p"), Role::Cell);
            CloseImplied(name, role);
            tally.BeginParagraph();
        }
        const bool deep = open.size() >= RichLimits::depth ||
                          (role == Role::Table && Depth(Role::Table) >= RichLimits::tableDepth);
        if (deep) {
            if (role == Role::Table)
                ++deepTables;
            if (role != Role::Inline)
                out += QLatin1String("<br>"); // its words stay on lines of their own
            return;
        }
        if (role == Role::List)
            tally.BeginList();
        else if (role == Role::Item)
            tally.AddListItem();
        else if (role == Role::Table)
            tally.BeginTable();
        Push(name, role, HtmlVocabulary::AttributesOf(tag, name), HtmlVocabulary::KeepsLines(tag, name));
    }

    // Elements that nobody closes before the next of their kind.
    void CloseImplied(const QString& name, Role role)
    {
        if (role == Role::Item)
            CloseOne(name, Role::List);
        else if (name == QLatin1String("dt") || name == QLatin1String("dd"))
            CloseDownTo(LastOf({QStringLiteral("dt"), QStringLiteral("dd")}, QStringLiteral("dl")));
    }

    void OpenRow()
    {
        const int table = LastTable();
        if (table < 0 || deepTables > 0) {
            out += QLatin1String("<br>");
            return;
        }
        CloseDownTo(table + 1);
        tally.BeginRow();
        Push(QStringLiteral("tr"), Role::Row, QString(), false);
    }

    void OpenCell(const HtmlTag& tag, const QString& name)
    {
        const int table = LastTable();
        if (table < 0 || deepTables > 0) {
            out += QLatin1Char(' ');
            return;
        }
        const bool inRow = open.size() > table + 1 && open.at(table + 1).role == Role::Row;
        if (!inRow)
            OpenRow();
        CloseDownTo(table + 2);
        const int columns = SpanOf(tag, QStringLiteral("colspan"));
        const int rows = SpanOf(tag, QStringLiteral("rowspan"));
        tally.AddCell(columns, rows);
        tally.BeginParagraph();
        QString attributes = HtmlVocabulary::AttributesOf(tag, name);
        if (columns > 1)
            attributes += QStringLiteral(" colspan=\"%1\"").arg(columns);
        if (rows > 1)
            attributes += QStringLiteral(" rowspan=\"%1\"").arg(rows);
        Push(name, Role::Cell, attributes, HtmlVocabulary::KeepsLines(tag, name));
    }

    static int SpanOf(const HtmlTag& tag, const QString& attribute)
    {
        const int span = tag.Attribute(attribute).trimmed().toInt();
        return span >= 1 && span <= RichLimits::span ? span : 1;
    }

    // Words between the cells of a table are in a cell of their own.
    void EnsureCell()
    {
        if (!IsBetweenCells())
            return;
        HtmlTag cell;
        cell.name = QStringLiteral("td");
        OpenCell(cell, cell.name);
    }

    bool IsBetweenCells() const
    {
        return !open.isEmpty() && (open.last().role == Role::Table || open.last().role == Role::Row);
    }

    void Close(const QString& name, Role role)
    {
        if (deepTables > 0 && (role == Role::Table || role == Role::Row || role == Role::Cell)) {
            deepTables -= role == Role::Table ? 1 : 0;
            return;
        }
        if (role == Role::Block || role == Role::Item || role == Role::List)
            tally.EndParagraph();
        switch (role) {
        case Role::Table:
            CloseDownTo(LastTable());
            break;
        case Role::Row:
            CloseOne(name, Role::Table);
            break;
        case Role::Cell:
            CloseOne(name, Role::Row);
            break;
        default:
            CloseOne(name, Role::Cell);
        }
    }

    // Closes the innermost element of that name, and all in it, unless an element of the other kind is
    // between.
    void CloseOne(const QString& name, Role border)
    {
        for (int i = open.size() - 1; i >= 0 && open.at(i).role != border; --i) {
            if (open.at(i).role == Role::Table && border != Role::Table)
                return;
            if (open.at(i).name == name) {
                CloseDownTo(i);
                return;
            }
        }
    }

    int LastOf(const QStringList& names, const QString& border) const
    {
        for (int i = open.size() - 1; i >= 0; --i) {
            if (open.at(i).name == border || open.at(i).role == Role::Cell)
                return -1;
            if (names.contains(open.at(i).name))
                return i;
        }
        return -1;
    }

    int LastTable() const
    {
        for (int i = open.size() - 1; i >= 0; --i)
            if (open.at(i).role == Role::Table)
                return i;
        return -1;
    }

    int Depth(Role role) const
    {
        return int(std::count_if(open.cbegin(), open.cend(),
                                 [role](const Element& each) { return each.role == role; }));
    }

    void Push(const QString& name, Role role, const QString& attributes, bool keepsLines)
    {
        out += QLatin1Char('<') + name + attributes + QLatin1Char('>');
        open.append({name, role, keepsLines || (!open.isEmpty() && open.last().keepsLines)});
    }

    // Nothing when there is no such level.
    void CloseDownTo(int level)
    {
        while (level >= 0 && open.size() > level) {
            const Element last = open.takeLast();
            out += QLatin1String("</") + last.name + QLatin1Char('>');
            if (last.role == Role::List)
                tally.EndList();
            else if (last.role == Role::Table)
                tally.EndTable();
            if (last.role != Role::Inline)
                tally.EndParagraph();
        }
    }

    HtmlTokens tokens;
    RichImages& images;
    RichTally tally;
    QString out;
    QVector<Element> open;
    int deepTables = 0; // open ones that are not passed on
};
} // namespace

SanitizedHtml SanitizeHtml(const QString& html, RichImages& images)
{
    if (html.size() <= RichLimits::sourceSize)
        return Screen(html, images).Run();
    SanitizedHtml refused;
    refused.tally.Refuse(QStringLiteral("连同图片超过 %1 MB").arg(RichLimits::sourceSize / (1024 * 1024)));
    return refused;
}

QString HtmlOfPlainText(const QString& text)
{
    QString html;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        QString escaped = line.toHtmlEscaped();
        escaped.remove(QLatin1Char('\r'));
        escaped.replace(QLatin1String("  "), QLatin1String(" &nbsp;"));
        html += escaped.isEmpty() ? QStringLiteral("<p style=\"-qt-paragraph-type:empty\"><br></p>")
                                  : QLatin1String("<p>") + escaped + QLatin1String("</p>");
    }
    return html;
}

bool IsAllowedLink(const QString& address)
{
    const QUrl url(address, QUrl::StrictMode);
    if (!url.isValid() || address.size() > 2048)
        return false;
    const QString scheme = url.scheme().toLower();
    if (scheme == QLatin1String("mailto"))
        return !url.path().isEmpty();
    return (scheme == QLatin1String("http") || scheme == QLatin1String("https")) && !url.host().isEmpty();
}
