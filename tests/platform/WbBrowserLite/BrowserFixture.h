// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "PageServer.h"

#include <WbBrowserLite/IBrowserEngine.h>
#include <WbBrowserLite/IBrowserWidget.h>
#include <WbBrowserLite/WbBrowserLite.h>

#include <QLineEdit>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWidget>

#include <memory>

// What a call of the engine was answered.
struct Told
{
    int times = 0;
    bool ok = false;
    QVariant value;

    IBrowserEngine::Answer Answer()
    {
        return [this](bool isOk, const QVariant& given) {
            ++times;
            ok = isOk;
            value = given;
        };
    }
};

// A window with the embedded browser in it, and pages to show.
class BrowserFixture
{
public:
    BrowserFixture() : window(std::make_unique<QWidget>())
    {
        browser = WbBrowserLite::Instance()->CreateBrowserWidget(window.get());
        browser->InitToolBar();
        browser->SetEmbedded(true);
        auto* layout = new QVBoxLayout(window.get());
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(browser);
        window->resize(640, 480);
        window->show();
    }

    IBrowserEngine* Engine() const { return browser->GetBrowserEngine(); }

    bool Open(const QString& path) { return OpenUrl(server.Url(path)); }

    bool OpenUrl(const QString& url)
    {
        Told told;
        Engine()->Open(url, told.Answer());
        return QTest::qWaitFor([&told] { return told.times > 0; }, 20000) && told.ok;
    }

    QVariant Run(const QString& script)
    {
        Told told;
        Engine()->RunScript(script, told.Answer());
        return QTest::qWaitFor([&told] { return told.times > 0; }, 20000) && told.ok ? told.value
                                                                                     : QVariant();
    }

    QString Title() { return Run(QStringLiteral("document.title")).toString(); }

    template <typename Part = QWidget>
    Part* Find(const char* name) const
    {
        return window->findChild<Part*>(QLatin1String(name));
    }

    void Press(const char* name) { QTest::mouseClick(Find(name), Qt::LeftButton); }

    void Type(const QString& address)
    {
        auto* line = Find<QLineEdit>("browserAddress");
        line->clear();
        QTest::keyClicks(line, address);
        QTest::keyClick(line, Qt::Key_Return);
    }

    PageServer server;
    std::unique_ptr<QWidget> window;
    IBrowserWidget* browser = nullptr;
};
