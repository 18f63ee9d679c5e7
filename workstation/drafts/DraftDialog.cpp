// SPDX-License-Identifier: Apache-2.0

#include "DraftDialog.h"

#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/PackagedMsgBox.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QFormLayout>
#include <QHBoxLayout>
#include <QPointer>
#include <QVBoxLayout>
#include <QVariant>

namespace
{
WbLabel* Text(const char* objectName, const QString& text, QWidget* parent)
{
    auto* label = new WbLabel(text, parent);
    label->setObjectName(QLatin1String(objectName));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

WbPushButton* Button(const char* objectName, const QString& text, int type, QWidget* parent)
{
    auto* button = new WbPushButton(parent, type);
    button->setObjectName(QLatin1String(objectName));
    button->setText(text);
    button->setAutoDefault(false);
    return button;
}

QString BaseText(const RpaDraft& draft, const DraftPlan& plan)
{
    if (plan.base == DraftPlan::Base::None)
        return QStringLiteral("尚未保存过的版本");
    if (plan.base == DraftPlan::Base::Gone)
        return QStringLiteral("已被删除的版本（修订 %1）").arg(draft.baseRevision);
    return QStringLiteral("%1（修订 %2）").arg(plan.versionName, QString::number(plan.baseRevision));
}

// What becomes of the work when it is restored.
QString OutlookText(const RpaDraft& draft, const DraftPlan& plan)
{
    const QString asNew = plan.NeedsNewVersion()
                              ? QStringLiteral("恢复后请用“另存为”保存为新版本，已有的版本不会被覆盖。")
                              : QStringLiteral("恢复后保存时会创建一个新版本。");
    switch (plan.base) {
    case DraftPlan::Base::Current:
        return QStringLiteral("恢复后，草稿作为未保存的修改显示在编辑器中，保存后才写入该版本。");
    case DraftPlan::Base::Newer:
        return QStringLiteral(
                   "注意：此后%1又保存过该版本，服务器上的内容（修订 %2）比草稿所基于的（修订 %3）新。")
                   .arg(plan.savedBy == draft.account ? QStringLiteral("您")
                                                      : QStringLiteral("“%1”").arg(plan.savedBy),
                        QString::number(plan.revision), QString::number(draft.baseRevision)) +
               asNew;
    case DraftPlan::Base::Released:
        return QStringLiteral("注意：该版本已经发布，不能再修改。") + asNew;
    case DraftPlan::Base::Gone:
        return QStringLiteral("注意：该版本已从服务器上删除。") + asNew;
    case DraftPlan::Base::None:
        break;
    }
    return asNew;
}
} // namespace

DraftDialog::DraftDialog(const QString& appName, const RpaDraft& draft, const DraftPlan& plan,
                         DateLanguage language, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true)
{
    setObjectName(QStringLiteral("DraftDialog"));
    SetTitle(QStringLiteral("恢复未保存的修改"));

    auto* caption =
        Text("labelCaption",
             QStringLiteral("上次编辑“%1”时有修改没有保存，工作站为您保留了草稿。").arg(appName), this);
    auto* later =
        Text("labelLater", QStringLiteral("选择“以后再说”会保留草稿，下次打开该应用时再次询问。"), this);
    later->setProperty("hint", true);

    auto* layout = new QVBoxLayout(GetContentWidget());
    layout->setContentsMargins(24, 20, 24, 24);
    layout->setSpacing(12);
    layout->addWidget(caption);
    layout->addWidget(CreateFacts(draft, plan, language));
    layout->addWidget(Text("labelOutlook", OutlookText(draft, plan), this));
    layout->addWidget(later);
    layout->addStretch();
    layout->addLayout(CreateButtons());
    GetContentWidget()->setMinimumSize(520, 300);
    WbScaledForm::Follow(GetContentWidget());
}

DraftDialog::~DraftDialog() = default;

QWidget* DraftDialog::CreateFacts(const RpaDraft& draft, const DraftPlan& plan, DateLanguage language)
{
    auto* facts = new QWidget(this);
    auto* form = new QFormLayout(facts);
    form->setContentsMargins(0, 0, 0, 0);
    form->setHorizontalSpacing(12);
    form->setVerticalSpacing(8);
    form->addRow(new WbLabel(QStringLiteral("草稿时间："), facts),
                 Text("labelTime", DateText(draft.writtenAt, language), facts));
    form->addRow(new WbLabel(QStringLiteral("基于版本："), facts),
                 Text("labelVersion", BaseText(draft, plan), facts));
    return facts;
}

QLayout* DraftDialog::CreateButtons()
{
    auto* discard = Button("buttonDiscard", QStringLiteral("丢弃草稿"), Wb::SecondaryButton, this);
    auto* later = Button("buttonLater", QStringLiteral("以后再说"), Wb::SecondaryButton, this);
    auto* restore = Button("buttonRestore", QStringLiteral("恢复草稿"), Wb::PrimaryButton, this);
    restore->setDefault(true);
    restore->setFocus();

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(12);
    buttons->addWidget(discard);
    buttons->addStretch();
    buttons->addWidget(restore);
    buttons->addWidget(later);
    connect(restore, &QPushButton::clicked, this, [this] { Choose(Choice::Restore); });
    connect(later, &QPushButton::clicked, this, &QDialog::reject);
    connect(discard, &QPushButton::clicked, this, &DraftDialog::SlotDiscard);
    return buttons;
}

void DraftDialog::SlotDiscard()
{
    const QPointer<DraftDialog> self(this);
    const int answer = PackagedMsgBox::warn(QStringLiteral("确定要丢弃这份草稿吗？丢弃后无法找回。"), this,
                                            QMessageBox::Yes | QMessageBox::No, true, nullptr,
                                            {{QMessageBox::Yes, QStringLiteral("丢弃")}});
    if (self && answer == QMessageBox::Yes)
        Choose(Choice::Discard);
}

void DraftDialog::Choose(Choice chosen)
{
    choice = chosen;
    accept();
}
