// SPDX-License-Identifier: Apache-2.0

#include "BlockedInput_p.h"

#include <OxBase/OxBlocker.h>

#include <QEventLoop>
#include <QPointer>
#include <QTimer>

#include <chrono>

using namespace std::chrono_literals;

namespace
{
constexpr auto pollInterval = 50ms;

int waiting = 0;

OxBlocker::OutstandingQuery& Query()
{
    static OxBlocker::OutstandingQuery query;
    return query;
}

// Ends a loop when nothing is outstanding twice in a row: an answer is taken off the list of outstanding
// requests before the signal that ends the wait has passed through the event queue.
class OutstandingWatch
{
public:
    explicit OutstandingWatch(QEventLoop& watchedLoop) : loop(watchedLoop)
    {
        QObject::connect(&timer, &QTimer::timeout, &loop, [this] { Look(); });
        timer.start(pollInterval);
    }

private:
    void Look()
    {
        if (!Query() || Query()()) {
            idleLooks = 0;
            return;
        }
        if (++idleLooks == 2)
            loop.quit();
    }

    QEventLoop& loop;
    QTimer timer;
    int idleLooks = 0;
};
} // namespace

class OxBlocker::Private
{
public:
    void End(const QVariant& value);

    QEventLoop* loop = nullptr; // on the stack of Block(), while it runs
    bool continued = false;     // Continue() came before Block()
    QVariant result;
};

void OxBlocker::Private::End(const QVariant& value)
{
    // The first end counts: a later one while the loop unwinds must not change the value.
    if (loop && !loop->isRunning())
        return;
    result = value;
    if (loop)
        loop->quit();
    else
        continued = true;
}

OxBlocker::OxBlocker(QObject* parent) : QObject(parent), d(std::make_unique<Private>()) {}

OxBlocker::~OxBlocker()
{
    if (d->loop)
        d->loop->quit();
}

void OxBlocker::Block(int milliseconds)
{
    if (d->loop)
        return;
    if (d->continued) {
        d->continued = false;
        return;
    }
    d->result = QVariant();

    // Whoever runs inside the nested loop may destroy this object.
    const QPointer<OxBlocker> self(this);
    QEventLoop loop;
    d->loop = &loop;
    ++waiting;
    {
        const BlockedInput heldBack;
        if (milliseconds > 0) {
            QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
            loop.exec();
        } else {
            const OutstandingWatch watch(loop);
            loop.exec();
        }
    }
    --waiting;
    if (self)
        d->loop = nullptr;
}

QVariant OxBlocker::GetResult() const
{
    return d->result;
}

bool OxBlocker::IsBlocking()
{
    return waiting > 0;
}

void OxBlocker::SetOutstandingQuery(OutstandingQuery query)
{
    Query() = std::move(query);
}

void OxBlocker::Continue()
{
    d->End(QVariant());
}

void OxBlocker::ContinueWith(const QVariant& value)
{
    d->End(value);
}
