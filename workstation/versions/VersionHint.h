// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DateLanguage.h"

#include <QEvent>
#include <QFrame>
#include <QPointer>

class QAbstractItemView;
class QComboBox;
class QLineEdit;
class QModelIndex;
class VersionController;
class VersionDetails;
class WbLabel;

// The details of the version under the mouse or the keyboard, beside the open list of versions; of the
// current one below the closed list. It takes neither clicks nor keys.
class VersionHint : public QFrame
{
    Q_OBJECT

public:
    // combo: the editor's list of versions; the hint goes with it.
    VersionHint(QComboBox* combo, VersionController* versionController, DateLanguage language);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Null once they go.
    QComboBox* Versions() const;
    QAbstractItemView* View() const;
    QLineEdit* Name() const;
    bool IsGoing() const { return !Versions() || !View() || !Name(); }

    void ShowRow(const QModelIndex& index);
    bool ShowCurrent();
    void FollowList(const QWidget& widget, QEvent::Type what);
    void Update();
    void FitSize();
    void Place();
    // What it stands beside: the open list, or the closed box.
    QRect Beside() const;

    // While they are destroyed they are widgets and no more, and still send events.
    const QPointer<QWidget> box;
    const QPointer<QWidget> list;
    const QPointer<QWidget> field;
    VersionController* const desk;
    const DateLanguage dateLanguage;
    VersionDetails* details;
    WbLabel* labelUsers = nullptr;
    int row = -1; // of the list; -1: the current version
};
