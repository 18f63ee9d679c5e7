// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>

#include <functional>

class KeyActs;
class QAbstractButton;
class QKeyEvent;
struct KeyRow;

// Gives the keys of the table to its acts before any part of a page takes them for itself, and lets Enter
// press the button that has the focus. Dialogs, menus and waits keep their keys.
class KeyFilter : public QObject
{
    Q_OBJECT

public:
    // Works in `window` and in the windows that belong to it.
    KeyFilter(QWidget* window, const KeyActs* keyActs);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool IsOurs(const QWidget& widget) const;
    const KeyRow* RowOf(const QKeyEvent& event, const QWidget& widget) const;
    bool TakePress(const QKeyEvent& event, QWidget& widget);

    QWidget* const window;
    const KeyActs* const acts;
};
