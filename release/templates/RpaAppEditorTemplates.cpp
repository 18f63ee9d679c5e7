// SPDX-License-Identifier: Apache-2.0

// Writing the app as a template, and starting a new app from one.
#include "RpaAppEditorMembers.h"
#include "RpaTemplateData.h"
#include "RpaTemplateExportDlg.h"
#include "RpaTemplateFile.h"
#include "RpaTemplateSelectDlg.h"

#include <RpaCore/RpaSuperDir.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <WbBaseUI/WbToast.h>

#include <QFile>
#include <QPointer>

void RpaAppEditorWidget::SlotExportData()
{
    if (!m->appData) {
        WbToast::Show(QStringLiteral("不存在数据，请先创建数据后在进行生成模板"), ToastError);
        return;
    }
    // As the editor's child the dialog goes away with the editor while it is open.
    const QPointer<RpaTemplateExportDlg> dialog = new RpaTemplateExportDlg(this);
    const int result = dialog->exec();
    if (!dialog)
        return;
    const QString name = dialog->GetTemplateName();
    const QString direction = dialog->GetTemplateDirection();
    const QString filePath = QStringLiteral("%1/%2").arg(dialog->GetSaveDir(), name);
    delete dialog;

    if (result == QDialog::Accepted)
        SaveAppData(name, direction, filePath);
}

void RpaAppEditorWidget::SaveAppData(const QString& name, const QString& direction, const QString& filePath)
{
    RpaTemplateData record(nullptr);
    record.SetTemplateName(name);
    record.SetTemplateDirection(direction);
    record.SetAppData(QByteArray(m->appData->ToJson().constData()));

    const QByteArray content = RpaTemplateFile::Encode(record);
    QFile file(filePath);
    if (content.isEmpty() || !file.open(QIODevice::WriteOnly)) {
        WbToast::Show(QStringLiteral("生成模板失败"), ToastError);
        return;
    }
    file.write(content);
    file.close();
    WbToast::Show(QStringLiteral("生成模板成功"), ToastDone);
}

QString RpaAppEditorWidget::GetTemplateDir() const
{
    const RpaSuperDir* const folders = RpaSuperDir::Instance();
    return m->executeInfo.GetAppKind() == visualKind ? folders->GetVisualTemplateDir()
                                                     : folders->GetProgramTemplateDir();
}

void RpaAppEditorWidget::ShowTemplatePage()
{
    m->currentSnapshotId.clear();
    const QString dir = GetTemplateDir();
    if (dir.isEmpty()) {
        ResetToDefault();
        return;
    }

    // As the editor's child the dialog goes away with the editor while it is open.
    const QPointer<RpaTemplateSelectDlg> dialog = new RpaTemplateSelectDlg(this);
    dialog->LoadTemplates(dir);
    const QByteArray json = dialog->SelectTemplateAppData();
    if (!dialog)
        return;
    delete dialog;

    if (json.isEmpty()) {
        ResetToDefault();
        return;
    }
    const auto appData = RpaAppDataPtr::create();
    appData->Parse(json);
    SetAppData(appData);
    appData->SetModified(true);
}
