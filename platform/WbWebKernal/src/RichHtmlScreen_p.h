#pragma once

#include <QString>

class RichImages;

// First gate for HTML from outside, before a document parses it: bounds what could make the parser slow or
// greedy (table nesting, cell spans), drops scripts and style sheets, and replaces embedded pictures by their
// short names. What the text may finally contain is decided by RichHtmlWriter, not here.
QString ScreenHtml(const QString& html, RichImages& images);

// Paragraphs for a text that is not HTML.
QString HtmlOfPlainText(const QString& text);

// True for addresses that a link of the text may have: http, https, mailto.
bool IsAllowedLink(const QString& address);
