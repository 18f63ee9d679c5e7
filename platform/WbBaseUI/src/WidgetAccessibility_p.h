#pragma once

// Tells assistive programs what the library's self-painted widgets are. May be called again and again.
void InstallWidgetAccessibility();
