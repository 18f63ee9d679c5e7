#pragma once

#include <OxBase/IDpiAdapter.h>
#include <WbBaseUI/WbBaseUIExport.h>

#include <QDialog>

#include <memory>

// Base of the workstation's dialogs: a title bar with a close button and a content widget for the derived class.
// Escape and the close button reject.
class WBBASEUI_EXPORT WbBaseDialog : public QDialog, public IDpiAdapter
{
    Q_OBJECT

public:
    // titleType 0: small title; 1: the title bar of a form. modal: whether exec() blocks the whole application
    // (true) or only the parent's window.
    explicit WbBaseDialog(QWidget* parent, Qt::WindowFlags flags = Qt::WindowCloseButtonHint, int titleType = 0,
                          bool modal = true);
    ~WbBaseDialog() override;

    // Where the derived class builds its form.
    QWidget* GetContentWidget() const;

    // Title shown in the title bar and by the window manager.
    void SetTitle(const QString& title);

    void AdjustForDpi() override;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
