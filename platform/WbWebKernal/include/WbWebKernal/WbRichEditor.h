// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbWebKernal/WbWebKernalExport.h>

#include <QString>
#include <QWidget>

#include <memory>

// Rich-text editor with its own formatting bar. The text is a small, clean subset of HTML: paragraphs,
// headings, lists, tables, inline formats, colours, links (http, https, mailto) and pictures embedded as data
// URIs. Nothing is ever fetched for it. GUI thread only.
class WBWEBKERNAL_EXPORT WbRichEditor : public QWidget
{
    Q_OBJECT

public:
    explicit WbRichEditor(QWidget* parent = nullptr);
    ~WbRichEditor() override;

    // Replaces the content and forgets the undo steps. The text is what SigTextChanged delivered earlier,
    // other HTML, or plain text; anything unsafe or unknown in it is left out from what is shown. Of a text
    // that would take too long to lay out only the words are shown, with the reason; they can be edited when
    // the author says so.
    void Init(const QString& text);

    // The current content as SigTextChanged delivers it; after Init and before any edit, exactly what was
    // given.
    QString GetText() const;

signals:
    // The full current text, after each change.
    // Not emitted by Init, by moving the cursor, or by an act that leaves the text as it was.
    void SigTextChanged(const QString& text);

protected:
    void changeEvent(QEvent* event) override;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
