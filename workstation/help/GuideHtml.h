// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

// The guide's pages as the text view reads them: headings, paragraphs, lists, tables, pictures, links, words
// in code. Qt's own reader of such texts trips over lists in some of its versions.
namespace GuideHtml
{
QString Of(const QString& markdown);
} // namespace GuideHtml
