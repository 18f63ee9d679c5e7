// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/RpaEngineCoreExport.h>

#include <QString>
#include <QStringList>
#include <QVariant>

// Parameters of the active UI page as a running process sees them. GUI thread.
class RPAENGINECORE_EXPORT IAppParamEngine
{
public:
    virtual ~IAppParamEngine();

    // In the order of the page; groups, which have no value, are left out.
    virtual QStringList GetParamNames() const = 0;

    // Those whose values are passwords; a run types these into password fields only. None where it is not
    // overridden.
    virtual QStringList GetSecretParamNames() const;

    // Invalid when there is no such parameter.
    virtual QVariant GetParam(const QString& name) const = 0;

    // False when there is no such parameter or the value does not fit it.
    virtual bool SetParam(const QString& name, const QVariant& value) = 0;

    // Before a run: why it may not start with the values that there are, in the user's words, who is shown
    // where to enter what is missing. Empty when it may, and where it is not overridden.
    virtual QString DemandValues();
};
