// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProblems/RpaProblem.h>
#include <RpaProcessData/RpaCheckInfo.h>

#include <QObject>

class RpaAppData;
class RpaProblemPane;

// What the pane of the problems has to do with the editor above it: it looks at the app that the editor shows,
// hears what stops its runs, and the author goes from it to a problem and mends it.
class ProblemDesk : public QObject
{
    Q_OBJECT

public:
    // The pane owns it.
    explicit ProblemDesk(RpaProblemPane* pane);

    // The editor that stands above the pane from now on; null for none.
    void SetEditor(QWidget* editor);

private:
    void SlotShown(RpaAppData* app);
    void SlotCheckNode(const QList<RpaCheckInfo>& findings);
    void SlotChosen(const RpaProblem& problem);
    void SlotFixAsked(const RpaProblem& problem);
    void PickPage(const char* button) const;
    void ShowUIPage(const QString& name) const;
    void ShowPackages() const;

    RpaProblemPane* const pane;
    QWidget* editor = nullptr;
};
