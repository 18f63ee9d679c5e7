// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseDialog.h>

#include <memory>

namespace Ui
{
class RichLinkDialog;
}

// Asks for the text and the address of a link, or that the link be removed.
class RichLinkDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    // existing: the link is there already and may be removed.
    RichLinkDialog(const QString& text, const QString& address, bool existing, QWidget* parent);
    ~RichLinkDialog() override;

    QString Text() const;

    // Complete address of an allowed scheme; "https://" is put before an address without one.
    QString Address() const;

    bool RemoveAsked() const { return removeAsked; }

private:
    void SlotAddressEdited();
    void SlotRemove();

    const std::unique_ptr<Ui::RichLinkDialog> ui;
    bool removeAsked = false;
};
