// SPDX-License-Identifier: Apache-2.0

#include "HtmlVocabulary_p.h"

#include <QHash>
#include <QSet>
#include <QStringList>

namespace
{
using Role = HtmlVocabulary::Role;

constexpr int longestValue = 2048;
constexpr int widestPicture = 4096;

const QHash<QString, Role>& Roles()
{
    static const QHash<QString, Role> roles = [] {
        QHash<QString, Role> made;
        const auto add = [&made](Role role, const char* names) {
            const QStringList list = QString::fromLatin1(names).split(QLatin1Char(' '));
            for (const QString& name : list)
                made.insert(name, role);
        };
        add(Role::Dropped, "script style title iframe object svg noscript template head");
        add(Role::Void, "img br hr");
        add(Role::Inline, "a b strong i em cite dfn var u ins s strike del span font");
        add(Role::Block, "p h1 h2 h3 h4 h5 h6 div center blockquote pre dl dt dd address");
        add(Role::List, "ul ol");
        add(Role::Item, "li");
        add(Role::Table, "table");
        add(Role::Row, "tr");
        add(Role::Cell, "td th");
        return made;
    }();
    return roles;
}

bool IsAllowedProperty(const QString& property, const QString& value)
{
    static const QSet<QString> allowed{
        QStringLiteral("color"),
        QStringLiteral("background"),
        QStringLiteral("background-color"),
        QStringLiteral("font-weight"),
        QStringLiteral("font-style"),
        QStringLiteral("text-decoration"),
        QStringLiteral("text-align"),
        QStringLiteral("margin-left"),
        QStringLiteral("list-style"),
        QStringLiteral("list-style-type"),
        QStringLiteral("white-space"),
        QStringLiteral("-qt-block-indent"),
        QStringLiteral("-qt-list-indent"),
        QStringLiteral("-qt-paragraph-type"),
    };
    if (property == QLatin1String("display"))
        return value.compare(QLatin1String("none"), Qt::CaseInsensitive) == 0;
    return allowed.contains(property);
}

QString StyleOf(const QString& style)
{
    QString kept;
    const QVector<QStringRef> declarations = style.leftRef(longestValue).split(QLatin1Char(';'));
    for (const QStringRef& declaration : declarations) {
        const int colon = declaration.indexOf(QLatin1Char(':'));
        const QString property = declaration.left(qMax(colon, 0)).trimmed().toString().toLower();
        const QString value = declaration.mid(colon + 1).trimmed().toString();
        if (IsAllowedProperty(property, value))
            kept += (kept.isEmpty() ? QString() : QStringLiteral(";")) + property + QLatin1Char(':') + value;
    }
    return kept;
}

bool IsAllowedAttribute(const QString& attribute, const QString& name)
{
    if (attribute == QLatin1String("align"))
        return Roles().value(name) != Role::Table && Roles().value(name) != Role::Void;
    if (attribute == QLatin1String("href"))
        return name == QLatin1String("a");
    if (attribute == QLatin1String("color"))
        return name == QLatin1String("font");
    if (attribute == QLatin1String("type"))
        return Roles().value(name) == Role::List;
    return false;
}

// A bare number only: a length of another kind, or a huge one, says nothing.
QString Length(const HtmlTag& tag, const QString& attribute)
{
    bool number = false;
    const int length = tag.Attribute(attribute).toInt(&number);
    return number && length > 0 && length <= widestPicture
               ? QStringLiteral(" %1=\"%2\"").arg(attribute).arg(length)
               : QString();
}

QString Quoted(const QString& attribute, QString value)
{
    value.replace(QLatin1Char('"'), QLatin1String("&quot;"));
    return QLatin1Char(' ') + attribute + QLatin1String("=\"") + value + QLatin1Char('"');
}
} // namespace

QString HtmlVocabulary::NameOf(const QString& tag)
{
    static const QSet<QString> parts{
        QStringLiteral("section"), QStringLiteral("article"),  QStringLiteral("header"),
        QStringLiteral("footer"),  QStringLiteral("main"),     QStringLiteral("aside"),
        QStringLiteral("nav"),     QStringLiteral("figure"),   QStringLiteral("figcaption"),
        QStringLiteral("form"),    QStringLiteral("fieldset"), QStringLiteral("details"),
        QStringLiteral("summary"),
    };
    return parts.contains(tag) ? QStringLiteral("div") : tag;
}

HtmlVocabulary::Role HtmlVocabulary::RoleOf(const QString& name)
{
    return Roles().value(name, Role::Unknown);
}

QString HtmlVocabulary::AttributesOf(const HtmlTag& tag, const QString& name)
{
    if (name == QLatin1String("img"))
        return Length(tag, QStringLiteral("width")) + Length(tag, QStringLiteral("height"));
    // Every table looks alike.
    QString kept = RoleOf(name) == Role::Table
                       ? QStringLiteral(" border=\"1\" cellspacing=\"0\" cellpadding=\"6\" width=\"100%\"")
                       : QString();
    for (const auto& [attribute, value] : tag.attributes) {
        if (attribute == QLatin1String("style")) {
            const QString style = StyleOf(value);
            kept += style.isEmpty() ? QString() : Quoted(attribute, style);
        } else if (IsAllowedAttribute(attribute, name) && value.size() <= longestValue) {
            kept += Quoted(attribute, value);
        }
    }
    return kept;
}

bool HtmlVocabulary::KeepsLines(const HtmlTag& tag, const QString& name)
{
    return name == QLatin1String("pre") ||
           StyleOf(tag.Attribute(QStringLiteral("style"))).contains(QLatin1String("white-space"));
}
