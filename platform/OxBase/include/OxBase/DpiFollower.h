// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <OxBase/IDpiAdapter.h>
#include <OxBase/OxBaseExport.h>

#include <QObject>

#include <functional>

// Lets lengths follow the scale where a class of its own for it would be too much:
//
//     DpiFollower::Follow(head, [head] { head->setFixedHeight(DpiTool::ScaleDefault(48)); });
class OXBASE_EXPORT DpiFollower : public QObject, public IDpiAdapter
{
    Q_OBJECT

public:
    // Applies now, and again after each change of DpiTool's scale as long as the owner lives. GUI thread only.
    static void Follow(QObject* owner, const std::function<void()>& apply);

    ~DpiFollower() override;

    void AdjustForDpi() override { apply(); }

private:
    DpiFollower(QObject* owner, const std::function<void()>& apply);

    const std::function<void()> apply;
};
