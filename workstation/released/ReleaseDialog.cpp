// SPDX-License-Identifier: Apache-2.0

#include "ReleaseDialog.h"

#include <RpaCore/RpaAppSnapshot.h>
#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QBoxLayout>

#include <algorithm>

namespace
{
// Users have one version of a state or none.
VersionServiceRelease PresentOf(const QVector<VersionServiceRelease>& releases, int state)
{
    const auto found =
        std::find_if(releases.cbegin(), releases.cend(), [state](const VersionServiceRelease& release) {
            return release.present && release.state == state;
        });
    return found == releases.cend() ? VersionServiceRelease() : *found;
}
} // namespace

ReleaseDialog::ReleaseDialog(const AppRecord& record, DateLanguage language, QWidget* parent)
    : RowsDialog(QStringLiteral("发布管理"),
                 QStringLiteral("“%1”发布过的版本。发现问题时，可以让使用者不再使用，或改用以前的版本。")
                     .arg(record.name),
                 parent),
      app(record), dateLanguage(language)
{
    setObjectName(QStringLiteral("ReleaseDialog"));
    GetContentWidget()->setMinimumSize(660, 480);
    Say(QStringLiteral("正在读取发布过的版本…"), false);
    WbScaledForm::Follow(GetContentWidget());
}

void ReleaseDialog::ShowReleases(const QVector<VersionServiceRelease>& releases)
{
    ClearRows();
    AddSection(AppSnapshotOnline, releases);
    AddSection(AppSnapshotGray, releases);
    Rows()->addStretch();
    Say(releases.isEmpty() ? QStringLiteral("还没有灰度或上线过的版本。") : QString(), false);
}

void ReleaseDialog::ShowProblem(const QString& problem)
{
    Say(problem, true);
}

void ReleaseDialog::AddSection(int state, const QVector<VersionServiceRelease>& releases)
{
    const bool isOnline = state == AppSnapshotOnline;
    const VersionServiceRelease present = PresentOf(releases, state);
    const QString kind = isOnline ? QStringLiteral("线上") : QStringLiteral("灰度");
    const auto isOfState = [state](const VersionServiceRelease& release) { return release.state == state; };
    if (std::none_of(releases.cbegin(), releases.cend(), isOfState))
        return;
    const QString now = present.versionId.isEmpty()
                            ? QStringLiteral("使用者现在没有%1版本").arg(kind)
                            : QStringLiteral("使用者现在使用“%1”").arg(present.versionName);
    Rows()->addWidget(
        MakeLabel(isOnline ? "labelOnline" : "labelGray", kind + QStringLiteral("：") + now, this));
    for (const VersionServiceRelease& release : releases)
        if (isOfState(release))
            AddRowOf(release, present);
}

void ReleaseDialog::AddRowOf(const VersionServiceRelease& release, const VersionServiceRelease& present)
{
    const bool isOnline = release.state == AppSnapshotOnline;
    auto* name = MakeLabel("labelVersion", release.versionName, this);
    QFont bold = name->font();
    bold.setBold(release.present);
    name->setFont(bold);
    const QString released = (isOnline ? QStringLiteral("上线于 %1") : QStringLiteral("灰度于 %1"))
                                 .arg(DateText(release.releasedAt, dateLanguage));
    auto* when =
        MakeLabel("labelReleased", release.present ? QStringLiteral("使用中 · ") + released : released, this);
    const QString stop = isOnline ? QStringLiteral("下线…") : QStringLiteral("停止灰度…");
    auto* act = release.present
                    ? MakeButton("buttonStop", stop, Wb::DefaultButton, this)
                    : MakeButton("buttonReturn", QStringLiteral("恢复…"), Wb::SecondaryButton, this);
    act->setAccessibleName(act->text() + release.versionName);
    QFrame* const row = AddRow(name, when, {act});
    if (!release.description.isEmpty())
        row->setToolTip(UIUtils::PlainToolTip(release.description));
    connect(act, &QPushButton::clicked, this, [this, release, present] {
        emit SigTakeBack(release.state, present, release.present ? VersionServiceRelease() : release);
    });
}
