// SPDX-License-Identifier: Apache-2.0

// The screen for HTML from outside under libFuzzer; see README.md.

#include "RichHtmlSanitizer_p.h"
#include "RichImages_p.h"
#include "RichLimits_p.h"
#include "RichWords_p.h"

#include <cstdint>
#include <cstdlib>

namespace
{
void Require(bool held)
{
    if (!held)
        std::abort();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString html = QString::fromUtf8(reinterpret_cast<const char*>(data), int(size));
    RichImages images;
    const SanitizedHtml sanitized = SanitizeHtml(html, images);
    Require(sanitized.html.count(QLatin1String("<table")) == sanitized.html.count(QLatin1String("</table>")));
    Require(sanitized.tally.GetProblem().isEmpty() ? sanitized.tally.GetCells() <= RichLimits::cells : true);
    // What has passed passes again as it is.
    RichImages again(images);
    if (sanitized.tally.GetProblem().isEmpty())
        Require(SanitizeHtml(sanitized.html, again).html == sanitized.html);
    WordsOf(html);
    return 0;
}
