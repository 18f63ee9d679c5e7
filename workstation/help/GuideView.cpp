// SPDX-License-Identifier: Apache-2.0

#include "GuideView.h"

#include "GuideHtml.h"
#include "GuidePages.h"

#include <QAbstractTextDocumentLayout>
#include <QImage>
#include <QResizeEvent>
#include <QScrollBar>
#include <QTextBlock>

namespace
{
constexpr int pageMargin = 20;
}

GuideView::GuideView(QWidget* parent) : QTextBrowser(parent)
{
    document()->setDocumentMargin(pageMargin);
    setOpenExternalLinks(false);
    setFrameShape(QFrame::NoFrame);
    // source() still names the page before when this is announced.
    connect(this, &QTextBrowser::sourceChanged, this, [this](const QUrl& url) { page = url.fileName(); });
}

void GuideView::ShowPage(const QString& file, const QString& heading)
{
    setSource(QUrl(GuidePages::FolderAddress() + file));
    verticalScrollBar()->setValue(0);
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() > 1 && block.text() == heading) {
            setTextCursor(QTextCursor(block));
            verticalScrollBar()->setValue(
                qRound(document()->documentLayout()->blockBoundingRect(block).top()));
            return;
        }
    }
}

void GuideView::setSource(const QUrl& name)
{
    QTextBrowser::setSource(name, QTextDocument::HtmlResource);
}

QVariant GuideView::loadResource(int type, const QUrl& name)
{
    QVariant loaded = QTextBrowser::loadResource(type, name);
    if (type == QTextDocument::HtmlResource)
        return GuideHtml::Of(QString::fromUtf8(loaded.toByteArray()));
    if (type != QTextDocument::ImageResource)
        return loaded;
    QImage image = loaded.type() == QVariant::ByteArray ? QImage::fromData(loaded.toByteArray())
                                                        : loaded.value<QImage>();
    const int room = viewport()->width() - 2 * pageMargin;
    if (image.isNull() || room <= 0)
        return loaded;
    const qreal ratio = devicePixelRatioF();
    const int width = qMin(image.width(), qRound(room * ratio));
    if (width < image.width())
        image = image.scaledToWidth(width, Qt::SmoothTransformation);
    image.setDevicePixelRatio(qMax(ratio, qreal(1)));
    return image;
}

void GuideView::resizeEvent(QResizeEvent* event)
{
    QTextBrowser::resizeEvent(event);
    if (viewport()->width() == shownWidth || source().isEmpty())
        return;
    shownWidth = viewport()->width();
    const int place = verticalScrollBar()->value();
    reload();
    verticalScrollBar()->setValue(place);
}
