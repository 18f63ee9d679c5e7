// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppDataExport.h>

#include <QByteArray>
#include <QString>

// Tells an author what of an app is larger than can be kept (WbFoundation/ContentLimits.h).
namespace RpaContentExcess
{
// The part that is too large, in the user's words ("界面“界面1”的参数“地址”超过 16 MB"), when the app's JSON
// could not be read back; empty when it can. Any thread; about 5 ms per MB, more when something is too large.
RPAAPPDATA_EXPORT QString Find(const QByteArray& json);
} // namespace RpaContentExcess
