// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RpaAppEditorHandle.h"
#include "VersionServiceFixture.h"

#include <QObject>

#include <memory>

// Each test has a handle of its own in front of a scripted server.
class HandleFixture : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

protected:
    std::unique_ptr<VersionServiceFixture> service;
    std::unique_ptr<RpaAppEditorHandle> handle;
};
