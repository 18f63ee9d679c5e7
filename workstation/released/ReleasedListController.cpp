// SPDX-License-Identifier: Apache-2.0

#include "ReleasedListController.h"

#include "ReleasedAppModel.h"
#include "ReleasedListPage.h"

#include <RpaServiceClient/invitations/RedeemInvitationRequest.h>
#include <RpaServiceClient/releases/ListGrayAppsRequest.h>
#include <RpaServiceClient/releases/ListOnlineAppsRequest.h>
#include <WbBaseUI/WbToast.h>

ReleasedListController::ReleasedListController(AppPageHead::Tab shown, ReleasedAppModel* apps,
                                               ReleasedListPage* listPage)
    : tab(shown), model(apps), page(listPage)
{
}

void ReleasedListController::Refresh()
{
    // A list that is on the screen stays there until the new one has come.
    if (model->rowCount() == 0)
        page->ShowLoading();
    const quint64 refresh = ++lastRefresh;
    const auto show = [this,
                       refresh](const VersionServiceResult<QVector<VersionServiceReleasedApp>>& result) {
        if (refresh != lastRefresh)
            return;
        if (!result.success) {
            page->ShowFailed(result.errorDesc);
            return;
        }
        model->SetReleasedApps(result.value);
        page->ShowApps();
        page->SelectApp(std::exchange(selectNext, QString()));
    };
    if (tab == AppPageHead::Online)
        client.Send(ListOnlineAppsRequest{}, this, show);
    else
        client.Send(ListGrayAppsRequest{}, this, show);
}

void ReleasedListController::Redeem(const QString& code)
{
    client.Send(RedeemInvitationRequest{code}, this,
                [this](const VersionServiceResult<VersionServiceReleasedApp>& result) {
                    page->ShowRedeemed(result.success ? QString() : result.errorDesc);
                    if (result.success) {
                        WbToast::Show(QStringLiteral("已可以试用“%1”").arg(result.value.app.name),
                                      ToastSuccess);
                        selectNext = result.value.app.id;
                        Refresh();
                    }
                });
}

void ReleasedListController::Forget()
{
    ++lastRefresh;
    model->SetReleasedApps({});
}
