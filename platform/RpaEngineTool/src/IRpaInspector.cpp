#include <RpaEngineTool/IRpaInspector.h>

IRpaInspector::IRpaInspector(QObject* parent) : QObject(parent) {}

IRpaInspector::~IRpaInspector() = default;
