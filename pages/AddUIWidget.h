// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_AddUIWidget.h"

#include <WbBaseUI/WbBaseDialog.h>

#include <QString>

class RpaUIDataManager;

// Asks for the name of a new UI page, or for another name of an existing one. It closes accepted only with a
// name that is not empty, has no line break and is not in use.
class AddUIWidget : public WbBaseDialog
{
    Q_OBJECT

public:
    explicit AddUIWidget(QWidget* parent = nullptr);

    // The pages that the name is checked against; not owned, must outlive exec().
    void SetUIDataManager(RpaUIDataManager* manager);

    void SetName(const QString& name);

    // In rename mode: the page being renamed, which may keep its own name.
    void SetIndex(int value);

    void SetRenameMode(bool rename);

    // The name without surrounding white space.
    QString GetName() const;

    void AdjustForDpi() override;

private slots:
    void SlotOK();
    void SlotCancel();

private:
    void ApplyLayoutMetrics();
    bool IsNameTaken(const QString& name) const;

    Ui::AddUIWidget ui;
    RpaUIDataManager* uiDataManager = nullptr;
    int index = -1;
    bool renameMode = false;
};
