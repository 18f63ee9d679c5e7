#include "RpaAppEditorMembers.h"

#include "ui_RpaAppEditorWidget.h"

#include <WbBrowserLite/IBrowserBorderWindow.h>

RpaAppEditorMembers::RpaAppEditorMembers() : ui(std::make_unique<Ui::RpaAppEditorWidget>()), handle(nullptr)
{
}

RpaAppEditorMembers::~RpaAppEditorMembers() = default;
