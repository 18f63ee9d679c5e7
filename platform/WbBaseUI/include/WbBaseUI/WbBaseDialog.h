// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <OxBase/IDpiAdapter.h>
#include <WbBaseUI/WbBaseUIExport.h>

#include <QDialog>

#include <memory>

// Base of the workstation's dialogs: a title bar with a close button and a content widget for the derived
// class. The dialog draws its own frame, so it looks the same with and without a window manager; it can be
// dragged by its title. Escape and the close button reject; Enter presses the button that has the focus, or
// the default one. It opens centred over its parent's window and stays on the screen. It is registered with
// DpiTool by itself; derived classes only override AdjustForDpi() and call the base first.
class WBBASEUI_EXPORT WbBaseDialog : public QDialog, public IDpiAdapter
{
    Q_OBJECT

public:
    // flags: Qt::WindowCloseButtonHint gives the close button. titleType 0: small title; 1: the title bar of
    // a form. modal: whether exec() blocks the whole application (true) or only the parent's window.
    explicit WbBaseDialog(QWidget* parent, Qt::WindowFlags flags = Qt::WindowCloseButtonHint,
                          int titleType = 0, bool modal = true);
    ~WbBaseDialog() override;

    // Where the derived class builds its form. A size given to it before the first show is the size it opens
    // with.
    QWidget* GetContentWidget() const;

    // Title shown in the title bar and by the window manager.
    void SetTitle(const QString& title);

    void AdjustForDpi() override;

    // For a dialog that nobody waits for: shows it now, or when the modal windows that are shown have gone.
    void OpenInTurn();

    // Waits first for the end of a dialog that was opened in its turn, so that none lies over another; not
    // for one that this dialog was made within. Rejected when the dialog goes away meanwhile.
    int exec() override;
    void setVisible(bool visible) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
