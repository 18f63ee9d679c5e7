// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/RpaRunFailure.h>
#include <RpaEngineCore/RpaRunSpan.h>

#include <QByteArray>
#include <QMetaType>

// What is kept of a run beside its record and its log. Values of passwords are struck out.
struct RpaRunDetails
{
    RpaRunSpans spans;     // the newest 100,000, in their order; those before them as sums
    RpaRunFailure failure; // empty when it did not fail, or could not tell
    QByteArray picture;    // of the browser when it failed, PNG; empty: there was none
};

Q_DECLARE_METATYPE(RpaRunDetails)
