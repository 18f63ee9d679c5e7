// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppData.h>
#include <RpaAppTool/RpaAppToolExport.h>

#include <QWidget>

class QUndoStack;
class RecordModel;

// What the editor panels of a UI page have in common: a list of records that the author adds, edits, moves and
// removes, and that folds to its title. Each act of the author can be undone and marks the app modified. GUI
// thread only.
class RPAAPPTOOL_EXPORT AppEditorPanel : public QWidget
{
    Q_OBJECT

public:
    // The app that edits belong to.
    void SetAppDataPtr(const RpaAppDataPtr& appData);

    // Whether the panel is folded to its title.
    bool IsShrink() const;

signals:
    // The author folded or unfolded the panel.
    void SigShrinkChanged();

protected:
    // recordName: what one record is called ("工具"). emptyHint: what to do first.
    AppEditorPanel(const QString& title, const QString& recordName, const QString& emptyHint,
                   QWidget* parent);

    // Null before there is one.
    RpaAppDataPtr GetAppData() const;
    // What the author did in this panel.
    QUndoStack& GetUndoStack() const;
    // Not owned; once.
    void SetModel(RecordModel* model);
    // The part of the page view that shows the same data; it is there only while there is something to show.
    // May be null.
    void SetShown(QWidget* widget);

private:
    class Private;
    Private* const d; // a child of this widget
};
