#pragma once

#include "AppRecord.h"
#include "DateLanguage.h"

#include <RpaEditorLogic/VersionServiceRecords.h>
#include <WbBaseUI/WbBaseDialog.h>

#include <memory>

class QVBoxLayout;
class VersionServiceClient;
class WbLabel;
class WbPushButton;

// The open invitation codes of an app, for its creator: to be copied, revoked and made anew.
class InvitationDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    InvitationDialog(const AppRecord& app, DateLanguage language, QWidget* parent);
    ~InvitationDialog() override;

private:
    void Load();
    void Show(const QVector<VersionServiceInvitation>& invitations);
    QWidget* CreateRow(const VersionServiceInvitation& invitation);
    void Say(const QString& text, bool isProblem);
    void SlotCreate();
    void SlotRevoke(const QString& invitationId);

    const AppRecord app;
    const DateLanguage dateLanguage;
    const std::unique_ptr<VersionServiceClient> client;
    WbLabel* labelState = nullptr;
    QVBoxLayout* rows = nullptr;
    WbPushButton* buttonCreate = nullptr;
};
