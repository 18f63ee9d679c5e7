// SPDX-License-Identifier: Apache-2.0

#include "AppBin.h"

#include "BinDialog.h"

#include <RpaCore/RpaAppSnapshot.h>
#include <RpaServiceClient/apps/DeleteAppRequest.h>
#include <RpaServiceClient/apps/ListDeletedAppsRequest.h>
#include <RpaServiceClient/apps/PurgeAppRequest.h>
#include <RpaServiceClient/apps/RestoreAppRequest.h>
#include <WbBaseUI/PackagedMsgBox.h>
#include <WbBaseUI/WbToast.h>

#include <QPointer>

namespace
{
QString QuestionBeforeDeleting(const AppRecord& app)
{
    QString text = QStringLiteral("删除应用“%1”？\n30 天内可以从回收站恢复。").arg(app.name);
    if (app.state == AppSnapshotOnline)
        text += QStringLiteral("\n该应用已上线，使用者将立即不能再看到和运行它。");
    else if (app.state == AppSnapshotGray)
        text += QStringLiteral("\n该应用正在灰度，受邀的使用者将立即不能再看到和运行它。");
    return text;
}

bool IsAgreed(const QString& question, const QString& act, QWidget* window)
{
    const auto buttons = QMessageBox::Yes | QMessageBox::No;
    return PackagedMsgBox::warn(question, window, buttons, true, nullptr,
                                {{QMessageBox::Yes, act}, {QMessageBox::No, QStringLiteral("取消")}}) ==
           QMessageBox::Yes;
}
} // namespace

void AppBin::Delete(const AppRecord& app, QWidget* window)
{
    const QPointer<AppBin> guard(this);
    if (!IsAgreed(QuestionBeforeDeleting(app), QStringLiteral("删除"), window) || !guard)
        return;
    client.Send(DeleteAppRequest{app.id}, this,
                [this, app](const VersionServiceResult<VersionServiceNothing>& result) {
                    if (result.success)
                        WbToast::Show(QStringLiteral("“%1”已放入回收站").arg(app.name), ToastSuccess);
                    else
                        WbToast::Show(QStringLiteral("“%1”没有删除：%2").arg(app.name, result.errorDesc),
                                      ToastError);
                    emit SigChanged(QString());
                });
}

void AppBin::Show(DateLanguage language, QWidget* window)
{
    auto* dialog = new BinDialog(language, window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &BinDialog::SigRestore, this,
            [this, dialog](const VersionServiceApp& app) { Restore(dialog, app); });
    connect(dialog, &BinDialog::SigPurge, this,
            [this, dialog](const QVector<VersionServiceApp>& apps) { Purge(dialog, apps); });
    Load(dialog);
    dialog->OpenInTurn();
}

void AppBin::Load(BinDialog* dialog)
{
    client.Send(ListDeletedAppsRequest{}, dialog,
                [dialog](const VersionServiceResult<QVector<VersionServiceDeletedApp>>& result) {
                    if (result.success)
                        dialog->ShowApps(result.value);
                    else
                        dialog->ShowProblem(result.errorDesc);
                });
}

void AppBin::Restore(BinDialog* dialog, const VersionServiceApp& app)
{
    const auto ended = [this, app, list = QPointer<BinDialog>(dialog)](
                           const VersionServiceResult<VersionServiceApp>& result) {
        if (result.success) {
            const QString how = result.value.name == app.name ? QString() : QStringLiteral("，名称为“%1”");
            WbToast::Show(QStringLiteral("“%1”已恢复").arg(app.name) +
                              (how.isEmpty() ? how : how.arg(result.value.name)),
                          ToastSuccess);
            emit SigChanged(result.value.id);
        } else {
            WbToast::Show(QStringLiteral("“%1”没有恢复：%2").arg(app.name, result.errorDesc), ToastError);
        }
        if (list)
            Load(list);
    };
    client.Send(RestoreAppRequest{app.id}, this, ended);
}

void AppBin::Purge(BinDialog* dialog, const QVector<VersionServiceApp>& apps)
{
    const QPointer<AppBin> guard(this);
    const QPointer<BinDialog> list(dialog);
    const QString what =
        apps.size() == 1 ? QStringLiteral("彻底删除“%1”？之后无法恢复。").arg(apps.first().name)
                         : QStringLiteral("彻底删除回收站中的 %1 个应用？之后无法恢复。").arg(apps.size());
    if (!IsAgreed(what, QStringLiteral("彻底删除"), dialog) || !guard)
        return;
    const auto left = std::make_shared<int>(apps.size());
    for (const VersionServiceApp& app : apps) {
        client.Send(PurgeAppRequest{app.id}, this,
                    [this, app, left, list](const VersionServiceResult<VersionServiceNothing>& result) {
                        if (!result.success)
                            WbToast::Show(QStringLiteral("“%1”没有删除：%2").arg(app.name, result.errorDesc),
                                          ToastError);
                        if (--*left == 0 && list)
                            Load(list);
                    });
    }
}
