#pragma once

#include "RichImages_p.h"

#include <QSharedPointer>
#include <QTextDocument>

// A document that fetches nothing: pictures come from its own store, every other resource does not exist.
class RichDocument : public QTextDocument
{
    Q_OBJECT

public:
    explicit RichDocument(QSharedPointer<RichImages> pictures, QObject* parent = nullptr);

    RichImages& Images() const { return *images; }

    // Loads HTML from outside through the screen; undo steps are forgotten.
    void LoadHtml(const QString& html);

protected:
    QVariant loadResource(int type, const QUrl& name) override;

private:
    QSharedPointer<RichImages> images;
};
