// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QString>

#include <functional>

// An app that is being exported or imported, step by step. Ends exactly once, unless it is destroyed before.
class AppTransfer : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual void Start() = 0;
    // Nothing of it stays; SigEnded follows.
    virtual void Cancel() = 0;

signals:
    void SigProgress(int done, int total);
    // problem: in the user's words, empty when all is done. appId: of the imported app.
    void SigEnded(const QString& problem, const QString& appId);
};
