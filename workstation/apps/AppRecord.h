// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaCore/RpaAppKind.h>
#include <RpaServiceClient/apps/VersionServiceApp.h>

#include <QMetaType>

// An app as the list shows it.
using AppRecord = VersionServiceApp;

Q_DECLARE_METATYPE(AppRecord)
