// SPDX-License-Identifier: Apache-2.0

#include "DraftDialog.h"

#include "ui_DraftDialog.h"

#include <WbBaseUI/PackagedMsgBox.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QPointer>

namespace
{
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
    QString asNew = plan.NeedsNewVersion()
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
    Ui::DraftDialog ui;
    ui.setupUi(GetContentWidget());
    WbScaledForm::Follow(GetContentWidget());
    setObjectName(QStringLiteral("DraftDialog"));
    SetTitle(QStringLiteral("恢复未保存的修改"));
    ui.labelCaption->setText(
        QStringLiteral("上次编辑“%1”时有修改没有保存，工作站为您保留了草稿。").arg(appName));
    ui.labelTime->setText(DateText(draft.writtenAt, language));
    ui.labelVersion->setText(BaseText(draft, plan));
    ui.labelOutlook->setText(OutlookText(draft, plan));
    ui.buttonRestore->setFocus();
    connect(ui.buttonRestore, &QPushButton::clicked, this, [this] { Choose(Choice::Restore); });
    connect(ui.buttonLater, &QPushButton::clicked, this, &QDialog::reject);
    connect(ui.buttonDiscard, &QPushButton::clicked, this, &DraftDialog::SlotDiscard);
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
