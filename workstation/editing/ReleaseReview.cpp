// SPDX-License-Identifier: Apache-2.0

#include "ReleaseReview.h"

#include "TakenAlongDialog.h"

#include <RpaAppData/RpaAppDataNotify.h>
#include <RpaCore/RpaAppKind.h>
#include <RpaEditorLogic/RpaEditorLogic.h>

#include <QApplication>
#include <QEvent>
#include <QTimer>

#include <memory>

namespace
{
void TakeOut(RpaAppData& app, const QVector<TakenAlong>& entries)
{
    for (const TakenAlong& entry : entries)
        entry.TakeOut(app);
    if (!entries.isEmpty())
        app.SetModified(true);
}

QString ActOf(const GrayOrReleaseRequest& request)
{
    return request.GetPublishType() == AppReleaseGray ? QStringLiteral("灰度") : QStringLiteral("上线");
}
} // namespace

ReleaseReview::ReleaseReview(QWidget* over) : QObject(over), owner(over)
{
    connect(RpaAppDataNotify::Instance(), &RpaAppDataNotify::SigReplaced, this, [this](RpaAppData* loaded) {
        apps.removeAll(nullptr);
        apps.append(loaded);
    });
    RpaEditorLogic::Instance()->SetReleaseReview(this);
    qApp->installEventFilter(this);
}

ReleaseReview::~ReleaseReview()
{
    RpaEditorLogic::Instance()->SetReleaseReview(nullptr);
}

// Others that are read meanwhile do not stay.
RpaAppData* ReleaseReview::GetApp() const
{
    for (int index = apps.size() - 1; index >= 0; --index)
        if (apps.at(index))
            return apps.at(index);
    return nullptr;
}

void ReleaseReview::Review(const GrayOrReleaseRequest& request,
                           const std::function<void(const QString&)>& decided)
{
    // What a gray version holds went out when it was released; what is edited beside it does not go along.
    const QPointer<RpaAppData> app(GetApp());
    const bool isShown = app && app->GetOrigin().versionId == request.GetSnapshotId() && !app->GetModified();
    const QVector<TakenAlong> entries = isShown ? TakenAlong::Of(*app) : QVector<TakenAlong>();
    if (entries.isEmpty()) {
        decided(QString());
        return;
    }
    const QString act = ActOf(request);
    auto* dialog = new TakenAlongDialog(entries, act, owner);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    const auto refusal = std::make_shared<QString>(QStringLiteral("已取消，没有%1").arg(act));
    connect(dialog, &QDialog::accepted, this, [app, dialog, refusal, act] {
        const QVector<TakenAlong> out = dialog->GetTakenOut();
        if (app)
            TakeOut(*app, out);
        *refusal = out.isEmpty() ? QString()
                                 : QStringLiteral("已修改 %1 项数据，请保存后再%2").arg(out.size()).arg(act);
    });
    // However it ends, also together with the editor: every release is answered.
    connect(dialog, &QObject::destroyed, RpaAppDataNotify::Instance(),
            [decided, refusal] { decided(*refusal); });
    dialog->open();
}

bool ReleaseReview::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Show || event->spontaneous() || !watched->inherits("RpaTemplateExportDlg"))
        return false;
    exporting = qobject_cast<QDialog*>(watched);
    QTimer::singleShot(0, this, &ReleaseReview::ReviewExport);
    return false;
}

void ReleaseReview::ReviewExport()
{
    const QPointer<RpaAppData> app(GetApp());
    const QVector<TakenAlong> entries = app ? TakenAlong::Of(*app) : QVector<TakenAlong>();
    if (!exporting || entries.isEmpty())
        return;
    auto* dialog = new TakenAlongDialog(entries, QStringLiteral("导出"), exporting);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [app, dialog] {
        if (app)
            TakeOut(*app, dialog->GetTakenOut());
    });
    connect(dialog, &QDialog::rejected, exporting, &QDialog::reject);
    dialog->open();
}
