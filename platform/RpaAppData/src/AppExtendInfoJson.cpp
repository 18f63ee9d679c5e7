// SPDX-License-Identifier: Apache-2.0

#include "AppExtendInfoJson_p.h"

#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

void AppExtendInfoJson::Write(JsonWriter& writer, const RpaAppExtendInfo& info, const QByteArray& unknown)
{
    writer.BeginObject();
    writer.Member("appId", info.GetAppId());
    writer.Member("oxsAppKey", info.GetOxsAppKey());
    writer.Member("appKind", info.GetAppKind());
    writer.Member("manual", info.manual);
    writer.RawMembers(unknown);
    writer.EndObject();
}

RpaAppExtendInfo AppExtendInfoJson::Read(JsonReader& reader, const RpaAppExtendInfo& before,
                                         QByteArray& unknown)
{
    RpaAppExtendInfo info = before;
    if (!reader.EnterObject())
        return info;
    while (reader.NextMember()) {
        QString text;
        int kind = 0;
        if (reader.IsKey("appId")) {
            if (reader.ReadString(text))
                info.SetAppId(text);
        } else if (reader.IsKey("oxsAppKey")) {
            if (reader.ReadString(text))
                info.SetOxsAppKey(text);
        } else if (reader.IsKey("appKind")) {
            if (reader.ReadInt(kind))
                info.SetAppKind(kind);
        } else if (reader.IsKey("manual")) {
            reader.ReadString(info.manual);
        } else {
            reader.KeepMember(unknown);
        }
    }
    return info;
}
