// SPDX-License-Identifier: Apache-2.0

#include "CapturedElement_p.h"
#include "HtmlInspector_p.h"

#include <RpaProcessData/RpaNodeManager.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbToast.h>
#include <WbBrowserLite/IBrowserPointer.h>
#include <WbBrowserLite/IBrowserWidget.h>
#include <WbBrowserLite/WbBrowserLite.h>

#include <QAction>
#include <QFile>

namespace
{
QString InspectScript()
{
    static const QString script = [] {
        QFile file(QStringLiteral(":/RpaEngineTool/inspect.js"));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }();
    return script;
}
} // namespace

HtmlInspector::HtmlInspector(QObject* parent) : IRpaInspector(parent), action(new QAction(this))
{
    action->setObjectName(QStringLiteral("browserCapture"));
    action->setIcon(WbIcons::Get(QStringLiteral("capture")));
    action->setCheckable(true);
    connect(action, &QAction::triggered, this, [this](bool on) {
        if (!on)
            StopCapture();
        else
            StartCapture();
        ShowState(); // a press has turned the button, whatever came of it
    });
    WbBrowserLite* browsers = WbBrowserLite::Instance();
    connect(browsers, &WbBrowserLite::SigBrowserCreated, this, &HtmlInspector::Join);
    if (browsers->GetBrowserWidget())
        Join(browsers->GetBrowserWidget());
    ShowState();
}

HtmlInspector::~HtmlInspector()
{
    if (pointer)
        pointer->disconnect(this);
    StopCapture();
}

void HtmlInspector::Join(IBrowserWidget* browser)
{
    if (browser->GetPointer())
        browser->addAction(action);
}

bool HtmlInspector::IsCapturing() const
{
    return pointer;
}

void HtmlInspector::SetNodeManager(RpaNodeManager* manager)
{
    if (nodes == manager)
        return;
    StopCapture();
    if (nodes)
        nodes->disconnect(this);
    nodes = manager;
    if (nodes) {
        connect(nodes, &QObject::destroyed, this, [this] {
            StopCapture();
            ShowState();
        });
    }
    ShowState();
}

bool HtmlInspector::StartCapture()
{
    StopCapture();
    IBrowserWidget* const browser = WbBrowserLite::Instance()->GetBrowserWidget();
    IBrowserPointer* const candidate = browser ? browser->GetPointer() : nullptr;
    if (!nodes || !candidate) {
        WbToast::Show(QStringLiteral("此处没有可以捕获元素的内置浏览器"), ToastWarning);
        return false;
    }
    if (!candidate->Start(InspectScript(), QStringLiteral("单击要捕获的元素，按 Esc 取消"))) {
        WbToast::Show(browser->isVisible() ? QStringLiteral("请先在浏览器窗口中打开网页，再捕获元素")
                                           : QStringLiteral("请先展开浏览器窗口，再捕获元素"),
                      ToastWarning);
        return false;
    }
    pointer = candidate;
    connect(pointer, &IBrowserPointer::SigPicked, this, &HtmlInspector::SlotPicked);
    connect(pointer, &IBrowserPointer::SigStopped, this, &HtmlInspector::SlotStopped);
    connect(pointer, &QObject::destroyed, this, &HtmlInspector::SlotStopped);
    ShowState();
    emit SigCapturingChanged(true);
    return true;
}

void HtmlInspector::StopCapture()
{
    if (pointer)
        pointer->Stop();
}

void HtmlInspector::SlotStopped()
{
    if (pointer)
        pointer->disconnect(this);
    pointer = nullptr;
    ShowState();
    emit SigCapturingChanged(false);
}

void HtmlInspector::SlotPicked(const QVariantMap& description, const QUrl& page)
{
    const QString refusal = CapturedElement::Refusal(description);
    if (!refusal.isEmpty()) {
        WbToast::Show(refusal, ToastWarning);
        return;
    }
    if (!nodes)
        return;
    const RpaNode node = CapturedElement::ToNode(description, page);
    const RpaNode known = CapturedElement::FindSame(*nodes, node);
    const QString id = known.id.isEmpty() ? nodes->AddNode(node) : known.id;
    StopCapture();
    const QString name = nodes->FindNode(id).name;
    WbToast::Show(known.id.isEmpty() ? QStringLiteral("已捕获元素“%1”").arg(name)
                                     : QStringLiteral("这个元素捕获过了：“%1”").arg(name),
                  ToastSuccess);
    emit SigCaptured(id);
}

void HtmlInspector::ShowState()
{
    const QString text = IsCapturing() ? QStringLiteral("停止捕获（Esc）") : QStringLiteral("捕获网页元素");
    action->setVisible(nodes);
    action->setChecked(IsCapturing());
    action->setText(text);
    action->setToolTip(text);
}
