// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "EditorDriver.h"
#include "EditorWorld.h"

#include <QObject>

// Tests of an editor in its world; each with a new app of the author's.
class EditorFixture : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

protected:
    // Opens the app and waits until this version, which the editor chooses by itself, is shown.
    void Open(EditorDriver& author, const QString& version);

    EditorWorld world;
    RobotExecuteInfo app;
};
