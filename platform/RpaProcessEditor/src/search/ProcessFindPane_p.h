// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "PlaceList_p.h"
#include "ProcessEdits_p.h"
#include "ui_ReplaceRow.h"

#include <RpaProcessData/RpaProcessSearch.h>
#include <WbBaseUI/WbFindBar.h>

#include <QPointer>
#include <QTimer>

class QCheckBox;

// Finds a text in all processes of the app and lists the places; replaces it in those that the author chose or
// in all, in one step. Follows what is edited while it is open.
class ProcessFindPane : public WbFindBar
{
    Q_OBJECT

public:
    explicit ProcessFindPane(QWidget* parent = nullptr);

    // Null when no app is shown.
    void SetEdits(ProcessEdits* processEdits);
    void OpenToFind() { OpenWith(false); }
    void OpenToReplace() { OpenWith(true); }

signals:
    // A place became the current one; the author wants to go there.
    void SigPlaceShown(const QString& processName, const QString& statementId);
    void SigPlaceChosen(const QString& processName, const QString& statementId);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QCheckBox* AddBox(const QString& name, const QString& text, bool checked);
    void OpenWith(bool replacing);
    void BuildList();
    RpaProcessSearch Search() const;
    void Find();
    void ShowPlaces();
    QString After(const RpaSearchPlace& place) const;
    void UpdateButtons();
    void Replace(const QVector<RpaSearchPlace>& chosen);
    void ReplaceChosen();
    void ReplaceAll() { Replace(places); }

    QPointer<ProcessEdits> edits;
    QTimer looking; // until what goes on is over
    QCheckBox* const caseBox;
    QCheckBox* const wordBox;
    QCheckBox* const namesBox;
    QCheckBox* const textsBox;
    QCheckBox* const notesBox;
    QWidget* const replaceRow;
    PlaceList* const list;
    Ui::ReplaceRow replace;
    QVector<RpaSearchPlace> places;
};
