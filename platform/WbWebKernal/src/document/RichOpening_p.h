// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RichDocument_p.h"

#include <memory>

// A text as it is shown, to its author and to its readers alike.
struct OpenedText
{
    std::unique_ptr<RichDocument> document;
    // Why only the words of the text are shown, in words for its reader; empty when it is shown as it is.
    QString problem;
    bool complete = true; // false: only the beginning of the words
};

// Opens HTML or plain text of anybody. Takes a bounded time, whatever the text is.
OpenedText OpenRichText(const QString& text, const QFont& font, const QColor& link);
