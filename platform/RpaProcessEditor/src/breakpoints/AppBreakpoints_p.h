// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppData.h>
#include <RpaEngineModule/RpaDebugTypes.h>

#include <QObject>
#include <QPointer>
#include <QTimer>

// The breakpoints of one app. They are the author's own and kept on this machine (BreakpointFile); the app is
// not changed by them. Flags that its statements came with are taken over when nothing is kept yet.
class AppBreakpoints : public QObject
{
    Q_OBJECT

public:
    // The one of the app, as long as somebody holds it; null for null.
    static QSharedPointer<AppBreakpoints> Of(const RpaAppDataPtr& app);
    ~AppBreakpoints() override;

    // Those of statements and processes that are there, in the order of the app, their places up to date.
    QVector<RpaBreakpoint> Get() const;
    // Null when there is none.
    const RpaBreakpoint* Find(const RpaDebugPlace& place) const;

    void Toggle(const RpaDebugPlace& place);
    // Adds it, or replaces the one at its place.
    void Put(const RpaBreakpoint& breakpoint);
    void Remove(const RpaDebugPlace& place);
    void SetEnabled(const RpaDebugPlace& place, bool enabled);
    void Clear();

    // The text changed: by > 0 lines came before the line first, or -by lines from it on went.
    void MoveLines(const QString& processName, int first, int by);

    RpaAppData* App() const { return app; }

signals:
    // Another breakpoint, or another place of one.
    void SigChanged();

private:
    explicit AppBreakpoints(RpaAppData* appData);
    void Load();
    void TakeFlags();
    void Store();
    void Look();
    int IndexOf(const RpaDebugPlace& place) const;
    QString AppId() const;

    const QPointer<RpaAppData> app;
    QVector<RpaBreakpoint> points;
    QVector<RpaDebugPlace> shown; // where those of Get() were when it was told last
    QTimer looking;
};
