// SPDX-License-Identifier: Apache-2.0

#include "TemplateKeeper.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaContentReference.h>

#include <chrono>
#include <utility>

namespace
{
// A file that is being written changes several times.
constexpr auto settleTime = std::chrono::milliseconds(300);
// Longer than a look takes, unless a folder lies on a server that does not answer.
constexpr auto patienceTime = std::chrono::seconds(5);
} // namespace

TemplateKeeper::TemplateKeeper(const QStringList& places, const QString& data, QObject* parent)
    : QObject(parent), folders(places), shelf(data)
{
    settle.setSingleShot(true);
    patience.setSingleShot(true);
    worker.setMaxThreadCount(1);
    connect(&watcher, &QFileSystemWatcher::directoryChanged, this, [this] { settle.start(settleTime); });
    connect(&settle, &QTimer::timeout, this, &TemplateKeeper::Look);
    connect(&patience, &QTimer::timeout, this, [this] {
        emit SigProblem(QStringLiteral("模板还没有读完，这次可能没有列全，请稍后再打开"));
        CallWaiting();
    });
    RpaContentReference::SetFetch([this](const QByteArray& key) { return Fetch(key); });
}

TemplateKeeper::~TemplateKeeper()
{
    RpaContentReference::SetFetch({});
    worker.waitForDone();
}

void TemplateKeeper::Look()
{
    for (const QString& folder : folders)
        if (!watcher.directories().contains(folder))
            watcher.addPath(folder);
    ++looksUnderWay;
    worker.start([this, elsewhere = others] {
        QHash<QString, QString> fit;
        QStringList problems;
        for (const QString& folder : folders)
            fit.insert(folder, shelf.Prepare(folder, elsewhere.value(folder), &problems));
        QMetaObject::invokeMethod(this, [this, fit, problems] { Done(fit, problems); });
    });
}

void TemplateKeeper::LookThen(const Looked& looked)
{
    waiting = looked;
    patience.start(patienceTime);
    Look();
}

void TemplateKeeper::Done(const QHash<QString, QString>& fit, const QStringList& problems)
{
    fitFolders = fit;
    for (const QString& problem : problems)
        emit SigProblem(problem);
    emit SigLooked();
    if (--looksUnderWay == 0)
        CallWaiting();
}

void TemplateKeeper::CallWaiting()
{
    patience.stop();
    if (const Looked looked = std::exchange(waiting, nullptr))
        looked();
}

// The editor does not ask whether a template could be read, and would show an app without pages.
QByteArray TemplateKeeper::Fetch(const QByteArray& key)
{
    QByteArray content = shelf.ReadContent(key);
    if (!content.isEmpty())
        return content;
    emit SigContentLost();
    RpaAppData start;
    start.InitDefault();
    return start.ToJson();
}
