// SPDX-License-Identifier: Apache-2.0

#include "RichHtmlSanitizer_p.h"
#include "RichNotice_p.h"
#include "RichOpening_p.h"

#include <WbWebKernal/WbRichReader.h>

#include <QDesktopServices>
#include <QEvent>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

#include <utility>

namespace
{
// Not even the documents that a browser makes for itself fetch anything.
class ReaderView : public QTextBrowser
{
public:
    QVariant loadResource(int, const QUrl&) override { return {}; }
};
} // namespace

class WbRichReader::Private
{
public:
    explicit Private(WbRichReader* reader) : notice(new RichNotice), view(new ReaderView)
    {
        auto* layout = new QVBoxLayout(reader);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        layout->addWidget(notice);
        layout->addWidget(view);
        view->setObjectName(QStringLiteral("viewManual"));
        view->setAccessibleName(QStringLiteral("使用说明"));
        view->setOpenLinks(false);
        view->setFrameShape(QFrame::NoFrame);
        reader->setFocusProxy(view);
        QObject::connect(view, &QTextBrowser::anchorClicked, reader, [](const QUrl& link) {
            if (IsAllowedLink(link.toString(QUrl::FullyEncoded)))
                QDesktopServices::openUrl(link);
        });
    }

    void Show(const QString& text)
    {
        OpenedText opened = OpenRichText(text, view->font(), view->palette().color(QPalette::Link));
        RichDocument* former = std::exchange(document, opened.document.release());
        document->setParent(view);
        view->setDocument(document);
        delete former;
        if (opened.problem.isEmpty()) {
            notice->hide();
            return;
        }
        const QString part = opened.complete ? QStringLiteral("文字") : QStringLiteral("文字的开头部分");
        notice->Show(QStringLiteral("使用说明%1，这里只显示它的%2。").arg(opened.problem, part), QString());
    }

    RichNotice* const notice;
    QTextBrowser* const view;
    RichDocument* document = nullptr;
};

WbRichReader::WbRichReader(QWidget* parent) : QWidget(parent), d(std::make_unique<Private>(this)) {}

WbRichReader::~WbRichReader() = default;

void WbRichReader::ShowText(const QString& text)
{
    d->Show(text);
}

void WbRichReader::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    const bool look = event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange;
    if (look && d && d->document) {
        const QColor link = palette().color(QPalette::Link); // its children get theirs later
        d->document->SetLook(font(), link);
        d->document->RecolourLinks(link);
    }
}
