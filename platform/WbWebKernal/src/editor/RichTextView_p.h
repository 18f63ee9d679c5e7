// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RichDocument_p.h"

#include <QTextEdit>

// The page on which the author writes. Takes in pasted and dropped content cleaned, opens links on
// Ctrl+click.
class RichTextView : public QTextEdit
{
    Q_OBJECT

public:
    explicit RichTextView(QWidget* parent = nullptr);

    // Shows another text; undo steps are forgotten. A text that cannot be shown as it is shows its words,
    // which cannot be written in, and GetProblem() says why.
    void LoadText(const QString& text);
    QString GetProblem() const { return problem; }
    // All of the words of such a text are there.
    bool IsComplete() const { return complete; }

    RichDocument* Document() const { return current; }

    // Inserts pictures scaled to the page; one undo step. False when it is no picture or the text is full of
    // them.
    bool InsertPicture(const QString& name);
    bool InsertPictureFile(const QString& path);

    // Inserts HTML of another program, reduced to what the text may hold.
    void InsertForeignHtml(const QString& html);

    // Colours of links follow the theme.
    void RecolourLinks();

signals:
    void SigDocumentReplaced();
    void SigLinkActivated(const QString& address);
    void SigRefused(const QString& reason);

protected:
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;
    QMimeData* createMimeDataFromSelection() const override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool event(QEvent* event) override;

private:
    void ReplaceDocument(std::unique_ptr<RichDocument> document);
    bool InsertParagraphBehindHeading();
    bool LeaveEmptyItem();
    bool HandleTab(bool back);
    QString LinkAt(const QPoint& position) const;
    void Paste(const QMimeData& source);
    void PastePlainly(const QString& text);

    RichDocument* current = nullptr;
    QString problem;
    bool complete = true;
};
