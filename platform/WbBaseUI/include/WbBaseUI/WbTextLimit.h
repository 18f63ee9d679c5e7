// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QObject>
#include <QString>

class QPlainTextEdit;
class QTextDocument;
class QTextEdit;

// Keeps a text that an author writes within what an app may hold (ContentLimits::textBytes). Typing into a
// full text is not taken; any other edit that makes it too long (paste, drop, replace all) is undone as a
// whole. A notice names the text, and what was there before stays. A text that was too long when it was
// loaded is left alone. Belongs to its edit. GUI thread only.
class WBBASEUI_EXPORT WbTextLimit : public QObject
{
    Q_OBJECT

public:
    // what: as the user calls the text ("代码").
    WbTextLimit(QPlainTextEdit* edit, const QString& what);
    // For a text that is kept in a form of its own: whoever makes that form gives it to Load() at first and
    // to Check() after each change.
    WbTextLimit(QTextEdit* edit, const QString& what);

    // Another limit than ContentLimits::textBytes, in bytes of UTF-8; counts from the next edit.
    void SetMostBytes(int bytes) { mostBytes = bytes; }

    // The text as it is loaded: it may be too long already.
    void Load(const QString& kept) { size = BytesOf(kept); }
    // False when the last edit was undone; the change that this makes may be passed over.
    bool Check(const QString& kept);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QTextDocument* Document() const;
    bool HasSelection() const;
    qint64 BytesOf(const QString& text) const;
    void CheckPlain();
    void TakeBack();
    void Tell() const;

    QPlainTextEdit* const plain = nullptr;
    QTextEdit* const rich = nullptr;
    const QString what;
    int mostBytes;
    qint64 size = 0; // may be more than it is while far from the limit
    bool isUndoing = false;
};
