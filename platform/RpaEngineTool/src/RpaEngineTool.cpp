#include "IdleInspector_p.h"

#include <RpaEngineTool/RpaEngineTool.h>

#include <QPointer>

class RpaEngineTool::Private
{
public:
    IdleInspector builtIn;
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
    return d->own ? d->own.data() : &d->builtIn;
}

void RpaEngineTool::SetHtmlInspector(IRpaInspector* inspector)
{
    d->own = inspector;
}
