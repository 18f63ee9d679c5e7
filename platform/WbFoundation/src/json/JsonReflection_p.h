// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbFoundation/IJsonParser.h>

// Declared properties of records to and from JSON.
namespace JsonReflection
{
void Write(const IJsonParser& record, JsonWriter& writer);
IJsonParser::Commit Read(IJsonParser& record, JsonReader& reader);
void Copy(IJsonParser& target, const IJsonParser& source);
} // namespace JsonReflection
