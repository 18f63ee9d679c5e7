// SPDX-License-Identifier: Apache-2.0

#pragma once

class QWidget;

// Makes the style sheet read a widget's dynamic properties again.
void RefreshStyle(QWidget* widget);
