// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_RichLinkDialog.h"

#include <WbBaseUI/WbBaseDialog.h>

// Asks for the text and the address of a link, or that the link be removed.
class RichLinkDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    // existing: the link is there already and may be removed.
    RichLinkDialog(const QString& text, const QString& address, bool existing, QWidget* parent);

    QString Text() const;

    // Complete address of an allowed scheme; "https://" is put before an address without one.
    QString Address() const;

    bool RemoveAsked() const { return removeAsked; }

private:
    void SlotAddressEdited();
    void SlotRemove();

    Ui::RichLinkDialog ui;
    bool removeAsked = false;
};
