// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppDataExport.h>

#include <QByteArray>

#include <functional>

// Content of an app that is read when it is wanted: a short JSON text that RpaAppData::Parse() takes for the
// content itself. It is good for this process only; whoever writes such a text elsewhere cannot guess one,
// and no app is ever saved as one. GUI thread only.
namespace RpaContentReference
{
// The content of a key, as JSON.
using Fetch = std::function<QByteArray(const QByteArray& key)>;

// The key: ASCII letters, digits and hyphens. Any thread.
RPAAPPDATA_EXPORT QByteArray Make(const QByteArray& key);

// Who knows the contents; an empty function: nobody, and Parse() of a reference fails.
RPAAPPDATA_EXPORT void SetFetch(const Fetch& fetch);
} // namespace RpaContentReference
