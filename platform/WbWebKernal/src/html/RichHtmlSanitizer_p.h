// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RichTally_p.h"

#include <QString>

class RichImages;

struct SanitizedHtml
{
    QString html;
    RichTally tally; // its problem, when there is one: the HTML must not be laid out
};

// First gate for HTML from outside, before a document parses it: an allow-list of tags, attributes and
// styles, written out anew with every tag closed, so that the parser sees nothing that could make it slow or
// greedy. Scripts, style sheets and frames go with their content; embedded pictures are replaced by their
// short names. What the text may finally contain is decided by RichHtmlWriter, not here.
SanitizedHtml SanitizeHtml(const QString& html, RichImages& images);

// Paragraphs for a text that is not HTML.
QString HtmlOfPlainText(const QString& text);

// True for addresses that a link of the text may have: http, https, mailto.
bool IsAllowedLink(const QString& address);
