#include "RpaTemplateData.h"

RpaTemplateData::RpaTemplateData(QObject* parent) : IJsonParser(parent) {}
