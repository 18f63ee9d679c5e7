#pragma once

#include <WbWebKernal/WbWebKernalExport.h>

#include <QString>
#include <QWidget>

#include <memory>

// Rich-text editor with its own formatting bar.
class WBWEBKERNAL_EXPORT WbRichEditor : public QWidget
{
    Q_OBJECT

public:
    explicit WbRichEditor(QWidget* parent = nullptr);
    ~WbRichEditor() override;

    // Replaces the content. The text is what SigTextChanged delivered earlier; anything unsafe in it is left out.
    void Init(const QString& text);

    // The current content as SigTextChanged delivers it; after Init and before any edit, exactly what was given.
    QString GetText() const;

signals:
    // The full current text, after each change.
    void SigTextChanged(const QString& text);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
