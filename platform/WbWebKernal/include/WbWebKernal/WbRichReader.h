// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbWebKernal/WbWebKernalExport.h>

#include <QString>
#include <QWidget>

#include <memory>

// Shows a text of WbRichEditor to a reader, under the same limits. Nothing is ever fetched for it; its links
// (http, https, mailto) open in the user's browser, after a click only. GUI thread only.
class WBWEBKERNAL_EXPORT WbRichReader : public QWidget
{
    Q_OBJECT

public:
    explicit WbRichReader(QWidget* parent = nullptr);
    ~WbRichReader() override;

    // Shows another text: HTML or plain text of anybody. Of a text that would take too long to lay out only
    // the words are shown, with the reason above them.
    void ShowText(const QString& text);

protected:
    void changeEvent(QEvent* event) override;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
