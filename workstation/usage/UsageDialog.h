// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RowsDialog.h"

#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/usage/ListUsageRequest.h>

// For administrators: how often the accounts of their vendor did what on each of the last days.
class UsageDialog : public RowsDialog
{
    Q_OBJECT

public:
    explicit UsageDialog(QWidget* parent);
    ~UsageDialog() override;

private:
    void SlotListed(const VersionServiceResult<QVector<VersionServiceUsageCount>>& result);

    VersionServiceClient client;
};
