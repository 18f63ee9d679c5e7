// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QUrl>

// Which addresses the embedded browser opens.
namespace BrowserAddress
{
// The address for what the user typed: a host without a scheme gets one. Invalid when it is no address.
QUrl FromTyped(const QString& text);

// http and https with a host; everything else stays out of the editor's process and files.
bool MayOpen(const QUrl& url);

// Why an address is not opened, for the author.
QString Refusal(const QString& address);
} // namespace BrowserAddress
