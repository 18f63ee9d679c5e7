// SPDX-License-Identifier: Apache-2.0

#include "SaveSnapshotInfoWidget.h"

#include "SnapshotWriting.h"

#include <OxHttp/HttpNotifyManager.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbToast.h>

#include <QSignalBlocker>
#include <QTextCursor>

using SnapshotWriting::IsConfirmed;
using SnapshotWriting::SnapshotManager;

namespace
{

constexpr int formTitleType = 1;
constexpr int formFieldStyle = 1;
constexpr int nameMaxLength = 20;
constexpr int descMaxLength = 50;

} // namespace

SaveSnapshotInfoWidget::SaveSnapshotInfoWidget(QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, formTitleType, true)
{
    ui.setupUi(GetContentWidget());
    InitWidgets();
    InitConnectSignals();
    HttpNotifyManager::Instance()->AddObserver(
        this, {NotifySaveAppSnapshotInfo, NotifyUpdateAppSnapshotInfo, NotifyDeleteAppSnapshotInfo});
}

SaveSnapshotInfoWidget::~SaveSnapshotInfoWidget()
{
    HttpNotifyManager::Instance()->RemoveAllMessage(this);
}

void SaveSnapshotInfoWidget::InitWidgets()
{
    SetTitle(QStringLiteral("另存为"));
    ui.plainTextEdit->setPlaceholderText(QStringLiteral("版本描述不超过50字符"));
    ui.comboBoxName->SetPlaceholderText(QStringLiteral("输入新版本名称或下拉选择覆盖版本"));
    ui.comboBoxName->SetMaxLength(nameMaxLength);
    FillNameCombo();
    ui.comboBoxName->SetBusinessStyle(formFieldStyle);
    ui.pushButtonOK->SetButtonType(Wb::PrimaryButton);
    ui.pushButtonOK->setDefault(true);
    ui.pushButtonCancel->SetButtonType(Wb::SecondaryButton);
}

void SaveSnapshotInfoWidget::InitConnectSignals()
{
    connect(ui.pushButtonOK, &WbPushButton::clicked, this, &SaveSnapshotInfoWidget::SlotOK);
    connect(ui.pushButtonCancel, &WbPushButton::clicked, this, &SaveSnapshotInfoWidget::SlotCancel);
    connect(ui.comboBoxName, qOverload<int>(&WbEditableCombo::activated), this,
            &SaveSnapshotInfoWidget::SlotNameActived);
    connect(ui.comboBoxName, &WbEditableCombo::editTextChanged, this,
            &SaveSnapshotInfoWidget::SlotNameChanged);
    connect(ui.plainTextEdit, &WbTextEdit::textChanged, this, &SaveSnapshotInfoWidget::SlotDescChanged);
}

void SaveSnapshotInfoWidget::FillNameCombo()
{
    ui.comboBoxName->clear();
    for (int i = 0; i < SnapshotManager()->GetCount(); ++i) {
        const RpaAppSnapshotPtr snapshot = SnapshotManager()->GetSnapshot(i);
        if (snapshot->GetState() == AppSnapshotDevelop)
            ui.comboBoxName->addItem(QIcon(), snapshot->GetName(), snapshot->GetId());
    }
    if (ui.comboBoxName->count() == 0)
        ui.comboBoxName->addItem(QStringLiteral("版本1"), QString());
    ui.comboBoxName->setCurrentIndex(-1);
    ui.comboBoxName->setEditText(QString());
}

void SaveSnapshotInfoWidget::SetAppData(const RpaAppDataPtr& app)
{
    appData = app;
}

void SaveSnapshotInfoWidget::SetCurrentVersionText(const QString& text)
{
    ui.labelVersionCurrent->setText(text);
}

QString SaveSnapshotInfoWidget::GetTypedName() const
{
    return ui.comboBoxName->currentText().trimmed();
}

int SaveSnapshotInfoWidget::FindRow(const QString& name) const
{
    return ui.comboBoxName->findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive);
}

QString SaveSnapshotInfoWidget::GetDescriptionOf(const QString& snapshotId) const
{
    const RpaAppSnapshotPtr snapshot = SnapshotManager()->GetSnapshot(snapshotId);
    return snapshot ? snapshot->GetDesc() : QString();
}

void SaveSnapshotInfoWidget::SlotOK()
{
    // A second press while the first request is under way would save twice.
    if (!ui.comboBoxName->isEnabled())
        return;
    if (GetTypedName().isEmpty()) {
        WbToast::Show(QStringLiteral("提示：版本名称不能为空"), ToastError);
        return;
    }
    SetWaiting(true);
    SendSave();
}

void SaveSnapshotInfoWidget::SlotCancel()
{
    reject();
}

void SaveSnapshotInfoWidget::SlotDelete()
{
    DeleteByName();
}

void SaveSnapshotInfoWidget::SlotNameActived(int index)
{
    const QString id = ui.comboBoxName->itemData(index).toString();
    if (!id.isEmpty() && SnapshotManager()->GetSnapshot(id))
        ui.plainTextEdit->setPlainText(GetDescriptionOf(id));
}

void SaveSnapshotInfoWidget::SlotNameChanged(const QString&)
{
    const int row = FindRow(GetTypedName());
    const QString id = row >= 0 ? ui.comboBoxName->itemData(row).toString() : QString();
    ui.plainTextEdit->setPlainText(GetDescriptionOf(id));
}

