// SPDX-License-Identifier: Apache-2.0

#include "HandleFixture.h"

#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaEditorLogic/SaveLedger.h>

#include <QtTest>

void HandleFixture::init()
{
    service = std::make_unique<VersionServiceFixture>();
    handle = std::make_unique<RpaAppEditorHandle>(nullptr);
}

void HandleFixture::cleanup()
{
    handle.reset();
    // Nothing of this test may be answered in the next one.
    QTRY_VERIFY(!RpaEditorLogic::Instance()->GetSaveLedger()->HasSavesInFlight());
    service.reset();
}
