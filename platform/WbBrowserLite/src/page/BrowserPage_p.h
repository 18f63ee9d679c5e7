// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QUrl>
#include <QWebEnginePage>

class QWebEngineProfile;

// A page under the rules of the embedded browser: it may show itself and follow links of the web, nothing
// else.
class BrowserPage : public QWebEnginePage
{
    Q_OBJECT

public:
    BrowserPage(QWebEngineProfile* profile, QObject* parent);

    // A profile that forgets everything with itself.
    static QWebEngineProfile* CreateProfile(QObject* parent);

    // Where the load under way, or the last one, goes.
    QUrl GetDestination() const { return destination; }

    // Why the load under way cannot succeed, as far as it is known; empty when it is not.
    QString GetObstacle() const { return obstacle; }

    // The user goes somewhere: pages that were muted because they asked too often may ask again.
    void ForgetQuestions() { questions = 0; }

signals:
    // A page wanted to leave the web.
    void SigRefused(const QString& reason);
    // What was asked for last turned out to be a file, which is refused; the page before it stays.
    void SigDownload();

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
    QWebEnginePage* createWindow(WebWindowType type) override;
    bool certificateError(const QWebEngineCertificateError& error) override;
    void javaScriptAlert(const QUrl& origin, const QString& text) override;
    bool javaScriptConfirm(const QUrl& origin, const QString& text) override;
    bool javaScriptPrompt(const QUrl& origin, const QString& text, const QString& value,
                          QString* result) override;
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message, int line,
                                  const QString& source) override;

private:
    void ApplySettings();
    bool MayAsk(const QUrl& origin);

    QUrl destination;
    QString obstacle;
    int questions = 0; // since the user went somewhere
};
