// SPDX-License-Identifier: Apache-2.0

#include "TransferController.h"

#include "AppExport.h"
#include "AppImport.h"
#include "TransferDialog.h"

#include <WbBaseUI/WbSystemDialogs.h>
#include <WbBaseUI/WbToast.h>

#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QRegularExpression>

namespace
{
const QString& Filter()
{
    static const QString filter = QStringLiteral("应用文件 (*.rpaapp)");
    return filter;
}

QString Ending()
{
    return QStringLiteral(".rpaapp");
}
} // namespace

QString TransferController::FileNameOf(const QString& appName)
{
    static const QRegularExpression forbidden(QStringLiteral("[\\\\/:*?\"<>|\\x00-\\x1f]"));
    QString name = appName;
    name.replace(forbidden, QStringLiteral("_"));
    while (name.endsWith(QLatin1Char('.')) || name.endsWith(QLatin1Char(' ')))
        name.chop(1);
    return (name.isEmpty() ? QStringLiteral("应用") : name) + Ending();
}

void TransferController::Export(const AppRecord& app, QWidget* window)
{
    const QPointer<TransferController> guard(this);
    const QString path = WbSystemDialogs::SaveFile(window, QStringLiteral("导出应用"),
                                                   QDir::home().filePath(FileNameOf(app.name)), Filter());
    if (!path.isEmpty() && guard)
        ExportTo(app, path, window);
}

void TransferController::Import(QWidget* window)
{
    const QPointer<TransferController> guard(this);
    const QString path =
        WbSystemDialogs::OpenFile(window, QStringLiteral("导入应用"), QDir::homePath(), Filter());
    if (!path.isEmpty() && guard)
        ImportFrom(path, window);
}

void TransferController::ExportTo(const AppRecord& app, const QString& path, QWidget* window)
{
    const QString place = QFileInfo(path).suffix().isEmpty() ? path + Ending() : path;
    auto* transfer = new AppExport(app, place, this);
    connect(transfer, &AppTransfer::SigEnded, this, [app, place](const QString& problem) {
        if (problem.isEmpty())
            WbToast::Show(QStringLiteral("“%1”已导出到“%2”").arg(app.name, QDir::toNativeSeparators(place)),
                          ToastSuccess);
        else
            WbToast::Show(QStringLiteral("“%1”没有导出：%2").arg(app.name, problem), ToastError);
    });
    Run(transfer, QStringLiteral("正在导出“%1”…").arg(app.name), window);
}

void TransferController::ImportFrom(const QString& path, QWidget* window)
{
    const QString name = QFileInfo(path).fileName();
    auto* transfer = new AppImport(path, this);
    connect(transfer, &AppTransfer::SigEnded, this,
            [this, name](const QString& problem, const QString& appId) {
                if (problem.isEmpty()) {
                    WbToast::Show(QStringLiteral("“%1”已导入").arg(name), ToastSuccess);
                    emit SigImported(appId);
                } else {
                    WbToast::Show(QStringLiteral("“%1”没有导入：%2").arg(name, problem), ToastError);
                }
            });
    Run(transfer, QStringLiteral("正在导入“%1”…").arg(name), window);
}

void TransferController::Run(AppTransfer* transfer, const QString& title, QWidget* window)
{
    auto* dialog = new TransferDialog(title, window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(transfer, &AppTransfer::SigProgress, dialog, &TransferDialog::ShowProgress);
    connect(transfer, &AppTransfer::SigEnded, dialog, &QDialog::accept);
    connect(transfer, &AppTransfer::SigEnded, transfer, &QObject::deleteLater);
    connect(dialog, &QDialog::rejected, transfer, &AppTransfer::Cancel);
    dialog->OpenInTurn();
    transfer->Start();
}
