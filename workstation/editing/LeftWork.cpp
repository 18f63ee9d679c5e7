// SPDX-License-Identifier: Apache-2.0

#include "LeftWork.h"

#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaEditorLogic/SaveLedger.h>
#include <WbBaseUI/WbToast.h>

namespace
{
QString Describe(const VersionAct& act)
{
    switch (act.kind) {
    case VersionAct::Kind::Deletion:
        return QStringLiteral("删除版本“%1”").arg(act.versionName);
    case VersionAct::Kind::GrayRelease:
        return QStringLiteral("灰度版本“%1”").arg(act.versionName);
    case VersionAct::Kind::Publication:
        break;
    }
    return QStringLiteral("上线版本“%1”").arg(act.versionName);
}
} // namespace

LeftWork::LeftWork(std::function<bool(const QString& appId)> hasDraft, QObject* parent)
    : QObject(parent), keepsDraft(std::move(hasDraft))
{
    connect(RpaEditorLogic::Instance()->GetSaveLedger(), &SaveLedger::SigAbandonedSaveFailed, this,
            &LeftWork::TellFailedSave);
}

void LeftWork::Leave(const AppRecord& app)
{
    names.insert(app.id, app.name);
    QStringList acts;
    for (const VersionAct& act : RpaEditorLogic::Instance()->GetActsUnderWay(app.id))
        acts.append(Describe(act));
    if (!acts.isEmpty()) {
        WbToast::Show(QStringLiteral("离开应用“%1”时还没有结果：%2。重新打开该应用可以看到结果")
                          .arg(app.name, acts.join(QStringLiteral("、"))),
                      ToastWarning);
    }
}

void LeftWork::TellFailedSave(const QString& appId, const QString& versionName,
                              const QString& errorDesc) const
{
    const QString place = keepsDraft(appId)
                              ? QStringLiteral("未保存的内容在本机的草稿中，重新打开该应用时可以恢复")
                              : QString();
    QString reason = errorDesc;
    if (!reason.endsWith(QStringLiteral("。")) && !place.isEmpty())
        reason += QStringLiteral("。");
    WbToast::Show(QStringLiteral("应用“%1”的版本“%2”没有保存成功：%3%4")
                      .arg(names.value(appId, appId), versionName, reason, place),
                  ToastError);
}
