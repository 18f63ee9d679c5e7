// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "Handed_p.h"

#include <RpaEngineCore/IAppParamEngine.h>
#include <RpaEngineCore/IAppTableEngine.h>
#include <RpaProcessData/RpaHtmlNodeManager.h>
#include <WbBrowserLite/IBrowserEngine.h>

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QVariantList>

#include <functional>

class RpaRun;
class RpaRunDialog;

// What a run may reach in the editor; any of it may be missing, or go away during the run.
struct RpaRunParts
{
    Handed<IBrowserEngine> browser;
    Handed<IAppParamEngine> params;
    Handed<IAppTableEngine> table;
    Handed<RpaHtmlNodeManager> htmlNodes;
    QString appId;
    QString environment;
    QStringList packageFolders; // searched for modules before Python's own
};

// Carries out the calls of a running program: page parameters, the page's table, dialogs, the browser and
// captured elements. Arguments come from the child and are checked like any foreign data.
class RpaRunCalls : public QObject
{
    Q_OBJECT

public:
    RpaRunCalls(RpaRun& run, const RpaRunParts& parts, QObject* parent = nullptr);
    ~RpaRunCalls() override;

    void Take(qint64 callId, const QString& name, const QVariantList& arguments);

private:
    // A value to answer with, or a reason to refuse.
    struct Result
    {
        QVariant value;
        QString refusal;
    };
    using Call = std::function<Result(const QVariantList&)>;
    // Answers later by itself.
    using LateCall = std::function<void(qint64 callId, const QVariantList&)>;

    void AddParamCalls();
    void AddTableCalls();
    void AddElementCalls();
    void AddBrowserCalls();
    void AddDialogCalls();
    void ShowDialog(qint64 callId, RpaRunDialog* dialog);
    static Result Refused(const QString& reason) { return {{}, reason}; }

    RpaRun& run;
    const RpaRunParts parts;
    QHash<QString, Call> calls;
    QHash<QString, LateCall> lateCalls;
    QPointer<RpaRunDialog> dialog;
};
