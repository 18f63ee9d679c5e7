// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbHttpModule/WbHttpAnswer.h>
#include <WbHttpModule/WbHttpRequest.h>

// The heavy work on bodies. Pure functions; called away from the GUI thread.

struct PreparedBody
{
    QByteArray bytes;
    QByteArray digest; // SHA-256, empty when none was wanted
    QString problem;   // why it must not be sent, in Chinese; empty when it may
};

PreparedBody PrepareBody(const WbHttpRequest& request);

QByteArray DigestHeaderValue(const QByteArray& sha256);

// Holds a complete answer against what its request expects; gives it an error (and takes its body) when it
// falls short.
void VerifyAnswer(const WbHttpExpectation& expectation, WbHttpAnswer* answer);
