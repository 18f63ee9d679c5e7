// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineTool/RpaEngineToolExport.h>

#include <memory>

class IRpaInspector;

// The tools an author captures elements with. GUI thread only.
class RPAENGINETOOL_EXPORT RpaEngineTool
{
public:
    // The one of the process.
    static RpaEngineTool* Instance();
    ~RpaEngineTool();

    // Captures elements of web pages in the embedded browser. Never null.
    IRpaInspector* GetHtmlInspector() const;

    // Replaces the inspector; null goes back to the built-in one. Ownership stays with the caller. Used by a
    // workstation that has its own, and by tests.
    void SetHtmlInspector(IRpaInspector* inspector);

private:
    RpaEngineTool();

    class Private;
    const std::unique_ptr<Private> d;
};
