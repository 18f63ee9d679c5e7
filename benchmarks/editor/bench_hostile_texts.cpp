// SPDX-License-Identifier: Apache-2.0

// How long usage instructions that were made to hang their reader take, from opening to their last line on
// the screen: for a reader and for the author, in time of the processor. Ends with an error when one takes
// longer than two seconds.

#include "HostileTexts.h"

#include <WbBaseUI/WbTheme.h>
#include <WbWebKernal/WbRichEditor.h>
#include <WbWebKernal/WbRichReader.h>

#include <QAbstractScrollArea>
#include <QApplication>
#include <QScrollBar>

#include <cstdio>
#include <ctime>

namespace
{
constexpr double longestMs = 2000;
constexpr quint32 seeds = 300;
const QSize size(900, 600);

template <typename Widget, typename Fill>
double Open(Widget& widget, const char* view, Fill fill)
{
    widget.resize(size);
    const std::clock_t start = std::clock();
    fill();
    widget.show();
    QCoreApplication::processEvents();
    widget.grab();
    auto* area = widget.template findChild<QAbstractScrollArea*>(QLatin1String(view));
    area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum());
    widget.grab();
    return 1000.0 * double(std::clock() - start) / CLOCKS_PER_SEC;
}

struct Slowest
{
    double ms = 0;
    QString name;

    void Take(double taken, const QString& of)
    {
        if (taken > ms) {
            ms = taken;
            name = of;
        }
    }
};

void Measure(const HostileTexts::Text& text, Slowest& slowest, bool print)
{
    WbRichReader reader;
    const double read = Open(reader, "viewManual", [&] { reader.ShowText(text.html); });
    WbRichEditor editor;
    const double edited = Open(editor, "richTextView", [&] { editor.Init(text.html); });
    slowest.Take(read, text.name);
    slowest.Take(edited, text.name);
    if (print)
        std::printf("  %-34s %8d  reader %7.0f ms  author %7.0f ms\n", qPrintable(text.name),
                    text.html.size(), read, edited);
    std::fflush(stdout);
}
} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    Slowest slowest;
    std::printf("beyond the limits\n");
    for (const HostileTexts::Text& text : HostileTexts::BeyondEveryLimit())
        Measure(text, slowest, true);
    std::printf("at the limits\n");
    for (const HostileTexts::Text& text : HostileTexts::AtTheLimits())
        Measure(text, slowest, true);
    for (quint32 seed = 1; seed <= seeds; ++seed)
        Measure(HostileTexts::Random(seed), slowest, false);
    std::printf("%u random texts as well; the slowest of all: %s, %.0f ms\n", seeds, qPrintable(slowest.name),
                slowest.ms);
    return slowest.ms > longestMs ? 1 : 0;
}
