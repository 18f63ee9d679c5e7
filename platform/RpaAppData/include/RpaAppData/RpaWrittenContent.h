// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppDataExport.h>

#include <QString>

class RpaAppData;

// Whose content a text is. A request to save carries nothing but the text that an app data's ToJson() just
// gave; whoever must know what that content is based on (RpaAppData::GetOrigin) finds the app data here. GUI
// thread only.
namespace RpaWrittenContent
{
// The app data whose ToJson() gave exactly this text, when it was the last to be written in this turn of the
// event loop and still lives; else null.
RPAAPPDATA_EXPORT RpaAppData* FindWriter(const QString& json);
} // namespace RpaWrittenContent
