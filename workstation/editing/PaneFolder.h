// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>

class QAbstractButton;
class QWidget;

// Folds the editor's browser pane while the editor is narrow, and unfolds it when there is room again. What
// the author folds or unfolds stays as the author wants it.
class PaneFolder : public QObject
{
    Q_OBJECT

public:
    // The editor owns it.
    explicit PaneFolder(QWidget* shownEditor);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Arrange(int width);
    // The buttons that do it; null where there is no browser, or it is folded already, or popped out.
    QAbstractButton* FoldButton() const;
    QAbstractButton* UnfoldButton() const;

    QWidget* const editor;
    bool narrow = false;
    bool folded = false; // by this, and not touched since
    bool working = false;
};
