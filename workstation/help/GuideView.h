// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QTextBrowser>

// A page of the guide; its pictures are never wider than the view.
class GuideView : public QTextBrowser
{
    Q_OBJECT

public:
    explicit GuideView(QWidget* parent = nullptr);

    // The name of the page that is shown.
    const QString& GetPage() const { return page; }

    // The heading comes to the top; the top of the page when there is none of that text.
    void ShowPage(const QString& file, const QString& heading);

    void setSource(const QUrl& name) override;
    QVariant loadResource(int type, const QUrl& name) override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QString page;
    int shownWidth = 0;
};
