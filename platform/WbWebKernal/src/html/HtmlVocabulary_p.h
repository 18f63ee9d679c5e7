// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "HtmlTokens_p.h"

#include <QString>

// What HTML from outside may say.
namespace HtmlVocabulary
{
enum class Role
{
    Unknown, // its words count, the tag does not
    Dropped, // goes with all that is in it
    Void,    // has no content: picture, line break, rule
    Inline,
    Block,
    List,
    Item,
    Table,
    Row,
    Cell,
};

// The name under which a tag is passed on.
QString NameOf(const QString& tag);
Role RoleOf(const QString& name);

// The attributes that may stay, each with a space before it; the spans of cells and the address of a picture
// are none of them.
QString AttributesOf(const HtmlTag& tag, const QString& name);

// Line breaks in the source are line breaks of the text.
bool KeepsLines(const HtmlTag& tag, const QString& name);
} // namespace HtmlVocabulary
