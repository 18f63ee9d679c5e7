// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QWebEngineScript>

// Script worlds of the editor. A page sees neither, and what a process leaves in the one does not reach the
// other.
namespace BrowserWorlds
{
constexpr quint32 process = QWebEngineScript::ApplicationWorld;
constexpr quint32 pointer = QWebEngineScript::UserWorld;
} // namespace BrowserWorlds
