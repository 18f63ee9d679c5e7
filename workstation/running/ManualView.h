#pragma once

#include <QTextBrowser>

// Shows the usage instructions of an app. They come from its author: nothing is ever fetched for them, and
// links open in the user's browser, after a click only.
class ManualView : public QTextBrowser
{
    Q_OBJECT

public:
    explicit ManualView(QWidget* parent = nullptr);

    QVariant loadResource(int type, const QUrl& name) override;
};
