// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbHttpModule/WbHttpAnswer.h>

// The author's words for an error.
QString TransportText(WbHttpError error);

// An answer without anything but an error.
WbHttpAnswer FailedAnswer(WbHttpError error);
