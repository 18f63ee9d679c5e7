// SPDX-License-Identifier: Apache-2.0

#pragma once

class IBrowserWidget;
class QString;
class QWidget;

// Both defined by one of two source files: with a web engine, or without (null, no name).
IBrowserWidget* CreateBuiltInBrowser(QWidget* parent);
QString BuiltInEngineName();
