// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QObject>
#include <QPointer>
#include <QVector>
#include <QWidget>

#include <functional>

class QTextDocument;
class QUndoStack;

// The steps of all editing places in the order in which they were done, so that a key can take the last one
// back wherever the focus is. Places that go away take their steps along. GUI thread only.
class WBBASEUI_EXPORT WbEditHistory : public QObject
{
    Q_OBJECT

public:
    // The one of the process.
    static WbEditHistory* Instance();

    // Follows the steps of a stack or of a text. place: where the user sees what they change.
    void Watch(QUndoStack* stack, QWidget* place);
    void Watch(QTextDocument* text, QWidget* place);

    // Also false while the place of that step is locked: a key must not change what the mouse cannot.
    bool CanUndo() const { return Last(undone, false) >= 0; }
    bool CanRedo() const { return Last(redone, true) >= 0; }

    // Takes the last step back, or does the step that was taken back last again. Returns its place, null when
    // there was none.
    QWidget* Undo();
    QWidget* Redo();

private:
    struct Source
    {
        QPointer<QObject> steps;
        QPointer<QWidget> place;
        std::function<bool(bool redo)> can;
        std::function<void(bool redo)> act;
    };
    using Sources = QVector<int>; // numbers of sources, a step each

    WbEditHistory() = default;

    int Add(QObject* steps, const Source& source);
    void NoteStep(int source);
    void NoteStepGoesOn(int source);
    void NoteStepBack(int source);
    int Last(const Sources& order, bool redo) const;
    QWidget* Step(Sources& from, Sources& to, bool redo);

    QVector<Source> sources;
    Sources undone; // what Undo() would take, the last one first
    Sources redone;
    bool stepping = false;
};
