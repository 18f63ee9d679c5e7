#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QObject>
#include <QString>

#include <functional>

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
    using Size = std::function<qint64()>;

    // what: as the user calls the text ("代码").
    WbTextLimit(QPlainTextEdit* edit, const QString& what);
    // For a text that is kept in a form of its own, whose bytes size tells; whoever makes that form calls
    // Check() when it has changed.
    WbTextLimit(QTextEdit* edit, const QString& what, const Size& size);

    void SetMostBytes(int bytes) { mostBytes = bytes; }

    // False when the last edit was undone.
    bool Check();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QTextDocument* Document() const;
    bool HasSelection() const;
    bool IsFull() const;
    void Tell() const;

    QPlainTextEdit* const plain = nullptr;
    QTextEdit* const rich = nullptr;
    const QString what;
    const Size sizeOf;
    int mostBytes;
    bool isUndoing = false;
};
