// SPDX-License-Identifier: Apache-2.0

#include "KeyActs.h"

#include <WbBaseUI/WbToast.h>

namespace
{
// For an act of another page.
QString WhereItWorks(KeyPlaces places)
{
    if (places.testFlag(KeyPlace::Lists))
        return QStringLiteral("只能在应用列表中使用");
    return places.testFlag(KeyPlace::Run) ? QStringLiteral("只能在编辑或运行应用时使用")
                                          : QStringLiteral("只能在编辑应用时使用");
}
} // namespace

void KeyActs::Bind(KeyAct act, const Reason& whyNot, const Deed& deed)
{
    bindings.insert(static_cast<int>(act), {whyNot, deed});
}

QString KeyActs::WhyNot(KeyAct act) const
{
    const KeyPlaces places = KeyTable::RowOf(act).places;
    if (!places.testFlag(GetPlace()))
        return WhereItWorks(places);
    const auto binding = bindings.find(static_cast<int>(act));
    return binding == bindings.end() ? QStringLiteral("现在不可用") : binding->whyNot();
}

void KeyActs::Do(KeyAct act) const
{
    const QString reason = WhyNot(act);
    if (!reason.isEmpty()) {
        WbToast::Show(QStringLiteral("“%1”现在不能使用：%2").arg(KeyTable::RowOf(act).text, reason),
                      ToastWarning);
        return;
    }
    bindings.value(static_cast<int>(act)).deed();
}
