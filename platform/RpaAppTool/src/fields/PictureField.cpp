// SPDX-License-Identifier: Apache-2.0

#include "PictureField_p.h"

#include <OxBase/DpiTool.h>

#include <QFileInfo>
#include <QImageReader>
#include <QLabel>
#include <QPixmap>
#include <QPointer>

#include <memory>

namespace
{
constexpr qint64 pictureBytesAtMost = 16 * 1024 * 1024;
constexpr qint64 pixelsAtMost = 40 * 1000 * 1000;
constexpr int emptyHeight = 30; // as a field of one line
const QSize seenAtMost(480, 320);

bool IsWebFormat(const QByteArray& format)
{
    return format == "png" || format == "jpeg" || format == "gif" || format == "webp" || format == "bmp";
}

// Why there is no picture; empty with one.
QString Read(const QString& path, const QSize& room, QImage& image)
{
    const QFileInfo info(path);
    if (!info.isFile())
        return QStringLiteral("找不到图片文件");
    if (info.size() > pictureBytesAtMost)
        return QStringLiteral("图片超过 16 MB，无法显示");
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    // The header is asked first: a small file may claim a picture that fills the memory.
    const QSize size = IsWebFormat(reader.format()) ? reader.size() : QSize();
    if (size.isEmpty())
        return QStringLiteral("文件不是图片，无法显示");
    if (qint64(size.width()) * size.height() > pixelsAtMost)
        return QStringLiteral("图片超过 4000 万像素，无法显示");
    image = reader.read();
    if (image.isNull())
        return QStringLiteral("图片已损坏，无法显示");
    if (image.width() > room.width() || image.height() > room.height())
        image = image.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return {};
}
} // namespace

PictureField::PictureField(const QString& title) : label(new QLabel)
{
    reading.setMaxThreadCount(1);
    label->setMinimumHeight(DpiTool::ScaleDefault(emptyHeight));
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setAccessibleName(title);
    AddInput(label);
    Show(0, QImage(), QStringLiteral("运行后显示图片"));
}

PictureField::~PictureField()
{
    reading.clear();
    reading.waitForDone();
}

void PictureField::ShowValue(const QVariant& value)
{
    ++newest;
    if (value.toString().isEmpty())
        Show(newest, QImage(), QStringLiteral("运行后显示图片"));
    else
        Load(value.toString());
}

void PictureField::Load(const QString& path)
{
    // Only the newest one is worth the work.
    reading.clear();
    const QSize room(DpiTool::ScaleDefault(seenAtMost.width()), DpiTool::ScaleDefault(seenAtMost.height()));
    const QPointer<PictureField> guard(this);
    reading.start([guard, path, room, order = newest] {
        auto image = std::make_shared<QImage>();
        const QString problem = Read(path, room, *image);
        // It lives: its end waits for this.
        QMetaObject::invokeMethod(
            guard.data(), [guard, order, image, problem] { guard->Show(order, *image, problem); },
            Qt::QueuedConnection);
    });
}

void PictureField::Show(int order, const QImage& image, const QString& problem)
{
    if (order != newest)
        return;
    if (image.isNull()) {
        label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        label->setText(problem);
        return;
    }
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setPixmap(QPixmap::fromImage(image));
}
