// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "SaveSnapshotInfoWidget.h"
#include "VersionServiceFixture.h"

#include <QObject>
#include <QStringList>

#include <memory>

class WbEditableCombo;
class WbLabel;
class WbPushButton;
class WbTextEdit;

// The dialog as its user reaches it.
class DialogUser
{
public:
    explicit DialogUser(SaveSnapshotInfoWidget& dialog);

    void TypeName(const QString& text) const;
    void PickRow(int row) const;
    void PressOK() const;
    QStringList Names() const;

    SaveSnapshotInfoWidget& dialog;
    WbEditableCombo* const name;
    WbTextEdit* const desc;
    WbLabel* const labelDesc;
    WbPushButton* const ok;
    WbPushButton* const cancel;
};

// Each test saves an app of its own as the dialog's user, in front of a scripted server.
class SaveDialogFixture : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

protected:
    void Open();

    std::unique_ptr<VersionServiceFixture> service;
    std::unique_ptr<SaveSnapshotInfoWidget> dialog;
    std::unique_ptr<DialogUser> user;
    RpaAppDataPtr app;
};
