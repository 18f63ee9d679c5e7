// SPDX-License-Identifier: Apache-2.0

#include "RpaTemplateData.h"

RpaTemplateData::RpaTemplateData(QObject* parent) : IJsonParser(parent) {}
