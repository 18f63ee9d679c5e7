// SPDX-License-Identifier: Apache-2.0

#pragma once

// Tells assistive programs what the library's self-painted widgets are. May be called again and again.
void InstallWidgetAccessibility();
