// SPDX-License-Identifier: Apache-2.0

// The list of templates of a full folder: vetting the files and filling the list, beside a bare listing of
// the folder and reading of the same files.

#include "FrameTimes.h"
#include "RpaTemplateData.h"
#include "RpaTemplateFile.h"
#include "RpaTemplateSelectDlg.h"
#include "TemplateKeeper.h"

#include <RpaAppData/RpaAppData.h>
#include <WbBaseUI/WbTheme.h>

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace
{
constexpr int templateCount = 500;
constexpr int rounds = 15;

void Write(const QString& fileName, const QByteArray& content)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(fileName));
}

QString FileName(const QString& folder, int number)
{
    return QStringLiteral("%1/模板%2").arg(folder).arg(number, 3, 10, QLatin1Char('0'));
}

// The size of a file.
int WriteTemplates(const QString& folder)
{
    RpaAppData app;
    app.InitDefault();
    RpaTemplateData record(nullptr);
    record.SetTemplateDirection(QStringLiteral("读取 CSV 文件，按一列分组，对金额列求和。"));
    record.SetAppData(app.ToJson());
    QByteArray content;
    for (int i = 0; i < templateCount; ++i) {
        record.SetTemplateName(QStringLiteral("模板%1").arg(i));
        content = RpaTemplateFile::Encode(record);
        Write(FileName(folder, i), content);
    }
    return content.size();
}

template <typename Act>
void MeasureRounds(const char* what, Act act)
{
    QVector<double> times;
    for (int i = 0; i < rounds; ++i)
        times << FrameTimes::Measure(act);
    FrameTimes::Print(what, FrameTimes::Of(times));
}

void Fill(const QString& folder)
{
    RpaTemplateSelectDlg dialog(nullptr);
    dialog.LoadTemplates(folder);
    if (dialog.findChild<QComboBox*>()->count() != templateCount)
        qFatal("%d templates are listed", dialog.findChild<QComboBox*>()->count());
}

void MeasureList(const QString& folder, const QString& dataDir)
{
    const TemplateKeeper keeper({folder}, dataDir);
    std::printf("template list, %d files\n", templateCount);
    MeasureRounds("vet", [&] { keeper.GetFitFolder(folder); });
    MeasureRounds("fill", [&] { Fill(folder); });
    MeasureRounds("vet and fill", [&] { Fill(keeper.GetFitFolder(folder)); });
    // One file too many: the fit ones are shown in a folder of their own.
    Write(FileName(folder, 999), "x");
    MeasureRounds("vet 501 files and fill", [&] { Fill(keeper.GetFitFolder(folder)); });
    QFile::remove(FileName(folder, 999));
}

void MeasureBareReading(const QString& folder)
{
    std::printf("QDir and QFile, %d files\n", templateCount);
    MeasureRounds("list and read", [&] {
        qint64 bytes = 0;
        const QStringList names = QDir(folder).entryList(QDir::Files | QDir::Readable, QDir::Name);
        for (const QString& name : names) {
            QFile file(folder + QLatin1Char('/') + name);
            if (file.open(QIODevice::ReadOnly))
                bytes += file.readAll().size();
        }
        if (names.size() != templateCount || bytes == 0)
            qFatal("%d files, %lld bytes", names.size(), static_cast<long long>(bytes));
    });
}
} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    const QTemporaryDir home;
    const QString folder = home.filePath(QStringLiteral("visual"));
    const QString data = home.filePath(QStringLiteral("data"));
    if (!QDir().mkpath(folder) || !QDir().mkpath(data))
        qFatal("no folder for the templates");
    std::printf("%d bytes in a file\n", WriteTemplates(folder));
    MeasureList(folder, data);
    MeasureBareReading(folder);
    return 0;
}
