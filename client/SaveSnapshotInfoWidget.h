// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_SaveSnapshotInfoWidget.h"

#include <OxHttp/HttpObserverBase.h>
#include <RpaAppData/RpaAppData.h>
#include <WbBaseUI/WbBaseDialog.h>

#include <QString>

// The dialog "另存为": saves the app as a new version under a name of the user's, or over a development
// version picked from the list. It sends the request itself, stays open until the answer and closes accepted
// when the version is saved.
class SaveSnapshotInfoWidget : public WbBaseDialog, public HttpObserverBase
{
    Q_OBJECT

public:
    explicit SaveSnapshotInfoWidget(QWidget* parent);
    ~SaveSnapshotInfoWidget() override;

    // The app to save; without one, confirming rejects the dialog.
    void SetAppData(const RpaAppDataPtr& app);

    // Shown as the version that is being edited.
    void SetCurrentVersionText(const QString& text);

    // The saved version, once the dialog was accepted.
    QString GetSavedSnapshotId() const { return savedSnapshotId; }

    void OnHttpNotify(int notifyId, QSharedPointer<IHttpRequest> request,
                      QSharedPointer<IHttpResponse> response) override;

private slots:
    void SlotOK();
    void SlotCancel();
    void SlotDelete();
    void SlotNameActived(int index);
    void SlotNameChanged(const QString& text);
    void SlotDescChanged();

private:
    void InitWidgets();
    void InitConnectSignals();
    void FillNameCombo();
    QString GetTypedName() const;
    int FindRow(const QString& name) const;
    QString GetDescriptionOf(const QString& snapshotId) const;

    void SendSave();
    void SendUpdate(const QString& snapshotId, const QString& name);
    void SendNew(const QString& name);
    void DeleteByName();

    template <typename SaveRequest>
    void OnSaved(const QString& identity, IHttpRequest* request, const IHttpResponse& response);
    void OnDeleted(IHttpRequest* request, const IHttpResponse& response);
    void SetWaiting(bool waiting);

    Ui::SaveSnapshotInfoWidget ui;
    QString savedSnapshotId;
    QString saveIdentity;
    QString updateIdentity;
    RpaAppDataPtr appData;
};
