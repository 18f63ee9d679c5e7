// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>

class QAction;
class QWidget;

// Hides the list of commands while the editor is narrow, and shows it when there is room again. The action
// opens and closes it, and what the author closed in a wide editor stays closed there.
class PaletteFolder : public QObject
{
    Q_OBJECT

public:
    // The editor owns it.
    PaletteFolder(QWidget* shownEditor, QWidget* commandPalette, QAction* toggleAction);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Toggle();
    void Apply();

    QWidget* const editor;
    QWidget* const palette;
    QAction* const toggle;
    bool narrow = false;
    bool wantedWide = true;
    bool wantedNarrow = false; // until there is room again
};
