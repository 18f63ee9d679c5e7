// SPDX-License-Identifier: Apache-2.0

#include "ReleaseController.h"

#include "ReleaseDialog.h"
#include "TakeBackDialog.h"

#include <RpaCore/RpaAppSnapshot.h>
#include <RpaServiceClient/releases/ListReleasesRequest.h>
#include <RpaServiceClient/releases/TakeBackRequest.h>
#include <WbBaseUI/WbToast.h>

#include <QPointer>

namespace
{
struct Words
{
    QString title;
    QString act;
    QString consequence;
    QString done;
};

Words WordsFor(const QString& app, int state, const VersionServiceRelease& present,
               const VersionServiceRelease& to)
{
    const QString kind = state == AppSnapshotGray ? QStringLiteral("灰度") : QStringLiteral("线上");
    if (!to.versionId.isEmpty()) {
        QString text = QStringLiteral("使用者将改用%1版本“%2”。").arg(kind, to.versionName);
        if (!present.versionId.isEmpty())
            text += QStringLiteral("“%1”不再提供给使用者，之后可以再恢复。").arg(present.versionName);
        return {QStringLiteral("恢复%1版本").arg(kind), QStringLiteral("恢复"), text,
                QStringLiteral("“%1”的使用者现在使用“%2”").arg(app, to.versionName)};
    }
    if (state == AppSnapshotGray) {
        return {QStringLiteral("停止灰度"), QStringLiteral("停止灰度"),
                QStringLiteral("受邀的使用者将立即不能再看到和运行灰度版本“%1”。邀请码保留，之后可以恢复，"
                               "也可以灰度新的版本。")
                    .arg(present.versionName),
                QStringLiteral("“%1”的灰度已停止").arg(app)};
    }
    return {QStringLiteral("下线"), QStringLiteral("下线"),
            QStringLiteral("使用者将立即不能再看到和运行线上版本“%1”。之后可以恢复，也可以上线新的版本。")
                .arg(present.versionName),
            QStringLiteral("“%1”已下线").arg(app)};
}
} // namespace

void ReleaseController::Show(const AppRecord& app, DateLanguage language, QWidget* window)
{
    auto* dialog = new ReleaseDialog(app, language, window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &ReleaseDialog::SigTakeBack, this,
            [this, dialog](int state, const VersionServiceRelease& present, const VersionServiceRelease& to) {
                Ask(dialog, state, present, to);
            });
    Load(dialog);
    dialog->OpenInTurn();
}

void ReleaseController::Load(ReleaseDialog* dialog)
{
    client.Send(ListReleasesRequest{dialog->GetApp().id}, dialog,
                [dialog](const VersionServiceResult<QVector<VersionServiceRelease>>& result) {
                    if (result.success)
                        dialog->ShowReleases(result.value);
                    else
                        dialog->ShowProblem(result.errorDesc);
                });
}

void ReleaseController::Ask(ReleaseDialog* dialog, int state, const VersionServiceRelease& present,
                            const VersionServiceRelease& to)
{
    const AppRecord app = dialog->GetApp();
    const Words words = WordsFor(app.name, state, present, to);
    auto* question = new TakeBackDialog(words.title, words.act, words.consequence, dialog);
    question->setAttribute(Qt::WA_DeleteOnClose);
    const auto ended = [this, words, app, list = QPointer<ReleaseDialog>(dialog),
                        asking =
                            QPointer<TakeBackDialog>(question)](const VersionServiceResult<QString>& result) {
        const bool isOutdated = result.errorCode == QLatin1String("release-changed");
        if (result.success)
            WbToast::Show(words.done, ToastSuccess);
        else if (asking && !isOutdated)
            asking->ShowProblem(result.errorDesc);
        else
            WbToast::Show(QStringLiteral("“%1”：%2").arg(app.name, result.errorDesc), ToastError);
        if (asking && (result.success || isOutdated))
            asking->accept();
        if (list && (result.success || isOutdated))
            Load(list);
        if (result.success || isOutdated)
            emit SigChanged();
    };
    connect(question, &TakeBackDialog::SigConfirmed, this, [this, app, state, present, to, question, ended] {
        client.Send(TakeBackRequest{app.id, state, present.versionId, to.versionId, question->GetReason()},
                    this, ended);
    });
    question->open();
}
