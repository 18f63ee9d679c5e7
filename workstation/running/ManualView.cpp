#include "ManualView.h"

#include <QDesktopServices>

namespace
{
// The picture that a data URI holds; empty for any other address.
QByteArray EmbeddedPicture(const QUrl& name)
{
    const QByteArray address = name.toEncoded();
    const int comma = address.indexOf(',');
    if (!address.startsWith("data:image/") || comma < 0 || !address.left(comma).endsWith(";base64")) {
        return {};
    }
    return QByteArray::fromBase64(QByteArray::fromPercentEncoding(address.mid(comma + 1)));
}
} // namespace

ManualView::ManualView(QWidget* parent) : QTextBrowser(parent)
{
    setObjectName(QStringLiteral("viewManual"));
    setAccessibleName(QStringLiteral("使用说明"));
    setOpenLinks(false);
    setFrameShape(QFrame::NoFrame);
    connect(this, &QTextBrowser::anchorClicked, this, [](const QUrl& link) {
        const QString scheme = link.scheme().toLower();
        if (scheme == QLatin1String("http") || scheme == QLatin1String("https") ||
            scheme == QLatin1String("mailto")) {
            QDesktopServices::openUrl(link);
        }
    });
}

QVariant ManualView::loadResource(int type, const QUrl& name)
{
    return type == QTextDocument::ImageResource ? QVariant(EmbeddedPicture(name)) : QVariant();
}
