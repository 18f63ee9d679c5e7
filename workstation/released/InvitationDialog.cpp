// SPDX-License-Identifier: Apache-2.0

#include "InvitationDialog.h"

#include <RpaServiceClient/invitations/CreateInvitationRequest.h>
#include <RpaServiceClient/invitations/ListInvitationsRequest.h>
#include <RpaServiceClient/invitations/RevokeInvitationRequest.h>
#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbScaledForm.h>
#include <WbBaseUI/WbToast.h>

#include <QBoxLayout>
#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>

namespace
{
constexpr int validDays = 30;
constexpr int mostUses = 100;

QFont CodeFont()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(font.pointSizeF() * 1.4);
    font.setBold(true);
    return font;
}
} // namespace

InvitationDialog::InvitationDialog(const AppRecord& record, DateLanguage language, QWidget* parent)
    : RowsDialog(QStringLiteral("灰度邀请码"),
                 QStringLiteral("把邀请码发给使用者，他们在“灰度应用”中输入后即可试用“%1”的灰度版本。")
                     .arg(record.name),
                 parent),
      app(record), dateLanguage(language)
{
    setObjectName(QStringLiteral("InvitationDialog"));
    buttonCreate = MakeButton("buttonCreate", QStringLiteral("新建邀请码"), Wb::SecondaryButton, this);
    buttonCreate->setIcon(WbIcons::Get(QStringLiteral("add")));
    AddButton(buttonCreate);
    GetContentWidget()->setMinimumSize(660, 340);
    connect(buttonCreate, &QPushButton::clicked, this, &InvitationDialog::SlotCreate);
    Load();
    WbScaledForm::Follow(GetContentWidget());
}

void InvitationDialog::Load()
{
    Say(QStringLiteral("正在读取邀请码…"), false);
    client.Send(ListInvitationsRequest{app.id}, this,
                [this](const VersionServiceResult<QVector<VersionServiceInvitation>>& result) {
                    if (result.success)
                        Show(result.value);
                    else
                        Say(result.errorDesc, true);
                });
}

void InvitationDialog::Show(const QVector<VersionServiceInvitation>& invitations)
{
    ClearRows();
    const QDateTime now = QDateTime::currentDateTimeUtc();
    for (const VersionServiceInvitation& invitation : invitations)
        if (invitation.IsOpen(now))
            AddRowOf(invitation);
    Say(Rows()->count() == 0 ? QStringLiteral("没有有效的邀请码。灰度之后可在此新建。") : QString(), false);
    Rows()->addStretch();
}

void InvitationDialog::AddRowOf(const VersionServiceInvitation& invitation)
{
    auto* code = MakeLabel("labelCode", invitation.code, this);
    code->setFont(CodeFont());
    code->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* until = MakeLabel("labelValid",
                            QStringLiteral("有效期至 %1 · 已使用 %2/%3 次")
                                .arg(DateText(invitation.expiresAt, dateLanguage))
                                .arg(invitation.uses)
                                .arg(invitation.mostUses),
                            this);
    auto* copy = MakeButton("buttonCopy", QStringLiteral("复制"), Wb::SecondaryButton, this);
    copy->setIcon(WbIcons::Get(QStringLiteral("copy")));
    auto* revoke = MakeButton("buttonRevoke", QStringLiteral("停用"), Wb::DefaultButton, this);
    revoke->setToolTip(QStringLiteral("停用后不能再使用；已经使用过的人不受影响"));
    AddRow(code, until, {copy, revoke});
    connect(copy, &QPushButton::clicked, this, [text = invitation.code] {
        QGuiApplication::clipboard()->setText(text);
        WbToast::Show(QStringLiteral("邀请码已复制"), ToastSuccess);
    });
    connect(revoke, &QPushButton::clicked, this, [this, id = invitation.id] { SlotRevoke(id); });
}

void InvitationDialog::SlotCreate()
{
    buttonCreate->setEnabled(false);
    client.Send(CreateInvitationRequest{app.id, validDays, mostUses}, this,
                [this](const VersionServiceResult<VersionServiceInvitation>& result) {
                    buttonCreate->setEnabled(true);
                    ShowOutcome(result);
                });
}

void InvitationDialog::SlotRevoke(const QString& invitationId)
{
    client.Send(
        RevokeInvitationRequest{invitationId}, this,
        [this](const VersionServiceResult<VersionServiceInvitation>& result) { ShowOutcome(result); });
}

void InvitationDialog::ShowOutcome(const VersionServiceResult<VersionServiceInvitation>& result)
{
    if (result.success)
        Load();
    else
        Say(result.errorDesc, true);
}
