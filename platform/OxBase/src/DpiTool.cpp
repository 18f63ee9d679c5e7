// SPDX-License-Identifier: Apache-2.0

#include <OxBase/DpiTool.h>
#include <OxBase/IDpiAdapter.h>

#include <QVector>

namespace
{
constexpr qreal smallestScale = 0.5;
constexpr qreal largestScale = 4.0;

qreal currentScale = 1.0;

QVector<IDpiAdapter*>& Adapters()
{
    static QVector<IDpiAdapter*> adapters;
    return adapters;
}
} // namespace

int DpiTool::ScaleDefault(int length)
{
    return qRound(length * currentScale);
}

qreal DpiTool::GetScale()
{
    return currentScale;
}

void DpiTool::SetScale(qreal scale)
{
    const qreal bounded = qBound(smallestScale, scale, largestScale);
    if (qFuzzyCompare(bounded, currentScale))
        return;

    currentScale = bounded;
    // An adapter may create or destroy others while it adjusts.
    const QVector<IDpiAdapter*> told = Adapters();
    for (IDpiAdapter* adapter : told)
        if (Adapters().contains(adapter))
            adapter->AdjustForDpi();
}

void DpiTool::Register(IDpiAdapter* adapter)
{
    if (adapter && !Adapters().contains(adapter))
        Adapters().append(adapter);
}

void DpiTool::Unregister(IDpiAdapter* adapter)
{
    Adapters().removeOne(adapter);
}
