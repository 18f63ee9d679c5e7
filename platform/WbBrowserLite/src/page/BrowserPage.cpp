// SPDX-License-Identifier: Apache-2.0

#include "BrowserAddress_p.h"
#include "BrowserPage_p.h"

#include <WbBaseUI/PackagedMsgBox.h>
#include <WbBaseUI/WbToast.h>

#include <QWebEngineCertificateError>
#include <QWebEngineDownloadItem>
#include <QWebEngineProfile>
#include <QWebEngineSettings>

namespace
{
constexpr int questionsUntilMuted = 3;
constexpr int longestQuestion = 500;

// Stands for the window that a page opens, until it is known where that window goes.
class NewWindow : public QWebEnginePage
{
public:
    NewWindow(QWebEngineProfile* profile, QWebEnginePage* openedBy)
        : QWebEnginePage(profile, openedBy), opener(openedBy)
    {
    }

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType, bool isMainFrame) override
    {
        if (isMainFrame && BrowserAddress::MayOpen(url)) {
            opener->setUrl(url);
            deleteLater();
        }
        return false;
    }

private:
    QWebEnginePage* const opener;
};

// Frames may also hold what their page made itself.
bool MayFill(const QUrl& url)
{
    static const QStringList schemes{QStringLiteral("about"), QStringLiteral("blob"), QStringLiteral("data")};
    return BrowserAddress::MayOpen(url) || schemes.contains(url.scheme());
}

QString Told(const QUrl& origin, const QString& text)
{
    return QStringLiteral("网页 %1：\n%2").arg(origin.host(), text.left(longestQuestion));
}
} // namespace

BrowserPage::BrowserPage(QWebEngineProfile* profile, QObject* parent) : QWebEnginePage(profile, parent)
{
    ApplySettings();
    connect(this, &QWebEnginePage::featurePermissionRequested, this,
            [this](const QUrl& origin, QWebEnginePage::Feature feature) {
                setFeaturePermission(origin, feature, PermissionDeniedByUser);
            });
    connect(profile, &QWebEngineProfile::downloadRequested, this, [this](QWebEngineDownloadItem* item) {
        item->cancel();
        emit SigDownload();
        WbToast::Show(QStringLiteral("内置浏览器不下载文件"), ToastWarning);
    });
}

QWebEngineProfile* BrowserPage::CreateProfile(QObject* parent)
{
    auto* profile = new QWebEngineProfile(parent); // without a storage name nothing reaches the disk
    profile->setHttpAcceptLanguage(QStringLiteral("zh-CN,zh;q=0.9,en;q=0.8"));
    return profile;
}

void BrowserPage::ApplySettings()
{
    const std::initializer_list<std::pair<QWebEngineSettings::WebAttribute, bool>> wanted{
        {QWebEngineSettings::LocalContentCanAccessFileUrls, false},
        {QWebEngineSettings::LocalContentCanAccessRemoteUrls, false},
        {QWebEngineSettings::JavascriptCanOpenWindows, false},
        {QWebEngineSettings::JavascriptCanAccessClipboard, false},
        {QWebEngineSettings::JavascriptCanPaste, false},
        {QWebEngineSettings::AllowWindowActivationFromJavaScript, false},
        {QWebEngineSettings::AllowRunningInsecureContent, false},
        {QWebEngineSettings::PluginsEnabled, false},
        {QWebEngineSettings::FullScreenSupportEnabled, false},
        {QWebEngineSettings::ScreenCaptureEnabled, false},
        {QWebEngineSettings::HyperlinkAuditingEnabled, false},
        {QWebEngineSettings::WebRTCPublicInterfacesOnly, true},
        {QWebEngineSettings::PlaybackRequiresUserGesture, true},
        {QWebEngineSettings::FocusOnNavigationEnabled, false}, // the author may be typing elsewhere
        {QWebEngineSettings::ErrorPageEnabled, false},
    };
    for (const auto& [attribute, on] : wanted)
        settings()->setAttribute(attribute, on);
    settings()->setUnknownUrlSchemePolicy(QWebEngineSettings::DisallowUnknownUrlSchemes);
}

bool BrowserPage::acceptNavigationRequest(const QUrl& url, NavigationType, bool isMainFrame)
{
    if (!isMainFrame)
        return MayFill(url);
    if (!BrowserAddress::MayOpen(url)) {
        emit SigRefused(BrowserAddress::Refusal(url.toDisplayString()));
        return false;
    }
    destination = url;
    obstacle.clear();
    return true;
}

QWebEnginePage* BrowserPage::createWindow(WebWindowType)
{
    return new NewWindow(profile(), this);
}

bool BrowserPage::certificateError(const QWebEngineCertificateError& error)
{
    if (error.url().host() == destination.host())
        obstacle = QStringLiteral("网站的安全证书无效，为保护您的数据没有打开。");
    return false;
}

void BrowserPage::javaScriptAlert(const QUrl& origin, const QString& text)
{
    // A box here would hold up the process that drives the page.
    WbToast::Show(Told(origin, text), ToastInformation);
}

bool BrowserPage::javaScriptConfirm(const QUrl& origin, const QString& text)
{
    return MayAsk(origin) && PackagedMsgBox::question(Told(origin, text), view(),
                                                      QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

// Loads that the page starts itself change nothing: it would ask, load itself and ask again.
bool BrowserPage::MayAsk(const QUrl& origin)
{
    if (questions < questionsUntilMuted) {
        ++questions;
        return true;
    }
    if (questions == questionsUntilMuted) {
        ++questions; // said once
        WbToast::Show(
            QStringLiteral("网页 %1 反复提问，不再显示它的问题，直到您重新打开网页").arg(origin.host()),
            ToastWarning);
    }
    return false;
}

bool BrowserPage::javaScriptPrompt(const QUrl&, const QString&, const QString&, QString*)
{
    return false;
}

void BrowserPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString&, int, const QString&)
{
    // What pages write there is nobody's business here.
}
