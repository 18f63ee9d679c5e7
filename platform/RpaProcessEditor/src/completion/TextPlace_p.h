// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

// A place of a text as Python counts: lines from 1, columns from 0 in characters, of which some take two of Qt's.
struct TextPlace
{
    int line = 1;
    int column = 0;

    // offset: in Qt's characters, within the text.
    static TextPlace Of(const QString& text, int offset);

    // The offset of the place; the nearest one where the text is shorter.
    int In(const QString& text) const;
};
