// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineTool/IRpaInspector.h>

#include <QPointer>
#include <QUrl>
#include <QVariantMap>

class IBrowserPointer;
class IBrowserWidget;
class QAction;

// Captures elements of the page in the embedded browser. Puts its button into the tool bar of every browser.
class HtmlInspector : public IRpaInspector
{
    Q_OBJECT

public:
    explicit HtmlInspector(QObject* parent = nullptr);
    ~HtmlInspector() override;

    bool IsCapturing() const override;
    void SetNodeManager(RpaNodeManager* manager) override;
    bool StartCapture() override;
    void StopCapture() override;

private:
    void Join(IBrowserWidget* browser);
    void SlotPicked(const QVariantMap& description, const QUrl& page);
    void SlotStopped();
    void ShowState();

    QAction* const action;
    QPointer<RpaNodeManager> nodes;
    QPointer<IBrowserPointer> pointer; // while capturing
};
