// SPDX-License-Identifier: Apache-2.0

#include <RpaEngineTool/IRpaInspector.h>

IRpaInspector::IRpaInspector(QObject* parent) : QObject(parent) {}

IRpaInspector::~IRpaInspector() = default;

void IRpaInspector::SetNodeManager(RpaNodeManager*) {}

bool IRpaInspector::StartCapture()
{
    return false;
}

void IRpaInspector::StopCapture() {}
