// SPDX-License-Identifier: Apache-2.0

#include "ToastWatcher.h"
#include "Tour.h"
#include "TourLook.h"
#include "WheelMaker.h"

#include <RpaPackage/IPackageService.h>
#include <RpaPackage/RpaPackageModule.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>

#include <atomic>
#include <memory>

// Extension packages: those that a visual process brings along, and one that an author installs from a folder
// of wheels for a program.

using namespace TourLook;

namespace
{
QString WheelFolder()
{
    const QDir home = QDir::home();
    QString folder = home.filePath(QStringLiteral("wheels of the office"));
    const QString program = QStringLiteral("def advice(stock, safe):\n"
                                           "    return '订购 %d' % max(0, safe - stock)\n");
    if (!home.mkpath(folder) ||
        !WheelMaker::Make(folder, QStringLiteral("stockrules"), QStringLiteral("1.2.0"), program))
        throw TourFailure(QStringLiteral("cannot write a wheel to %1").arg(folder));
    return folder;
}

QString PackageNote()
{
    const auto* note = VisibleAs<QLabel>("labelPackageNote");
    return note ? note->text() : QString();
}

QString PackageStatus()
{
    constexpr int statusColumn = 2;
    const auto* table = VisibleAs<QAbstractItemView>("tablePackages");
    return table ? table->model()->index(0, statusColumn).data().toString() : QString();
}
} // namespace

void Tour::RunWithPackages()
{
    d->Step(QStringLiteral("run-goes-on-after-its-packages"), [this] {
        const QString book = QDir::home().filePath(QStringLiteral("牌价.xlsx"));
        AddProcess(QStringLiteral("导出牌价"));
        AddStatement(QStringLiteral("新建工作簿"));
        AddStatement(QStringLiteral("追加一行"));
        FillField("values", QStringLiteral("[\"美元\", 7.2001]"));
        AddStatement(QStringLiteral("保存工作簿"));
        FillField("path", book);
        LetFirstToolRun(QStringLiteral("导出牌价"));
        auto answers = std::make_shared<std::atomic_int>(0);
        const IPackageService* service = d->OnGui([] { return RpaPackageModule::Instance()->GetService(); });
        const auto counting =
            QObject::connect(service, &IPackageService::SigInstallFinished, [answers] { ++*answers; });
        PressTool("开始");
        UntilLog(QStringLiteral("流程“导出牌价”运行完成"));
        UntilIdle(std::chrono::seconds(10));
        QObject::disconnect(counting);
        if (*answers != 1 || !QFileInfo(book).isFile())
            throw TourFailure(QStringLiteral("%1 answers of the package service").arg(*answers));
    });
    d->Step(QStringLiteral("captured-work-saved"), [this] {
        d->OnGui([this] { toasts->Clear(); });
        d->Click(QStringLiteral("save"), Named("pushButtonSave"));
        UntilToast(QStringLiteral("保存成功"));
    });
}

void Tour::WriteProgram(const QStringList& lines)
{
    GoToPage("pushButtonProcess");
    d->Click(QStringLiteral("the program"), Named("codeEdit"));
    d->Key(Qt::Key_A, Qt::ControlModifier);
    d->Key(Qt::Key_Delete);
    for (const QString& line : lines) {
        d->Type(line);
        d->Key(Qt::Key_Return);
    }
    d->Until(QStringLiteral("the program"), [lines] {
        auto* edit = VisibleAs<QPlainTextEdit>("codeEdit");
        return edit && edit->toPlainText().trimmed().endsWith(lines.last().trimmed());
    });
}

void Tour::UsePackages()
{
    const QString process = QStringLiteral("主流程");
    d->Step(QStringLiteral("program-without-its-package"), [=] {
        WriteProgram({QStringLiteral("import stockrules"), QString(),
                      QStringLiteral("rpa.log('建议：' + stockrules.advice(12, 20))")});
        PressTool("检查库存");
        UntilLog(QStringLiteral("流程“%1”运行失败").arg(process));
        UntilLog(QStringLiteral("stockrules"));
        UntilIdle(std::chrono::seconds(10));
    });
    d->Step(QStringLiteral("package-dialog"), [this] {
        d->UntilCalm();
        d->Click(QStringLiteral("packages"), Named("buttonPackages"));
        d->Until(QStringLiteral("an empty list"), [] { return Visible("emptyPackages") != nullptr; });
    });
    d->Step(QStringLiteral("package-folder-refused"), [this] {
        d->Click(QStringLiteral("the folder"), Named("editWheelFolder"));
        d->Type(QStringLiteral("/nowhere/wheels"));
        d->Key(Qt::Key_Return);
        d->Until(QStringLiteral("the refusal"), [] { return Visible("labelProblem") != nullptr; });
    });
    d->Step(QStringLiteral("package-named"), [this] {
        d->Click(QStringLiteral("the folder"), Named("editWheelFolder"));
        d->Key(Qt::Key_A, Qt::ControlModifier);
        d->Type(WheelFolder());
        d->Click(QStringLiteral("the package's name"), Named("editPackageName"));
        d->Type(QStringLiteral("stockrules"));
        d->Key(Qt::Key_Return);
        d->Until(QStringLiteral("the package"),
                 [] { return Visible("tablePackages") != nullptr && !Visible("labelProblem"); });
    });
    d->Step(QStringLiteral("package-being-installed"), [this] {
        d->Click(QStringLiteral("install"), Named("buttonInstallPackages"));
        d->Until(QStringLiteral("the progress"), [] {
            const auto* progress = VisibleAs<QProgressBar>("progressPackages");
            return progress && progress->value() >= 1 && PackageNote().contains(QStringLiteral("正在"));
        });
        d->TakePicture();
        d->Until(
            QStringLiteral("the end of the installation"),
            [] { return PackageNote() == QStringLiteral("所有扩展包均已安装"); }, std::chrono::seconds(90));
    });
    d->Step(QStringLiteral("package-installed"), [this] {
        d->Until(QStringLiteral("its state"), [] {
            return PackageStatus() == QStringLiteral("已安装 1.2.0") && !Visible("progressPackages");
        });
        d->TakePicture();
        d->Key(Qt::Key_Escape);
        d->Until(QStringLiteral("the dialog's end"), [] { return !QApplication::activeModalWidget(); });
    });
    d->Step(QStringLiteral("program-with-its-package"), [this] {
        PressTool("检查库存");
        UntilLog(QStringLiteral("建议：订购 8"));
        UntilIdle(std::chrono::seconds(10));
    });
    d->Step(QStringLiteral("program-stopped"), [=] {
        WriteProgram({QStringLiteral("while True:"), QStringLiteral("pass")});
        PressTool("检查库存");
        d->Click(QStringLiteral("stop"), [] { return ButtonWithText("停止"); });
        UntilIdle(std::chrono::seconds(1));
        UntilLog(QStringLiteral("流程“%1”已停止").arg(process));
    });
    d->Step(QStringLiteral("program-app-saved"), [this] {
        d->OnGui([this] { toasts->Clear(); });
        d->Click(QStringLiteral("save"), Named("pushButtonSave"));
        UntilToast(QStringLiteral("保存成功"));
        BackToList();
    });
}
