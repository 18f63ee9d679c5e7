// SPDX-License-Identifier: Apache-2.0

#include "RichHtmlSanitizer_p.h"
#include "RichHtmlWriter_p.h"
#include "RichLimits_p.h"
#include "RichOpening_p.h"
#include "RichWords_p.h"

namespace
{
std::unique_ptr<RichDocument> NewDocument(const QFont& font, const QColor& link)
{
    auto document = std::make_unique<RichDocument>(QSharedPointer<RichImages>::create());
    document->SetLook(font, link);
    return document;
}
} // namespace

OpenedText OpenRichText(const QString& text, const QFont& font, const QColor& link)
{
    const bool rich = text.isEmpty() || Qt::mightBeRichText(text);
    const bool huge = text.size() > RichLimits::sourceSize;
    const QString html = rich || huge ? text : HtmlOfPlainText(text);
    OpenedText opened;
    opened.document = NewDocument(font, link);
    opened.problem = opened.document->LoadHtml(html);
    if (opened.problem.isEmpty()) {
        const QString clean = RichHtmlWriter::Write(*opened.document, opened.document->Images());
        if (clean == html)
            return opened;
        // Formats that the text may not have would stay in the document otherwise.
        opened.document = NewDocument(font, link);
        opened.problem = opened.document->LoadHtml(clean);
    }
    if (!opened.problem.isEmpty()) {
        const RichWords words = rich ? WordsOf(html) : WordsOfPlainText(text);
        opened.document = NewDocument(font, link);
        opened.document->LoadWords(words.text);
        opened.complete = words.complete;
    }
    return opened;
}
