// SPDX-License-Identifier: Apache-2.0

#include "PaletteFolder_p.h"

#include <OxBase/DpiTool.h>

#include <QAction>
#include <QResizeEvent>
#include <QWidget>

namespace
{
// Statements and properties are what the author reads; the commands are found by a key, too.
constexpr int roomyWidth = 780;
} // namespace

PaletteFolder::PaletteFolder(QWidget* shownEditor, QWidget* commandPalette, QAction* toggleAction)
    : QObject(shownEditor), editor(shownEditor), palette(commandPalette), toggle(toggleAction)
{
    toggle->setCheckable(true);
    editor->installEventFilter(this);
    connect(toggle, &QAction::triggered, this, &PaletteFolder::Toggle);
    Apply();
}

bool PaletteFolder::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize) {
        const int width = static_cast<QResizeEvent*>(event)->size().width();
        const bool isNarrow = width < DpiTool::ScaleDefault(roomyWidth);
        if (isNarrow != narrow) {
            narrow = isNarrow;
            wantedNarrow = false;
            Apply();
        }
    }
    return QObject::eventFilter(watched, event);
}

void PaletteFolder::Toggle()
{
    bool& wanted = narrow ? wantedNarrow : wantedWide;
    wanted = !wanted;
    Apply();
}

void PaletteFolder::Apply()
{
    const bool shown = narrow ? wantedNarrow : wantedWide;
    palette->setVisible(shown);
    toggle->setChecked(shown);
}
