#include "InvitationDialog.h"

#include <RpaEditorLogic/VersionServiceClient.h>
#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbToast.h>

#include <QBoxLayout>
#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QScrollArea>

namespace
{
constexpr int validDays = 30;
constexpr int mostUses = 100;

WbPushButton* Button(const char* objectName, const QString& text, int type, QWidget* parent)
{
    auto* button = new WbPushButton(parent, type);
    button->setObjectName(QLatin1String(objectName));
    button->setText(text);
    button->setAutoDefault(false);
    return button;
}

QFont CodeFont()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(font.pointSizeF() * 1.4);
    font.setBold(true);
    return font;
}
} // namespace

InvitationDialog::InvitationDialog(const AppRecord& record, DateLanguage language, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true), app(record), dateLanguage(language),
      client(std::make_unique<VersionServiceClient>())
{
    setObjectName(QStringLiteral("InvitationDialog"));
    SetTitle(QStringLiteral("灰度邀请码"));

    auto* caption = new WbLabel(QStringLiteral("把邀请码发给使用者，他们在“灰度应用”中输入后即可试用“%1”的"
                                               "灰度版本。")
                                    .arg(app.name),
                                this);
    caption->setTextFormat(Qt::PlainText);
    caption->setWordWrap(true);
    labelState = new WbLabel(this);
    labelState->setWordWrap(true);
    auto* list = new QWidget(this);
    rows = new QVBoxLayout(list);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(8);
    auto* scroll = new QScrollArea(this);
    scroll->setObjectName(QStringLiteral("scrollInvitations"));
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(list);
    buttonCreate = Button("buttonCreate", QStringLiteral("新建邀请码"), Wb::SecondaryButton, this);
    buttonCreate->setIcon(WbIcons::Get(QStringLiteral("add")));
    auto* close = Button("buttonClose", QStringLiteral("完成"), Wb::PrimaryButton, this);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(12);
    buttons->addWidget(buttonCreate);
    buttons->addStretch();
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(GetContentWidget());
    layout->setContentsMargins(24, 20, 24, 24);
    layout->setSpacing(12);
    layout->addWidget(caption);
    layout->addWidget(scroll, 1);
    layout->addWidget(labelState);
    layout->addLayout(buttons);
    GetContentWidget()->setMinimumSize(660, 340);

    connect(buttonCreate, &QPushButton::clicked, this, &InvitationDialog::SlotCreate);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    Load();
}

InvitationDialog::~InvitationDialog() = default;

void InvitationDialog::Load()
{
    Say(QStringLiteral("正在读取邀请码…"), false);
    client->ListInvitations(app.id, this,
                            [this](const VersionServiceResult<QVector<VersionServiceInvitation>>& result) {
                                if (result.success) {
                                    Show(result.value);
                                } else {
                                    Say(result.errorDesc, true);
                                }
                            });
}

void InvitationDialog::Show(const QVector<VersionServiceInvitation>& invitations)
{
    while (QLayoutItem* item = rows->takeAt(0)) {
        // Later: the answer may have come from within a button of the row.
        if (item->widget()) {
            item->widget()->hide();
            item->widget()->deleteLater();
        }
        delete item;
    }
    const QDateTime now = QDateTime::currentDateTimeUtc();
    for (const VersionServiceInvitation& invitation : invitations) {
        if (invitation.IsOpen(now)) {
            rows->addWidget(CreateRow(invitation));
        }
    }
    Say(rows->count() == 0 ? QStringLiteral("没有有效的邀请码。灰度之后可在此新建。") : QString(), false);
    rows->addStretch();
}

QWidget* InvitationDialog::CreateRow(const VersionServiceInvitation& invitation)
{
    auto* row = new QFrame(this);
    row->setProperty("card", true);
    auto* code = new WbLabel(invitation.code, row);
    code->setObjectName(QStringLiteral("labelCode"));
    code->setFont(CodeFont());
    code->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* until = new WbLabel(QStringLiteral("有效期至 %1 · 已使用 %2/%3 次")
                                  .arg(DateText(invitation.expiresAt, dateLanguage))
                                  .arg(invitation.uses)
                                  .arg(invitation.mostUses),
                              row);
    until->setObjectName(QStringLiteral("labelValid"));
    until->setProperty("hint", true);
    auto* copy = Button("buttonCopy", QStringLiteral("复制"), Wb::SecondaryButton, row);
    copy->setIcon(WbIcons::Get(QStringLiteral("copy")));
    auto* revoke = Button("buttonRevoke", QStringLiteral("停用"), Wb::DefaultButton, row);
    revoke->setToolTip(QStringLiteral("停用后不能再使用；已经使用过的人不受影响"));
    auto* texts = new QVBoxLayout;
    texts->setSpacing(4);
    texts->addWidget(code);
    texts->addWidget(until);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(16, 12, 16, 12);
    layout->setSpacing(12);
    layout->addLayout(texts, 1);
    layout->addWidget(copy);
    layout->addWidget(revoke);
    connect(copy, &QPushButton::clicked, this, [text = invitation.code] {
        QGuiApplication::clipboard()->setText(text);
        WbToast::Show(QStringLiteral("邀请码已复制"), ToastSuccess);
    });
    connect(revoke, &QPushButton::clicked, this, [this, id = invitation.id] { SlotRevoke(id); });
    return row;
}

void InvitationDialog::Say(const QString& text, bool isProblem)
{
    labelState->setObjectName(isProblem ? QStringLiteral("labelProblem") : QStringLiteral("labelState"));
    labelState->setStyleSheet(labelState->styleSheet()); // the rule of the new name
    labelState->setText(text);
    labelState->setVisible(!text.isEmpty());
}

void InvitationDialog::SlotCreate()
{
    buttonCreate->setEnabled(false);
    client->CreateInvitation(app.id, validDays, mostUses, this,
                             [this](const VersionServiceResult<VersionServiceInvitation>& result) {
                                 buttonCreate->setEnabled(true);
                                 if (result.success) {
                                     Load();
                                 } else {
                                     Say(result.errorDesc, true);
                                 }
                             });
}

void InvitationDialog::SlotRevoke(const QString& invitationId)
{
    client->RevokeInvitation(invitationId, this,
                             [this](const VersionServiceResult<VersionServiceInvitation>& result) {
                                 if (result.success) {
                                     Load();
                                 } else {
                                     Say(result.errorDesc, true);
                                 }
                             });
}
