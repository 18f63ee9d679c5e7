// SPDX-License-Identifier: Apache-2.0

#include "ProgramProbe_p.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppDataNotify.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaProblems/RpaProblemWatch.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaHtmlNodeManager.h>
#include <RpaProcessData/RpaUiaNodeManager.h>

#include <QRunnable>
#include <QThreadPool>
#include <QTimer>

#include <atomic>

namespace
{
constexpr int watchPauseMs = 150; // leaves as much again for the search itself

// QThreadPool takes functions only from a later Qt on.
class Search : public QRunnable
{
public:
    explicit Search(const std::function<void()>& searchWork) : work(searchWork) {}
    void run() override { work(); }

private:
    const std::function<void()> work;
};
} // namespace

class RpaProblemWatch::Private
{
public:
    explicit Private(const Find& search) : find(search) { pool.setMaxThreadCount(1); }

    const Find find;
    RpaAppData* app = nullptr;
    QVector<RpaProblem> problems;
    QTimer pause;
    std::atomic<quint64> state{0}; // counts the edits; read by the search
    quint64 answered = 0;
    bool looking = false; // a search is under way
    bool waiting = false; // another one begins when it has ended
    ProgramProbe probe;
    QString probedText;
    QVector<RpaProblem> inApp;  // of the search
    QVector<RpaProblem> inText; // of the probe
    quint64 searched = 0;
    bool probing = false; // an answer about probedText is to come
    QThreadPool pool;     // goes first, with its search
};

RpaProblemWatch::RpaProblemWatch(QObject* parent) : RpaProblemWatch(RpaProblemFinder::Find, parent) {}

RpaProblemWatch::RpaProblemWatch(const Find& find, QObject* parent)
    : QObject(parent), d(std::make_unique<Private>(find))
{
    RpaCommandCatalogue::Instance(); // read on this thread
    d->pause.setSingleShot(true);
    d->pause.setInterval(watchPauseMs);
    connect(RpaAppDataNotify::Instance(), &RpaAppDataNotify::SigGoing, this, &RpaProblemWatch::SlotGoing);
    connect(&d->pause, &QTimer::timeout, this, &RpaProblemWatch::SlotPaused);
    connect(&d->probe, &ProgramProbe::SigAnswered, this, &RpaProblemWatch::SlotProbed);
}

RpaProblemWatch::~RpaProblemWatch()
{
    ++d->state;
    d->pool.waitForDone();
}

void RpaProblemWatch::SetApp(RpaAppData* app)
{
    if (d->app == app)
        return;
    Detach();
    d->app = app;
    d->problems.clear();
    ForgetProgram();
    SlotEdited();
    d->pause.stop();
    if (app) {
        Attach();
        SlotPaused();
        return;
    }
    d->answered = d->state;
    emit SigChanged();
}

RpaAppData* RpaProblemWatch::GetApp() const
{
    return d->app;
}

void RpaProblemWatch::Attach()
{
    connect(d->app, &RpaAppData::SigEdited, this, &RpaProblemWatch::SlotEdited);
    connect(d->app, &RpaAppData::SigReplaced, this, &RpaProblemWatch::SlotEdited);
    connect(d->app->GetProcessDataManager(), &ProcessDataManager::SigChanged, this,
            &RpaProblemWatch::SlotEdited);
    connect(d->app->GetUIDataManager(), &RpaUIDataManager::SigChanged, this, &RpaProblemWatch::SlotEdited);
    for (const RpaNodeManager* nodes : {static_cast<RpaNodeManager*>(d->app->GetHtmlNodeManager()),
                                        static_cast<RpaNodeManager*>(d->app->GetUiaNodeManager())})
        connect(nodes, &RpaNodeManager::SigChanged, this, &RpaProblemWatch::SlotEdited);
}

void RpaProblemWatch::Detach()
{
    if (!d->app)
        return;
    for (QObject* part : QObjectList{d->app, d->app->GetProcessDataManager(), d->app->GetUIDataManager(),
                                     d->app->GetHtmlNodeManager(), d->app->GetUiaNodeManager()})
        part->disconnect(this);
}

// It can still be read, and not much longer.
void RpaProblemWatch::SlotGoing(RpaAppData* app)
{
    if (app == d->app)
        SetApp(nullptr);
}

const QVector<RpaProblem>& RpaProblemWatch::Get() const
{
    return d->problems;
}

bool RpaProblemWatch::IsCurrent() const
{
    return d->answered == d->state;
}

void RpaProblemWatch::SlotEdited()
{
    ++d->state; // the search that is under way sees it and ends
    d->pause.start();
}

void RpaProblemWatch::SlotPaused()
{
    if (d->looking)
        d->waiting = true;
    else
        Look();
}

void RpaProblemWatch::Look()
{
    d->waiting = false;
    if (!d->app)
        return;
    d->looking = true;
    const quint64 asked = d->state;
    const RpaAppCopy copy = RpaAppCopy::Of(*d->app);
    LookAtProgram(copy);
    d->pool.start(new Search([this, asked, copy] { // the pool takes it
        const QVector<RpaProblem> problems = d->find(copy, [this, asked] { return d->state != asked; });
        QMetaObject::invokeMethod(
            this, [this, asked, problems] { Take(asked, problems); }, Qt::QueuedConnection);
    }));
}

void RpaProblemWatch::Take(quint64 state, const QVector<RpaProblem>& problems)
{
    d->looking = false;
    d->searched = state;
    d->inApp = problems;
    Publish();
    if (d->waiting)
        Look();
}

// The child is asked only when the text is another one: a second is long for it.
void RpaProblemWatch::LookAtProgram(const RpaAppCopy& copy)
{
    const RpaAppCopy::Process main = copy.processes.value(0);
    if (!copy.isProgram || main.programText.isEmpty()) {
        ForgetProgram();
    } else if (main.programText != d->probedText) {
        d->probedText = main.programText;
        d->probing = true;
        d->probe.Ask(main.programText, main.name);
    }
}

void RpaProblemWatch::ForgetProgram()
{
    d->probe.GiveUp();
    d->probing = false;
    d->probedText.clear();
    d->inText.clear();
}

void RpaProblemWatch::SlotProbed(const QVector<RpaProblem>& problems)
{
    d->probing = false;
    d->inText = problems;
    Publish();
}

// Both parts together, or a part of the list would come and go with each letter.
void RpaProblemWatch::Publish()
{
    if (d->probing || d->searched != d->state)
        return;
    d->answered = d->state;
    d->problems = d->inText + d->inApp;
    emit SigChanged();
}
