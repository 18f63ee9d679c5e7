// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRecord.h"
#include "DateLanguage.h"
#include "RowsDialog.h"

#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/invitations/VersionServiceInvitation.h>

class WbPushButton;

// The open invitation codes of an app, for its creator: to be copied, revoked and made anew.
class InvitationDialog : public RowsDialog
{
    Q_OBJECT

public:
    InvitationDialog(const AppRecord& app, DateLanguage language, QWidget* parent);

private:
    void Load();
    void Show(const QVector<VersionServiceInvitation>& invitations);
    void AddRowOf(const VersionServiceInvitation& invitation);
    void SlotCreate();
    void SlotRevoke(const QString& invitationId);
    void ShowOutcome(const VersionServiceResult<VersionServiceInvitation>& result);

    const AppRecord app;
    const DateLanguage dateLanguage;
    VersionServiceClient client;
    WbPushButton* buttonCreate = nullptr;
};
