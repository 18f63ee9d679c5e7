// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppDataExport.h>

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <memory>

class RpaAppData;

// What the content of an app data is based on. It belongs to no JSON: a save does not write it.
struct RpaContentOrigin
{
    QString versionId;    // empty: of no saved version
    int baseRevision = 0; // of the version, when the content was loaded or saved; 0: unknown
    QString draftName;    // the draft that the content was restored from; empty: none
    // Of that draft: SHA-256 of what was sent since and may have been saved (RpaDraft).
    QByteArrayList inDoubt = {};
};

// Loaded content on its way to observers, which make their app data themselves: whoever delivers it holds one
// until all have heard. An app data knows the content when it is given to its Parse(), among whatever else is
// delivered or parsed meanwhile, as long as it is passed on and not copied byte by byte. GUI thread only.
class RPAAPPDATA_EXPORT RpaContentDelivery
{
public:
    // isUnsaved: the content is work that no version holds; what was filled with it is marked as modified
    // when this object goes.
    RpaContentDelivery(const QByteArray& json, const RpaContentOrigin& origin, bool isUnsaved = false);
    ~RpaContentDelivery();
    RpaContentDelivery(const RpaContentDelivery&) = delete;
    RpaContentDelivery& operator=(const RpaContentDelivery&) = delete;

    // What is to be handed out: the json.
    QByteArray GetContent() const;

private:
    friend class RpaAppData;
    static bool IsAnyUnderWay();
    // Null: the content is of no delivery that is under way.
    static RpaContentDelivery* Find(const QByteArray& content);
    void Fill(RpaAppData* app);

    class Private;
    const std::unique_ptr<Private> d;
};

// What the next InitDefault() fills in instead of the content of a new app, once: unsaved work of an app that
// has no version which could be opened. Not while a RpaContentDelivery lives, as loaded content follows then.
// GUI thread only.
namespace RpaStartContent
{
// json: app data; what cannot be parsed is passed over, and the content is that of a new app.
RPAAPPDATA_EXPORT void Set(const QByteArray& json, const RpaContentOrigin& origin);
RPAAPPDATA_EXPORT void Clear();
RPAAPPDATA_EXPORT bool IsSet();
} // namespace RpaStartContent
