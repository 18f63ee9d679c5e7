#pragma once

class IBrowserWidget;
class QWidget;

// Defined by one of two source files: with a web engine, or without (null).
IBrowserWidget* CreateBuiltInBrowser(QWidget* parent);
