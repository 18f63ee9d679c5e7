// SPDX-License-Identifier: Apache-2.0

#include "EditorFixture.h"

#include <RpaEditorManager/RpaAppEditorWidget.h>

#include <QTest>

void EditorFixture::initTestCase()
{
    world.Start();
}

void EditorFixture::init()
{
    world.SignIn();
    app = world.CreateApp();
}

void EditorFixture::Open(EditorDriver& author, const QString& version)
{
    author.GetEditor()->SetExecuteInfo(app);
    QTRY_COMPARE(author.GetSelectedVersion(), version);
}
