// SPDX-License-Identifier: Apache-2.0

#include "BrowserAddress_p.h"
#include "BrowserDriver_p.h"
#include "BrowserWorlds_p.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QWebEnginePage>

#include <chrono>
#include <utility>

namespace
{
using namespace std::chrono_literals;

constexpr auto openPatience = 60s;
constexpr auto scriptDeadline = 60s;
constexpr auto loadPatience = 10s;

// Tells what a script gave from what it threw; a script that does not even parse throws here too.
QString Guarded(const QString& script)
{
    const QByteArray list = QJsonDocument(QJsonArray{script}).toJson(QJsonDocument::Compact);
    return QStringLiteral("(function () { try { return {ok: true, value: (0, eval)(%1[0])}; } "
                          "catch (error) { return {ok: false, value: String(error)}; } })()")
        .arg(QString::fromUtf8(list));
}
} // namespace

BrowserDriver::BrowserDriver(QObject* parent) : QObject(parent)
{
    openDeadline.setSingleShot(true);
    openDeadline.setInterval(openPatience);
    patience.setSingleShot(true);
    patience.setInterval(loadPatience);
    connect(&openDeadline, &QTimer::timeout, this,
            [this] { AnswerOpen(false, QStringLiteral("网页 60 秒内没有打开")); });
    connect(&patience, &QTimer::timeout, this, &BrowserDriver::SendWaiting);
}

BrowserDriver::~BrowserDriver()
{
    RefuseAll(QStringLiteral("浏览器已经关闭"));
}

void BrowserDriver::Open(const QString& url, const Answer& answer)
{
    AnswerOpen(false, QStringLiteral("另一个网页取代了它"));
    const QUrl address(url.trimmed(), QUrl::TolerantMode);
    if (!BrowserAddress::MayOpen(address)) {
        answer(false, BrowserAddress::Refusal(url));
        return;
    }
    opening = answer;
    openDeadline.start();
    emit SigOpen(address);
}

void BrowserDriver::AnswerOpen(bool ok, const QString& reason)
{
    if (!opening)
        return;
    openDeadline.stop();
    const Answer answer = std::exchange(opening, nullptr);
    answer(ok, ok ? QVariant() : QVariant(reason));
    if (!loading)
        SendWaiting();
}

void BrowserDriver::RunScript(const QString& script, const Answer& answer)
{
    if (!page) {
        answer(false, QStringLiteral("浏览器还没有打开网页"));
        return;
    }
    const int id = ++lastId;
    scripts.insert(id, {script, answer, false});
    if (!loading && !opening)
        Send(id);
}

void BrowserDriver::SetPage(QWebEnginePage* shown)
{
    page = shown;
    connect(page, &QWebEnginePage::loadStarted, this, &BrowserDriver::SlotLoadStarted);
    connect(page, &QWebEnginePage::loadFinished, this, &BrowserDriver::SlotLoadFinished);
}

void BrowserDriver::DropPage(const QString& reason)
{
    if (page)
        page->disconnect(this);
    page = nullptr;
    loading = false;
    patience.stop();
    RefuseAll(reason);
}

void BrowserDriver::RefuseAll(const QString& reason)
{
    AnswerOpen(false, reason);
    while (!scripts.isEmpty())
        AnswerScript(scripts.firstKey(), false, reason);
}

void BrowserDriver::SlotLoadStarted()
{
    loading = true;
    patience.start();
}

void BrowserDriver::SlotLoadFinished()
{
    loading = false;
    patience.stop();
    if (!opening)
        SendWaiting();
}

void BrowserDriver::SendWaiting()
{
    const QList<int> ids = page ? scripts.keys() : QList<int>();
    for (int id : ids)
        if (scripts.contains(id) && !scripts.value(id).sent)
            Send(id);
}

void BrowserDriver::Send(int id)
{
    Script& script = scripts[id];
    script.sent = true;
    QTimer::singleShot(scriptDeadline, this, [this, id] {
        AnswerScript(id, false, QStringLiteral("网页 60 秒内没有完成这个操作"));
    });
    page->runJavaScript(Guarded(script.text), BrowserWorlds::process,
                        [guard = QPointer<BrowserDriver>(this), id](const QVariant& result) {
                            if (guard)
                                guard->TakeResult(id, result);
                        });
}

void BrowserDriver::TakeResult(int id, const QVariant& result)
{
    const QVariantMap told = result.toMap();
    if (told.value(QStringLiteral("ok")).toBool())
        AnswerScript(id, true, told.value(QStringLiteral("value")));
    else if (told.isEmpty())
        AnswerScript(id, false, QStringLiteral("网页在操作完成之前离开了"));
    else
        AnswerScript(
            id, false,
            QStringLiteral("网页脚本出错：%1").arg(told.value(QStringLiteral("value")).toString().left(500)));
}

void BrowserDriver::AnswerScript(int id, bool ok, const QVariant& value)
{
    if (scripts.contains(id))
        scripts.take(id).answer(ok, value);
}
