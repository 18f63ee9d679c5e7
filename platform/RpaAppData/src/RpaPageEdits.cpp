// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaPageEdits.h>
#include <RpaAppData/RpaSavedState.h>
#include <RpaAppData/RpaUIDataManager.h>

#include <QCryptographicHash>

namespace
{
constexpr int pauseMs = 200; // many pages are written for nothing while somebody types
}

RpaPageEdits* RpaPageEdits::Of(RpaAppData* app)
{
    auto* edits = app->findChild<RpaPageEdits*>(QString(), Qt::FindDirectChildrenOnly);
    return edits ? edits : new RpaPageEdits(app); // the app data owns it
}

RpaPageEdits::RpaPageEdits(RpaAppData* appData)
    : QObject(appData), app(appData), savedState(RpaSavedState::Of(appData))
{
    pause.setSingleShot(true);
    pause.setInterval(pauseMs);
    connect(&pause, &QTimer::timeout, this, &RpaPageEdits::Compare);
    connect(savedState, &RpaSavedState::SigSaved, this, &RpaPageEdits::Remember);
    if (!app->GetModified())
        Remember();
}

void RpaPageEdits::Edited()
{
    savedState->Edited(this);
    pause.start();
}

QByteArray RpaPageEdits::Digest() const
{
    return QCryptographicHash::hash(app->GetUIDataManager()->ToJson(), QCryptographicHash::Sha256);
}

void RpaPageEdits::Remember()
{
    pause.stop();
    saved = Digest();
}

void RpaPageEdits::Compare()
{
    if (Digest() == saved)
        savedState->TakenBack(this);
}
