// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProblems/RpaProblem.h>
#include <RpaProcessData/RpaCheckInfo.h>

#include <QWidget>

#include <memory>

class RpaAppData;

// Lists the problems of an app while it is edited, with their counts beside the title. A double click or Enter
// goes to one. What the author puts aside, with a reason, is left out until all are asked for. What a check
// before a run found stands alone until it is mended or the author asks for everything. The list is folded at
// first: the title and the counts stay. GUI thread only.
class RPAPROBLEMS_EXPORT RpaProblemPane : public QWidget
{
    Q_OBJECT

public:
    explicit RpaProblemPane(QWidget* parent = nullptr);
    ~RpaProblemPane() override;

    // Looks at another app; null at none. An app that goes away is let go of.
    void SetApp(RpaAppData* app);
    RpaAppData* GetApp() const;

    // Lists what the check before a run, or a run, found, and nothing else; an empty list takes that back.
    // Findings of another app are passed over.
    void ShowRun(const QList<RpaCheckInfo>& findings);

    // Opens the list, or leaves the title alone.
    void SetOpen(bool open);

signals:
    // The author wants to see its place.
    void SigProblemChosen(const RpaProblem& problem);
    // The author wants its fix (RpaProblem::fix, never None) to be made.
    void SigFixAsked(const RpaProblem& problem);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
