// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBrowserLite/IBrowserEngine.h>

#include <QMap>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QUrl>

class QWebEnginePage;

// Keeps the book of what a process asked the browser and has not been answered.
class BrowserDriver : public QObject, public IBrowserEngine
{
    Q_OBJECT

public:
    explicit BrowserDriver(QObject* parent);
    ~BrowserDriver() override;

    void Open(const QString& url, const Answer& answer) override;
    void RunScript(const QString& script, const Answer& answer) override;

    // The page that scripts run in from now on.
    void SetPage(QWebEnginePage* shown);
    // The page is about to go; what was asked of it is refused with the reason.
    void DropPage(const QString& reason);

    // The page that Open() asked for has loaded, or not.
    void AnswerOpen(bool ok, const QString& reason);

    // What was asked of the page is refused: it will not answer any more.
    void RefuseAll(const QString& reason);

signals:
    void SigOpen(const QUrl& url);

private:
    struct Script
    {
        QString text;
        Answer answer;
        bool sent = false;
    };

    void SlotLoadStarted();
    void SlotLoadFinished();
    void SendWaiting();
    void Send(int id);
    void TakeResult(int id, const QVariant& result);
    void AnswerScript(int id, bool ok, const QVariant& value);

    QPointer<QWebEnginePage> page;
    Answer opening;
    QTimer openDeadline;
    QMap<int, Script> scripts; // in the order they were asked
    QTimer patience;           // with a page that loads without end
    bool loading = false;
    int lastId = 0;
};
