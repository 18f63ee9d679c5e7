// SPDX-License-Identifier: Apache-2.0

#include "PackagePreparation.h"

#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaPackage/PackageService.h>
#include <WbBaseUI/WbToast.h>

#include <chrono>
#include <utility>

namespace
{
// Mostly all packages are there, and a notice would only outlast the wait.
constexpr std::chrono::milliseconds shortWait{600};

void Log(RpaLogLevel level, const QString& text)
{
    RpaEngineModule::Instance()->GetLogManager()->Append(level, text);
}
} // namespace

PackagePreparation::PackagePreparation(PackageService* service, QObject* parent)
    : QObject(parent), packages(service)
{
    RpaEngineModule::Instance()->SetPreparation(this);
    notice.setSingleShot(true);
    notice.setInterval(shortWait);
    connect(&notice, &QTimer::timeout, this, &PackagePreparation::SlotTellWait);
    connect(packages, &PackageService::SigPendingChanged, this, &PackagePreparation::SlotPendingChanged);
    connect(packages, &PackageService::SigProgress, this, &PackagePreparation::SlotProgress);
    connect(packages, &PackageService::SigInstallationEnded, this, &PackagePreparation::SlotEnded);
}

PackagePreparation::~PackagePreparation()
{
    RpaEngineModule::Instance()->SetPreparation(nullptr);
}

void PackagePreparation::SlotPendingChanged()
{
    const bool now = packages->IsAwaited();
    if (std::exchange(waits, now) == now)
        return;
    if (now)
        notice.start();
    else
        notice.stop();
    RpaEngineModule::Instance()->SetWaiting(now);
}

void PackagePreparation::SlotTellWait()
{
    WbToast::Show(
        QStringLiteral("正在安装运行需要的扩展包，完成后自动运行；点击“停止”可以取消，进度见运行日志"),
        ToastInformation);
}

void PackagePreparation::SlotProgress(int step, int steps, const QString& text)
{
    Log(RpaLogLevel::Info, QStringLiteral("扩展包（%1/%2）：%3").arg(step).arg(steps).arg(text));
}

void PackagePreparation::SlotEnded(const QString& problem)
{
    if (!problem.isEmpty())
        Log(RpaLogLevel::Warning, QStringLiteral("扩展包：%1").arg(problem));
    if (std::exchange(stopped, false))
        WbToast::Show(QStringLiteral("已取消安装扩展包，流程没有运行"), ToastInformation);
}

QString PackagePreparation::GetRefusal()
{
    if (packages->GetPendingCount() > 0)
        return QStringLiteral("正在安装扩展包，完成后请再次运行");
    if (!packages->IsCut())
        return QString();
    packages->InstallCurrent();
    return QStringLiteral("扩展包上次没有安装完，正在继续安装，完成后请再次运行");
}

void PackagePreparation::Stop()
{
    stopped = true;
    packages->Cancel();
}

void PackagePreparation::Leave()
{
    if (waits)
        packages->Cancel();
}
