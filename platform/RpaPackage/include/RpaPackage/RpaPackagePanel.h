// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaPackage/RpaPackageExport.h>
#include <WbBaseUI/WbBaseWidget.h>

#include <memory>

class PackageService;

// Shows and edits the package list of the current app, and installs it. What is edited here is the user's own
// copy until it is saved, which tells the app through IPackageService::SigSaveConfig; a list that comes from
// the app meanwhile (another version was opened) replaces the copy. When no app takes a list from here (see
// PackageService::IsListTaken()) it is shown and installed only. Keys: F2 or a double click edits, Delete
// removes, Return in the fields adds, Ctrl+S saves.
class RPAPACKAGE_EXPORT RpaPackagePanel : public WbBaseWidget
{
    Q_OBJECT

public:
    // The service must outlive the panel.
    explicit RpaPackagePanel(PackageService* service, QWidget* parent = nullptr);
    ~RpaPackagePanel() override;

    // Whether the list can be edited here; so from the beginning to the end of the panel.
    bool IsEditable() const;

    // Whether there are edits that were not saved.
    bool IsChanged() const;

    // Does nothing while there are no edits, or the list cannot be edited.
    void Save();

private:
    class Private;
    const std::unique_ptr<Private> d;
};
