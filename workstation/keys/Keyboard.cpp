// SPDX-License-Identifier: Apache-2.0

#include "Keyboard.h"

#include "ActPalette.h"
#include "EditorPage.h"
#include "KeyFilter.h"
#include "KeysDialog.h"
#include "MainWindow.h"

#include <algorithm>

Keyboard::Keyboard(MainWindow* mainWindow, EditorPage* editorPage, QWidget* runPage)
    : window(mainWindow), editor(editorPage), run(runPage), editorKeys(editorPage), pageKeys(mainWindow),
      runKeys(mainWindow)
{
    const auto always = [] { return QString(); };
    acts.SetPlace([this] { return FindPlace(); });
    acts.Bind(KeyAct::ShowPalette, always, [this] { ShowPalette(); });
    acts.Bind(KeyAct::ShowGuide, always, [this] { emit SigGuide(); });
    acts.Bind(KeyAct::ShowKeys, always, [this] { ShowKeys(); });
    editorKeys.BindTo(&acts);
    pageKeys.BindTo(&acts);
    runKeys.BindTo(&acts);
    new KeyFilter(window, &acts); // the window owns it
}

KeyPlace Keyboard::FindPlace() const
{
    const QWidget* const page = window->CurrentPage();
    if (page == editor)
        return KeyPlace::Editor;
    if (page == run)
        return KeyPlace::Run;
    const bool list = page && page->findChild<QWidget*>(QStringLiteral("tabMine"));
    return list ? KeyPlace::Lists : KeyPlace::Other;
}

void Keyboard::ShowPalette() const
{
    auto entries = ActEntries::Of(acts, *window->CurrentPage(), true);
    std::stable_sort(entries.begin(), entries.end(), [](const ActEntry& left, const ActEntry& right) {
        return left.reason.isEmpty() && !right.reason.isEmpty();
    });
    auto* palette = new ActPalette(entries, window);
    palette->setAttribute(Qt::WA_DeleteOnClose);
    // Later, when the focus is back where it was.
    connect(
        palette, &ActPalette::SigChosen, window, [entries](int entry) { entries.at(entry).deed(); },
        Qt::QueuedConnection);
    palette->open();
}

void Keyboard::ShowKeys() const
{
    auto* dialog = new KeysDialog(ActEntries::Of(acts, *window->CurrentPage(), false), window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}