void SaveSnapshotInfoWidget::SlotDescChanged()
{
    QString text = ui.plainTextEdit->toPlainText();
    const int excess = text.size() - descMaxLength;
    if (excess <= 0)
        return;
    // What was typed or pasted last stands before the cursor; a text set from outside has its cursor at the
    // front and is cut at its end.
    int start = ui.plainTextEdit->textCursor().position() - excess;
    if (start < 0)
        start = descMaxLength;
    text.remove(start, excess);
    if (start > 0 && text.at(start - 1).isHighSurrogate())
        text.remove(--start, 1);
    ui.plainTextEdit->setPlainText(text);
    QTextCursor cursor = ui.plainTextEdit->textCursor();
    cursor.setPosition(start);
    ui.plainTextEdit->setTextCursor(cursor);
}

void SaveSnapshotInfoWidget::SendSave()
{
    if (!appData) {
        WbToast::Show(QStringLiteral("版本数据为空，无法保存"));
        reject();
        return;
    }
    const QString name = GetTypedName();
    const int row = FindRow(name);
    const QString id = row >= 0 ? ui.comboBoxName->itemData(row).toString() : QString();
    appData->CheckPackageInfo();
    appData->SetModified(false);
    if (id.isEmpty())
        SendNew(name);
    else
        SendUpdate(id, name);
}

void SaveSnapshotInfoWidget::SendUpdate(const QString& snapshotId, const QString& name)
{
    const RpaAppSnapshotPtr snapshot = SnapshotManager()->GetSnapshot(snapshotId);
    if (!snapshot)
        return;
    SnapshotWriting::WriteContent(*snapshot, *appData);
    snapshot->SetName(name);
    snapshot->SetDesc(ui.plainTextEdit->toPlainText().trimmed());
    updateIdentity = SnapshotWriting::CreateIdentity();
    const auto request = QSharedPointer<UpdateAppSnapshotInfoRequest>::create();
    request->SetSnapshotInfoPtr(snapshot);
    request->SetIdentity(updateIdentity);
    RpaEditorLogic::Instance()->UpdateAppSnapshotInfo(request);
}

void SaveSnapshotInfoWidget::SendNew(const QString& name)
{
    const RpaAppSnapshotPtr snapshot = SnapshotManager()->CreateDefault(appData);
    snapshot->SetName(name);
    snapshot->SetDesc(ui.plainTextEdit->toPlainText().trimmed());
    saveIdentity = SnapshotWriting::CreateIdentity();
    const auto request = QSharedPointer<SaveAppSnapshotInfoRequest>::create();
    request->SetSnapshotInfoPtr(snapshot);
    request->SetIdentity(saveIdentity);
    RpaEditorLogic::Instance()->SaveAppSnapshotInfo(request);
}

void SaveSnapshotInfoWidget::DeleteByName()
{
    const int row = FindRow(GetTypedName());
    if (row < 0)
        return;
    const auto request = QSharedPointer<DeleteAppSnapshotInfoRequest>::create();
    request->SetSnapshotId(ui.comboBoxName->itemData(row).toString());
    RpaEditorLogic::Instance()->DeleteAppSnapshotInfo(request);
}

void SaveSnapshotInfoWidget::OnHttpNotify(int notifyId, QSharedPointer<IHttpRequest> request,
                                          QSharedPointer<IHttpResponse> response)
{
    switch (notifyId) {
    case NotifySaveAppSnapshotInfo:
        OnSaved<SaveAppSnapshotInfoRequest>(saveIdentity, request.data(), *response);
        break;
    case NotifyUpdateAppSnapshotInfo:
        OnSaved<UpdateAppSnapshotInfoRequest>(updateIdentity, request.data(), *response);
        break;
    case NotifyDeleteAppSnapshotInfo:
        OnDeleted(request.data(), *response);
        break;
    default:
        break;
    }
}

template <typename SaveRequest>
void SaveSnapshotInfoWidget::OnSaved(const QString& identity, IHttpRequest* request,
                                     const IHttpResponse& response)
{
    const auto* save = qobject_cast<SaveRequest*>(request);
    if (!save || save->GetIdentity() != identity)
        return;
    SetWaiting(false);
    if (!IsConfirmed(response)) {
        WbToast::Show(response.GetErrorDesc(), ToastError);
        return;
    }
    savedSnapshotId = save->GetSnapshotInfoPtr()->GetId();
    accept();
}

void SaveSnapshotInfoWidget::OnDeleted(IHttpRequest* request, const IHttpResponse& response)
{
    if (!IsConfirmed(response)) {
        WbToast::Show(response.GetErrorDesc(), ToastError);
        return;
    }
    WbToast::Show(QStringLiteral("删除成功"));
    const auto* deletion = qobject_cast<DeleteAppSnapshotInfoRequest*>(request);
    const int row = deletion ? ui.comboBoxName->findData(deletion->GetSnapshotId()) : -1;
    if (row < 0)
        return;
    {
        // The box would put a neighbour's name in place of what the user typed, and so offer to overwrite it.
        const QSignalBlocker blocker(ui.comboBoxName);
        const QString typed = ui.comboBoxName->currentText();
        ui.comboBoxName->removeItem(row);
        ui.comboBoxName->setEditText(typed);
    }
    SlotNameChanged(QString());
}

void SaveSnapshotInfoWidget::SetWaiting(bool waiting)
{
    ui.comboBoxName->setEnabled(!waiting);
    ui.labelDesc->setEnabled(!waiting);
}
