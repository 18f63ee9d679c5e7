// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QIcon>

enum class RichGlyph
{
    Bold,
    Italic,
    Underline,
    Strike,
    BulletList,
    NumberList,
    Indent,
    Outdent,
    AlignLeft,
    AlignCentre,
    AlignRight,
    TextColour,
    BackColour,
    Link,
    Picture,
    Table,
    Undo,
    Redo,
    Find,
    ClearFormat,
};

// Line icons drawn in the colour that the application's palette has for text when they are painted, so that
// they follow the theme and stay sharp at every scale.
QIcon RichIcon(RichGlyph glyph);
