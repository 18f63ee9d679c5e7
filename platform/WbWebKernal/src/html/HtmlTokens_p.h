// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QPair>
#include <QString>
#include <QVector>

// One tag of a text that claims to be HTML.
struct HtmlTag
{
    QString name; // in lower case
    bool closing = false;
    QVector<QPair<QString, QString>> attributes; // names in lower case, values as written

    QString Attribute(const QString& attribute) const;
};

// Takes HTML of anybody apart, in one pass over it. What does not look like a tag is text, so that no word
// is lost to a stray "<" or an open quote.
class HtmlTokens
{
public:
    enum Kind
    {
        Text,
        Tag,
        End,
    };

    // The text must outlive the object.
    explicit HtmlTokens(const QString& html) : source(html) {}

    Kind Next();

    // Valid after Next() gave Text or Tag, until the next call. The text is as written, entities included.
    QStringRef GetText() const { return text; }
    const HtmlTag& GetTag() const { return tag; }

    // Goes on behind the tag that closes the element just opened, or at the end.
    void SkipElement(const QString& name);

private:
    bool StartsMarkup() const;
    bool TakeMarkup();
    bool TakeTag();
    int TakeAttribute(int from);
    int TakeValue(int from, QString& value);
    void SkipBehind(const QString& mark);

    const QString& source;
    int at = 0;
    QStringRef text;
    HtmlTag tag;
    qint64 wasted = 0; // characters looked at for a tag that was none
};
