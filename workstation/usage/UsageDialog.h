// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DateLanguage.h"
#include "RowsDialog.h"

#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/usage/ListUsageRequest.h>

// For administrators: how often the accounts of their vendor did what on each of the last days.
class UsageDialog : public RowsDialog
{
    Q_OBJECT

public:
    UsageDialog(DateLanguage language, QWidget* parent);
    ~UsageDialog() override;

private:
    void SlotListed(const VersionServiceResult<QVector<VersionServiceUsageCount>>& result);
    void AddDays(const QVector<VersionServiceUsageCount>& counts);

    const DateLanguage dateLanguage;
    VersionServiceClient client;
};
