// SPDX-License-Identifier: Apache-2.0

#include "Gallery.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/PackagedMsgBox.h>
#include <WbBaseUI/WbComboBox.h>
#include <WbBaseUI/WbTheme.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QListView>
#include <QPixmap>
#include <QTimer>
#include <QWidget>

#include <RpaResources.h>
#include <memory>

namespace
{
int faults = 0;
QtMessageHandler defaultHandler = nullptr;

void CountWarnings(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const bool aboutPlatform = text.startsWith(QLatin1String("This plugin does not support"));
    if (type != QtDebugMsg && type != QtInfoMsg && !aboutPlatform)
        ++faults;
    defaultHandler(type, context, text);
}

// A picture of one colour shows nothing.
bool IsBlank(const QImage& image)
{
    const QRgb first = image.pixel(0, 0);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != first && x > 0 && y > 0 && x + 1 < image.width() &&
                y + 1 < image.height())
                return false;
    }
    return true;
}

void Save(QWidget* widget, const QString& path)
{
    const QPixmap picture = widget->grab();
    if (IsBlank(picture.toImage()) || !picture.save(path))
        qWarning("no picture for %s", qPrintable(path));
}

// Animations run on the clock; the picture is taken when they are over.
void LetAnimationsEnd()
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 400)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 20);
}

void DrawMessageBox(const QString& path)
{
    QTimer::singleShot(0, qApp, [path] {
        QWidget* box = QApplication::activeModalWidget();
        QCoreApplication::processEvents();
        Save(box, path);
        qobject_cast<QDialog*>(box)->reject();
    });
    PackagedMsgBox::question(
        QStringLiteral("仅支持上线原灰度版本内容，针对当前灰度版本修改将忽略，确定发布上线吗？"), nullptr,
        QMessageBox::Yes | QMessageBox::No);
}

void DrawPopup(const QString& path)
{
    WbComboBox combo;
    for (int row = 1; row <= 40; ++row)
        combo.addItem(QStringLiteral("版本%1").arg(row));
    combo.show();
    combo.showPopup();
    QCoreApplication::processEvents();
    Save(combo.view()->window(), path);
    combo.hidePopup();
}

void DrawAll(const QDir& folder, const QString& suffix)
{
    for (const GalleryPage& page : GalleryPages()) {
        const std::unique_ptr<QWidget> widget(page.make());
        widget->show();
        widget->activateWindow();
        QCoreApplication::processEvents();
        if (page.name == QLatin1String("toasts") || page.name == QLatin1String("loading"))
            LetAnimationsEnd();
        Save(widget.get(), folder.filePath(page.name + suffix));
    }
    DrawMessageBox(folder.filePath(QStringLiteral("question") + suffix));
    DrawPopup(folder.filePath(QStringLiteral("popup") + suffix));
}
} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    defaultHandler = qInstallMessageHandler(&CountWarnings);
    QCommandLineParser parser;
    const QCommandLineOption out(QStringLiteral("out"), QStringLiteral("Folder for the pictures."),
                                 QStringLiteral("DIR"), QStringLiteral("gallery"));
    parser.addOption(out);
    parser.process(app);
    const QDir folder(parser.value(out));
    folder.mkpath(QStringLiteral("."));
    RpaResources::Init();

    for (const int percent : {100, 150, 200}) {
        DpiTool::SetScale(percent / 100.0);
        for (const auto scheme : {WbTheme::Scheme::Light, WbTheme::Scheme::Dark}) {
            WbTheme::Instance()->Apply(scheme);
            const QString name =
                scheme == WbTheme::Scheme::Light ? QStringLiteral("light") : QStringLiteral("dark");
            DrawAll(folder, QStringLiteral("-%1-%2.png").arg(name).arg(percent));
        }
    }
    return faults == 0 ? 0 : 1;
}
