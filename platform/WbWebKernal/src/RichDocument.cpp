#include "RichDocument_p.h"
#include "RichHtmlScreen_p.h"

#include <QUrl>

RichDocument::RichDocument(QSharedPointer<RichImages> pictures, QObject* parent)
    : QTextDocument(parent), images(std::move(pictures))
{
    setDocumentMargin(16);
    setDefaultStyleSheet(QStringLiteral("p { margin-top: 4px; margin-bottom: 4px; }"
                                        "h1 { margin-top: 12px; margin-bottom: 6px; }"
                                        "h2 { margin-top: 10px; margin-bottom: 5px; }"
                                        "h3 { margin-top: 8px; margin-bottom: 4px; }"
                                        "li { margin-top: 2px; margin-bottom: 2px; }"
                                        "table { border-collapse: collapse; }"));
}

void RichDocument::LoadHtml(const QString& html)
{
    setUndoRedoEnabled(false);
    setHtml(ScreenHtml(html, *images));
    setUndoRedoEnabled(true);
    setModified(false);
}

QVariant RichDocument::loadResource(int type, const QUrl& name)
{
    if (type != QTextDocument::ImageResource)
        return QVariant();
    return images->Image(name.toString());
}
