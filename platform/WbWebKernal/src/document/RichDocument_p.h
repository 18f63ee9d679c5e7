// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RichImages_p.h"

#include <QColor>
#include <QFont>
#include <QSharedPointer>
#include <QTextDocument>

// A document that fetches nothing: pictures come from its own store, every other resource does not exist.
class RichDocument : public QTextDocument
{
    Q_OBJECT

public:
    explicit RichDocument(QSharedPointer<RichImages> pictures, QObject* parent = nullptr);

    RichImages& Images() const { return *images; }

    // Font of the text and colour of its links; for links that are there already see RecolourLinks.
    void SetLook(const QFont& font, const QColor& link);
    void RecolourLinks(const QColor& link);

    // Loads HTML from outside through the screen; undo steps are forgotten. When the text would take too long
    // to lay out nothing is loaded, and the reason is given in words for its reader.
    QString LoadHtml(const QString& html);

    // Loads words without any format; undo steps are forgotten.
    void LoadWords(const QString& words);

protected:
    QVariant loadResource(int type, const QUrl& name) override;

private:
    void SetMarginsOfAll();

    QSharedPointer<RichImages> images;
};
