// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppDataExport.h>
#include <RpaAppData/RpaContentOrigin.h>
#include <WbFoundation/IJsonParser.h>

#include <QMetaType>
#include <QSharedPointer>
#include <QString>

#include <memory>

class ProcessDataManager;
class RpaAppExtendInfo;
class RpaAppRunTimeInfo;
class RpaHtmlNodeManager;
class RpaPackageInfo;
class RpaUIDataManager;
class RpaUiaNodeManager;

// The app being edited: its UI pages, its process, its packages, its identity and manual. Always held by
// RpaAppDataPtr; the parts returned by pointer live as long as the app data. GUI thread only.
class RPAAPPDATA_EXPORT RpaAppData : public IJsonParser
{
    Q_OBJECT

public:
    explicit RpaAppData(QObject* parent = nullptr);
    ~RpaAppData() override;

    // Fills in the content that a new app starts with: one UI page with one tool, one main process; or what
    // RpaStartContent holds, marked as modified then.
    void InitDefault();

    // The parts of the app; never null, and the same ones as long as it lives.
    RpaAppExtendInfo* GetAppExtendInfo() const;
    RpaAppRunTimeInfo* GetRunTimeInfo() const;
    RpaUIDataManager* GetUIDataManager() const;
    ProcessDataManager* GetProcessDataManager() const;
    RpaPackageInfo* GetPackageInfo() const;
    RpaHtmlNodeManager* GetHtmlNodeManager() const;
    RpaUiaNodeManager* GetUiaNodeManager() const;

    // Version of the app-data format the content was written with.
    QString GetVersion() const;
    void SetVersion(const QString& version);

    // Brings the package list in line with what the process uses, right before SetModified(false) for a save.
    void CheckPackageInfo();

    // The mark of unsaved work. SetModified(true) counts as one edit even when the mark was set already;
    // SetModified(false) for no save gives the work up.
    bool GetModified() const;
    void SetModified(bool modified);

    // What the content is based on; Parse() takes it from the RpaContentDelivery that the content is of, if any.
    RpaContentOrigin GetOrigin() const;
    void SetOrigin(const RpaContentOrigin& origin);

    // What JSON holds: format version, extend info (manual included), UI pages, processes, packages, element
    // stores. Not in it: run-time info, the mark of unsaved work, the active page, values of password
    // parameters. Members that this client does not know are kept through Parse() and written back by
    // ToJson(). Parse() gives an object that does not carry the mark any differently than before; a member
    // that is absent leaves its part as it is.
    // Parse() of a reference (RpaContentReference.h) reads what it refers to.
    bool Parse(const QByteArray& json) override;
    void WriteJson(JsonWriter& writer) const override;
    // Remembered for RpaWrittenContent.
    QByteArray ToJson() const override;
    Commit ReadJson(JsonReader& reader) override;

signals:
    // Every SetModified(true), for whoever keeps unsaved work safe.
    void SigEdited();
    // The mark changed.
    void SigModifiedChanged(bool modified);
    // Parse() or InitDefault() replaced the content.
    void SigReplaced();

private:
    friend class RpaSavedState;
    void FillInDefault();
    void SetMark(bool modified);
    void TakeBack();

    class Private;
    const std::unique_ptr<Private> d;
};

using RpaAppDataPtr = QSharedPointer<RpaAppData>;
Q_DECLARE_METATYPE(RpaAppDataPtr)
