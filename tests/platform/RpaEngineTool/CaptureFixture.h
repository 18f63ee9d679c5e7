// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "PageServer.h"

#include <RpaEngineTool/IRpaInspector.h>
#include <RpaEngineTool/RpaEngineTool.h>
#include <RpaProcessData/RpaHtmlNodeManager.h>
#include <WbBrowserLite/IBrowserEngine.h>
#include <WbBrowserLite/IBrowserWidget.h>
#include <WbBrowserLite/WbBrowserLite.h>

#include <QAction>
#include <QTest>
#include <QVBoxLayout>
#include <QWidget>
#include <QWindow>

#include <memory>

// An author with the embedded browser and the element store of an app.
class CaptureFixture
{
public:
    CaptureFixture() : window(std::make_unique<QWidget>())
    {
        Inspector()->SetNodeManager(&nodes);
        browser = WbBrowserLite::Instance()->CreateBrowserWidget(window.get());
        browser->InitToolBar();
        auto* layout = new QVBoxLayout(window.get());
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(browser);
        window->resize(640, 480);
        window->show();
    }
    ~CaptureFixture() { Inspector()->SetNodeManager(nullptr); }

    static IRpaInspector* Inspector() { return RpaEngineTool::Instance()->GetHtmlInspector(); }

    bool Open(const QString& path)
    {
        bool over = false;
        bool loaded = false;
        browser->GetBrowserEngine()->Open(server.Url(path), [&over, &loaded](bool ok, const QVariant&) {
            loaded = ok;
            over = true;
        });
        return QTest::qWaitFor([&over] { return over; }, 20000) && loaded;
    }

    QVariant Run(const QString& script)
    {
        bool over = false;
        QVariant given;
        browser->GetBrowserEngine()->RunScript(script, [&over, &given](bool, const QVariant& value) {
            given = value;
            over = true;
        });
        return QTest::qWaitFor([&over] { return over; }, 20000) ? given : QVariant();
    }

    QWidget* Glass() const { return window->findChild<QWidget*>(QStringLiteral("browserPointerOverlay")); }

    // The middle of an element, in the window.
    QPoint MiddleOf(const QString& css)
    {
        const QVariantList at = Run(QStringLiteral("(r => [r.left + r.width / 2, r.top + r.height / 2])"
                                                   "(document.querySelector('%1').getBoundingClientRect())")
                                        .arg(css))
                                    .toList();
        const QWidget* view = window->findChild<QWidget*>(QStringLiteral("browserView"));
        return view->mapTo(window.get(), QPoint(at.value(0).toInt(), at.value(1).toInt()));
    }

    // As the mouse of the author does it: through the window.
    void Click(const QString& css)
    {
        const QPoint point = MiddleOf(css);
        QTest::mouseMove(window->windowHandle(), point);
        QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, point);
    }

    RpaNode Capture(const QString& css)
    {
        if (!Inspector()->StartCapture())
            return RpaNode();
        const int before = nodes.GetCount();
        Click(css);
        if (!QTest::qWaitFor([this, before] { return nodes.GetCount() > before; }))
            return RpaNode();
        return nodes.GetNode(nodes.GetCount() - 1);
    }

    PageServer server;
    RpaHtmlNodeManager nodes;
    std::unique_ptr<QWidget> window;
    IBrowserWidget* browser = nullptr;
};
