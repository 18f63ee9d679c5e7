// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaSavedState.h>

#include <QScopedValueRollback>

RpaSavedState* RpaSavedState::Of(RpaAppData* app)
{
    auto* state = app->findChild<RpaSavedState*>(QString(), Qt::FindDirectChildrenOnly);
    return state ? state : new RpaSavedState(app); // the app data owns it
}

RpaSavedState::RpaSavedState(RpaAppData* appData)
    : QObject(appData), app(appData), hasOtherEdits(appData->GetModified())
{
    connect(app, &RpaAppData::SigEdited, this, [this] { hasOtherEdits = hasOtherEdits || !isOwn; });
    connect(app, &RpaAppData::SigModifiedChanged, this, [this](bool isModified) {
        if (!isModified && !isOwn)
            Saved();
    });
    connect(app, &RpaAppData::SigReplaced, this, [this] {
        hasOtherEdits = app->GetModified();
        if (!hasOtherEdits)
            Saved();
    });
}

void RpaSavedState::Saved()
{
    hasOtherEdits = false;
    edited.clear();
    emit SigSaved();
}

void RpaSavedState::Edited(QObject* place)
{
    if (!edited.contains(place)) {
        edited.insert(place);
        connect(place, &QObject::destroyed, this, &RpaSavedState::Forget, Qt::UniqueConnection);
    }
    const QScopedValueRollback<bool> guard(isOwn, true);
    app->SetModified(true);
}

void RpaSavedState::TakenBack(QObject* place)
{
    if (!edited.remove(place) || !edited.isEmpty() || hasOtherEdits || !app->GetModified())
        return;
    const QScopedValueRollback<bool> guard(isOwn, true);
    app->TakeBack();
}

// With the place go the steps that could have taken its edits back.
void RpaSavedState::Forget(QObject* place)
{
    hasOtherEdits = edited.remove(place) || hasOtherEdits;
}
