// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RecordPanel_p.h"

#include <RpaAppData/RpaAppData.h>

#include <QObject>
#include <QPointer>

// What the three editor panels have in common: the record panel that fills them, and the app that is marked
// modified by whatever changes the data shown, in the panel or in the page view.
class PanelFrame : public QObject
{
    Q_OBJECT

public:
    PanelFrame(QWidget* owner, const QString& title, const QString& recordName, const QString& emptyHint);

    RecordPanel& GetPanel() { return *panel; }
    const RecordPanel& GetPanel() const { return *panel; }
    QUndoStack& GetUndoStack() { return panel->GetUndoStack(); }
    void SetModel(RecordModel* model) { panel->SetModel(model); }

    void SetAppData(const RpaAppDataPtr& app);

    template <typename Data>
    void Follow(Data* data)
    {
        if (followed)
            disconnect(followed, nullptr, this, nullptr);
        followed = data;
        if (data)
            connect(data, &Data::SigChanged, this, &PanelFrame::TakeChange);
        UpdateShown();
    }

    // The part of the page view that shows the same data; it is there only while there is something to show.
    void SetShown(QWidget* widget);

private:
    void TakeChange();
    void UpdateShown();

    RecordPanel* panel; // owned by the owner
    RpaAppDataPtr appData;
    QPointer<QObject> followed;
    QPointer<QWidget> shown;
};
