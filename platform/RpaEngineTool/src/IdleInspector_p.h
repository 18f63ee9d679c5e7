#pragma once

#include <RpaEngineTool/IRpaInspector.h>

// Where no embedded browser can be captured from.
class IdleInspector : public IRpaInspector
{
    Q_OBJECT

public:
    using IRpaInspector::IRpaInspector;

    bool IsCapturing() const override { return false; }
};
