// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProblems/RpaProblemFinder.h>

#include <QObject>

#include <functional>
#include <memory>

class RpaAppData;

// The problems of an app while it is edited: a short pause after an edit they are looked for on another thread,
// in a copy. An answer that is about an older state of the app is dropped. GUI thread only.
class RPAPROBLEMS_EXPORT RpaProblemWatch : public QObject
{
    Q_OBJECT

public:
    // Called on the other thread.
    using Find = std::function<QVector<RpaProblem>(const RpaAppCopy& app, const RpaProblemFinder::IsStale&)>;

    explicit RpaProblemWatch(QObject* parent = nullptr);
    RpaProblemWatch(const Find& find, QObject* parent);
    // Waits for a search that is under way; it ends early.
    ~RpaProblemWatch() override;

    // Looks at another app, at once; null at none. What was found in the former one is forgotten. An app that
    // goes away is let go of.
    void SetApp(RpaAppData* app);
    RpaAppData* GetApp() const;

    // What was found last, in whatever state the app was then.
    const QVector<RpaProblem>& Get() const;
    // Whether nothing was edited since.
    bool IsCurrent() const;

signals:
    // There is an answer about the app as it is now.
    void SigChanged();

private:
    void Attach();
    void Detach();
    void SlotGoing(RpaAppData* app);
    void SlotEdited();
    void SlotPaused();
    void Look();
    void Take(quint64 state, const QVector<RpaProblem>& problems);
    void LookAtProgram(const RpaAppCopy& copy);
    void ForgetProgram();
    void SlotProbed(const QVector<RpaProblem>& problems);
    void Publish();

    class Private;
    const std::unique_ptr<Private> d;
};
