// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppDataExport.h>
#include <RpaAppData/RpaToolData.h>
#include <WbFoundation/IJsonParser.h>

#include <QStringList>

#include <memory>

class RpaUIData;

// The UI pages of an app, in order, and which of them is active. Names are compared exactly (case counts).
// Pages are owned here; a pointer is valid until SigUIAboutToBeDeleted or SigAboutToReset. GUI thread only.
class RPAAPPDATA_EXPORT RpaUIDataManager : public IJsonParser
{
    Q_OBJECT

public:
    explicit RpaUIDataManager(QObject* parent = nullptr);
    ~RpaUIDataManager() override;

    // How many pages there are.
    int GetCount() const;
    // Replaces the list's content by the names of all pages.
    void GetAllUIName(QStringList& names) const;
    // Empty / null outside 0 … GetCount() - 1.
    QString GetUIName(int index) const;
    RpaUIData* GetUIData(int index) const;

    // Whether a page has the name.
    bool IsExist(const QString& name) const;
    // Whether a page other than the one at index has the name.
    bool IsExistExceptIndex(const QString& name, int index) const;

    // Appends a page with one tool and returns it. The caller has checked the name.
    RpaUIData* AddUIData(const QString& name, const RpaToolItem& item);
    // An index outside the list does nothing. The active index moves along with its page; when the active
    // page itself goes, the next one is active, or the last.
    void DeleteUIData(int index);
    // Renames.
    void UpdateUIData(int index, const QString& name);
    // Exchanges two pages.
    void SwapUIData(int a, int b);
    void Clear();

    // -1 while there is no page; outside the list nothing changes (-1 is taken as "none").
    int GetIndexActive() const;
    void SetIndexActive(int index);

    // What runs wrote into the pages and is no part of the app yet: makes it one, or takes it back.
    bool HasResults() const;
    void KeepResults();
    void RestoreResults();

    void WriteJson(JsonWriter& writer) const override;
    Commit ReadJson(JsonReader& reader) override;

signals:
    // Of the list of pages, after the change but where the name says otherwise; the data is changed already.
    void SigUIAdded(int index);
    void SigUIAboutToBeDeleted(int index);
    void SigUIDeleted(int index);
    void SigUIRenamed(int index);
    void SigUISwapped(int a, int b);
    void SigIndexActiveChanged(int index);
    // All pages are replaced at once.
    void SigAboutToReset();
    void SigReset();
    // After each change of the list and of any page; not for the active index.
    void SigChanged();
    void SigResultsChanged();

private:
    class Private;
    const std::unique_ptr<Private> d;
};
