// The screen for HTML from outside under libFuzzer; see README.md.

#include "RichHtmlScreen_p.h"
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
    const ScreenedHtml screened = ScreenHtml(html, images);
    Require(screened.html.count(QLatin1String("<table")) == screened.html.count(QLatin1String("</table>")));
    Require(screened.tally.GetProblem().isEmpty() ? screened.tally.GetCells() <= RichLimits::cells : true);
    // What has passed passes again as it is.
    RichImages again(images);
    if (screened.tally.GetProblem().isEmpty())
        Require(ScreenHtml(screened.html, again).html == screened.html);
    WordsOf(html);
    return 0;
}
