// SPDX-License-Identifier: Apache-2.0

#include "Tour.h"
#include "TourLook.h"

// The embedded browser beside the pages: folded to a strip, in a window of its own, and back.

using namespace TourLook;

namespace
{
bool IsDocked()
{
    const QWidget* browser = Visible("browserPane");
    const QWidget* editor = Visible("RpaAppEditorWidget");
    return browser && editor && editor->isAncestorOf(browser);
}
} // namespace

void Tour::FoldBrowser()
{
    // Where no web engine was built in there is no pane to fold.
    if (!d->OnGui(&HasBrowser))
        return;
    d->Step(QStringLiteral("browser-folded"), [this] {
        GoToPage("pushButtonUI");
        d->UntilCalm();
        d->Click(QStringLiteral("fold"), Named("browserFold"));
        d->Until(QStringLiteral("the strip"),
                 [] { return Visible("pushButtonUnfold") && !Visible("browserPane"); });
    });
}

void Tour::MoveBrowser()
{
    if (!d->OnGui(&HasBrowser))
        return;
    d->Step(QStringLiteral("browser-unfolded"), [this] {
        d->UntilCalm();
        d->Click(QStringLiteral("unfold"), Named("pushButtonUnfold"));
        d->Until(QStringLiteral("the pane"), [] { return IsDocked() && !Visible("pushButtonUnfold"); });
    });
    d->Step(QStringLiteral("browser-popped-out"), [this] {
        d->Click(QStringLiteral("a window of its own"), Named("browserPopup"));
        d->Until(QStringLiteral("the window"), [] {
            return Visible("browserPane") && !IsDocked() && Visible("browserBorderWindow") &&
                   !Visible("browserFold");
        });
    });
    d->Step(QStringLiteral("browser-docked"), [this] {
        d->Click(QStringLiteral("back into the editor"), Named("browserPopup"));
        d->Until(QStringLiteral("the pane"), [] { return IsDocked() && !Visible("browserBorderWindow"); });
    });
}
