// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QWidget>

class QLabel;
class WbPushButton;

// What stands in the place of a page: what the browser is for, or why a page is not there.
class BrowserNotice : public QWidget
{
    Q_OBJECT

public:
    explicit BrowserNotice(QWidget* parent = nullptr);

    // An author is told to open and capture, a user only what happens here.
    void SetForAuthor(bool author);
    void ShowStart();
    void ShowProblem(const QString& title, const QString& reason, bool mayRetry);

signals:
    void SigRetry();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void Show(const QString& icon, const QString& title, const QString& text);
    void ShowIcon();

    bool forAuthor = true;
    bool startShown = true;
    QString iconName;
    QLabel* icon;
    QLabel* title;
    QLabel* text;
    WbPushButton* retry;
};
