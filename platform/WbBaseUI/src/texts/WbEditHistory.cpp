// SPDX-License-Identifier: Apache-2.0

#include <WbBaseUI/WbEditHistory.h>

#include <QScopedValueRollback>
#include <QTextDocument>
#include <QUndoStack>

#include <memory>

namespace
{
// More than anybody takes back; what is older is still within reach of its own place.
constexpr int mostSteps = 1000;
} // namespace

WbEditHistory* WbEditHistory::Instance()
{
    static auto* const history = new WbEditHistory; // as long as the process
    return history;
}

int WbEditHistory::Add(QObject* steps, const Source& source)
{
    int number = 0;
    while (number < sources.size() && sources.at(number).steps)
        ++number;
    if (number == sources.size())
        sources.append(Source());
    // The number was another's, whose steps are gone.
    undone.removeAll(number);
    redone.removeAll(number);
    sources[number] = source;
    sources[number].steps = steps;
    return number;
}

void WbEditHistory::Watch(QUndoStack* stack, QWidget* place)
{
    Source source;
    source.place = place;
    source.can = [stack](bool redo) { return redo ? stack->canRedo() : stack->canUndo(); };
    source.act = [stack](bool redo) { redo ? stack->redo() : stack->undo(); };
    const int number = Add(stack, source);
    const auto before = std::make_shared<int>(stack->index());
    connect(stack, &QUndoStack::indexChanged, this, [this, number, before](int index) {
        if (index > *before)
            NoteStep(number);
        else if (index == *before)
            NoteStepGoesOn(number);
        else
            NoteStepBack(number);
        *before = index;
    });
}

void WbEditHistory::Watch(QTextDocument* text, QWidget* place)
{
    Source source;
    source.place = place;
    source.can = [text](bool redo) { return redo ? text->isRedoAvailable() : text->isUndoAvailable(); };
    source.act = [text](bool redo) { redo ? text->redo() : text->undo(); };
    const int number = Add(text, source);
    connect(text, &QTextDocument::undoCommandAdded, this, [this, number] { NoteStep(number); });
}

void WbEditHistory::NoteStep(int source)
{
    if (stepping)
        return;
    undone.append(source);
    redone.clear();
    if (undone.size() > mostSteps)
        undone.removeFirst();
}

// What is typed one letter after another is one step of its place, and the newest of all.
void WbEditHistory::NoteStepGoesOn(int source)
{
    const int at = undone.lastIndexOf(source);
    if (stepping || at < 0)
        return;
    undone.remove(at);
    undone.append(source);
    redone.clear();
}

// A place took its last step back by itself.
void WbEditHistory::NoteStepBack(int source)
{
    const int at = undone.lastIndexOf(source);
    if (stepping || at < 0)
        return;
    undone.remove(at);
    redone.append(source);
}

// What a place has forgotten leads nowhere and is passed.
int WbEditHistory::Last(const Sources& order, bool redo) const
{
    for (int at = order.size() - 1; at >= 0; --at) {
        const Source& source = sources.at(order.at(at));
        if (source.steps && source.can(redo))
            return source.place && !source.place->isEnabled() ? -1 : at;
    }
    return -1;
}

QWidget* WbEditHistory::Step(Sources& from, Sources& to, bool redo)
{
    const int at = Last(from, redo);
    if (at < 0)
        return nullptr;
    from.resize(at + 1);
    const int number = from.takeLast();
    to.append(number);
    const QPointer<QWidget> place = sources.at(number).place;
    const auto act = sources.at(number).act;
    const QScopedValueRollback<bool> guard(stepping, true);
    act(redo);
    return place;
}

QWidget* WbEditHistory::Undo()
{
    return Step(undone, redone, false);
}

QWidget* WbEditHistory::Redo()
{
    return Step(redone, undone, true);
}
