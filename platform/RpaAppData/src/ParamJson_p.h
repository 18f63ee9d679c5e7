// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaParamData.h>

class JsonReader;
class JsonWriter;

// One parameter to and from JSON. Secrets stay out: of a password neither value nor default is written, and
// what an older or foreign file carries there is not read.
namespace ParamJson
{
void Write(JsonWriter& writer, const RpaParamItem& item);
// Stands inside the object already.
RpaParamItem Read(JsonReader& reader);
} // namespace ParamJson
