// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppExtendInfo.h>

#include <QByteArray>

class JsonReader;
class JsonWriter;

// Identity and manual as a member of the app's JSON. unknown: members that a newer client wrote.
namespace AppExtendInfoJson
{
void Write(JsonWriter& writer, const RpaAppExtendInfo& info, const QByteArray& unknown);
// What is absent stays as it was before.
RpaAppExtendInfo Read(JsonReader& reader, const RpaAppExtendInfo& before, QByteArray& unknown);
} // namespace AppExtendInfoJson
