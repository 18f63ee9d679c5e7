// SPDX-License-Identifier: Apache-2.0

#include "RunFailureView.h"

#include "SpanWords.h"

#include <WbBaseUI/WbScaledForm.h>

#include <QHeaderView>
#include <QPixmap>

namespace
{
constexpr int placeRole = Qt::UserRole;
constexpr int pictureHeight = 160;
} // namespace

RunFailureView::RunFailureView(QWidget* parent) : QWidget(parent)
{
    ui.setupUi(this);
    WbScaledForm::Follow(this);
    ui.treeFailure->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    connect(ui.treeFailure, &QTreeWidget::itemActivated, this, &RunFailureView::Activate);
    connect(ui.treeFailure, &QTreeWidget::itemClicked, this, &RunFailureView::Activate);
}

void RunFailureView::ShowFailure(const RpaRunRecord& run, const RpaRunDetails& details)
{
    const bool failed = run.result == RpaRunResult::Failed;
    ui.treeFailure->clear();
    places.clear();
    ui.treeFailure->setVisible(failed);
    ui.labelNoFailure->setVisible(!failed || details.failure.IsEmpty());
    ui.labelNoFailure->setText(failed ? QStringLiteral("流程没有来得及说出失败时的变量。")
                                      : QStringLiteral("这次运行没有失败。"));
    ui.labelPicture->setVisible(failed);
    if (!failed)
        return;
    AddStack(run, details.failure);
    AddScopes(details.failure);
    AddLastSpans(details.spans);
    ShowPicture(details.picture);
    ui.treeFailure->resizeColumnToContents(1);
}

QTreeWidgetItem* RunFailureView::AddHeading(const QString& title)
{
    auto* heading = new QTreeWidgetItem(ui.treeFailure, {title});
    heading->setFirstColumnSpanned(true);
    heading->setExpanded(true);
    return heading;
}

void RunFailureView::AddPlace(QTreeWidgetItem* heading, const QStringList& texts, const RpaRunPlace& place)
{
    auto* item = new QTreeWidgetItem(heading, texts);
    item->setData(0, placeRole, places.size());
    for (int column = 0; column < texts.size(); ++column)
        item->setToolTip(column, texts.at(column));
    places.append(place);
}

// A run that could not tell its calls has its place at least.
void RunFailureView::AddStack(const RpaRunRecord& run, const RpaRunFailure& failure)
{
    QTreeWidgetItem* const heading = AddHeading(QStringLiteral("调用"));
    for (const RpaRunFrame& frame : failure.stack)
        AddPlace(heading, {SpanWords::Place(frame.place), QString(), frame.functionName}, frame.place);
    const RpaRunPlace place{run.failedProcess, run.failedStatement, run.failedLine};
    if (failure.stack.isEmpty() && !place.processName.isEmpty())
        AddPlace(heading, {place.processName}, place);
    heading->setHidden(heading->childCount() == 0);
}

void RunFailureView::AddScopes(const RpaRunFailure& failure)
{
    for (const RpaRunScope& scope : failure.scopes) {
        QTreeWidgetItem* const heading = AddHeading(scope.title);
        for (const RpaRunVariable& variable : scope.variables) {
            auto* item = new QTreeWidgetItem(heading, {variable.name, variable.type, variable.text});
            item->setToolTip(2, variable.text);
        }
        heading->setHidden(heading->childCount() == 0);
    }
}

void RunFailureView::AddLastSpans(const RpaRunSpans& spans)
{
    QVector<RpaRunSpan> last;
    for (int i = spans.spans.size() - 1; i >= 0 && last.size() < lastSpans; --i)
        if (spans.spans.at(i).kind != RpaSpanKind::Position)
            last.prepend(spans.spans.at(i));
    QTreeWidgetItem* const heading = AddHeading(QStringLiteral("最后的 %1 次操作").arg(last.size()));
    for (const RpaRunSpan& span : qAsConst(last))
        AddPlace(heading,
                 {SpanWords::Place(span.place), SpanWords::Kind(span.kind),
                  QStringLiteral("%1  %2  %3")
                      .arg(span.call, span.input, span.error.isEmpty() ? span.result : span.error)},
                 span.place);
    heading->setHidden(last.isEmpty());
}

void RunFailureView::ShowPicture(const QByteArray& picture)
{
    QPixmap pixmap;
    if (!pixmap.loadFromData(picture, "PNG")) {
        ui.labelPicture->setText(QStringLiteral("没有失败时的浏览器画面"));
        return;
    }
    ui.labelPicture->setPixmap(pixmap.scaledToHeight(
        qMin(pixmap.height(), fontMetrics().height() * pictureHeight / 16), Qt::SmoothTransformation));
}

void RunFailureView::Activate(const QTreeWidgetItem* item)
{
    const QVariant number = item->data(0, placeRole);
    if (number.isValid())
        emit SigShowPlace(places.at(number.toInt()));
}
