// SPDX-License-Identifier: Apache-2.0

#include "HtmlInspector_p.h"

#include <RpaEngineTool/RpaEngineTool.h>

#include <QCoreApplication>
#include <QPointer>

class RpaEngineTool::Private
{
public:
    // Owned by the application: it holds an icon, which must not outlive that.
    QPointer<HtmlInspector> builtIn;
    QPointer<IRpaInspector> own;
};

RpaEngineTool* RpaEngineTool::Instance()
{
    static RpaEngineTool instance;
    return &instance;
}

RpaEngineTool::RpaEngineTool() : d(std::make_unique<Private>()) {}

RpaEngineTool::~RpaEngineTool() = default;

IRpaInspector* RpaEngineTool::GetHtmlInspector() const
{
    if (d->own)
        return d->own;
    if (!d->builtIn)
        d->builtIn = new HtmlInspector(QCoreApplication::instance());
    return d->builtIn;
}

void RpaEngineTool::SetHtmlInspector(IRpaInspector* inspector)
{
    d->own = inspector;
}
