#include "UIPagePreview.h"

#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppData/RpaUIData.h>
#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>

#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QTableWidget>

#include <memory>

namespace
{

void Replace(QWidget* host, std::unique_ptr<QWidget> content)
{
    if (QLayoutItem* old = host->layout()->takeAt(0)) {
        // The widget may be the very button whose click led here.
        old->widget()->hide();
        old->widget()->deleteLater();
        delete old;
    }
    host->setVisible(content != nullptr);
    if (content) {
        host->layout()->addWidget(content.release());
    }
}

void InitHost(QWidget* host)
{
    auto* layout = new QHBoxLayout(host);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
}

QString ShownValue(const RpaParamItem& item)
{
    return item.type == RpaParamType::Password ? QString() : item.GetEffectiveValue().toString();
}

std::unique_ptr<QWidget> MakeParams(const RpaUIData& page)
{
    const auto items = page.GetParamData()->GetItems();
    if (items.isEmpty()) {
        return nullptr;
    }
    auto content = std::make_unique<QWidget>();
    auto* form = new QFormLayout(content.get());
    for (const RpaParamItem& item : items) {
        auto* field = new WbLineEdit(content.get());
        field->setText(ShownValue(item));
        field->setPlaceholderText(item.hint);
        field->setReadOnly(true);
        form->addRow(new WbLabel(item.label.isEmpty() ? item.name : item.label, content.get()), field);
    }
    return content;
}

std::unique_ptr<QWidget> MakeTable(const RpaUIData& page)
{
    const QStringList names = page.GetTableData()->GetColumnNames();
    if (names.isEmpty()) {
        return nullptr;
    }
    auto table = std::make_unique<QTableWidget>(0, names.size());
    table->setHorizontalHeaderLabels(names);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->horizontalHeader()->setStretchLastSection(true);
    return table;
}

} // namespace

UIPagePreview::UIPagePreview(QWidget* toolsIn, QWidget* paramsIn, QWidget* tableIn, QObject* parent)
    : QObject(parent), toolHost(toolsIn), paramHost(paramsIn), tableHost(tableIn)
{
    InitHost(toolHost);
    InitHost(paramHost);
    InitHost(tableHost);
}

UIPagePreview::~UIPagePreview() = default;

void UIPagePreview::Show(const RpaUIData* page)
{
    Replace(toolHost, page ? MakeTools(*page) : nullptr);
    Replace(paramHost, page ? MakeParams(*page) : nullptr);
    Replace(tableHost, page ? MakeTable(*page) : nullptr);
}

std::unique_ptr<QWidget> UIPagePreview::MakeTools(const RpaUIData& page)
{
    const auto items = page.GetToolData()->GetItems();
    if (items.isEmpty()) {
        return nullptr;
    }
    auto content = std::make_unique<QWidget>();
    auto* row = new QHBoxLayout(content.get());
    for (const RpaToolItem& item : items) {
        auto* button = new WbPushButton(content.get(), Wb::PrimaryButton);
        button->setText(item.text);
        button->setToolTip(QStringLiteral("运行流程：%1").arg(item.processName.toHtmlEscaped()));
        connect(button, &WbPushButton::clicked, this,
                [this, process = item.processName] { emit SigRunProcess(process); });
        row->addWidget(button);
    }
    row->addStretch();
    return content;
}
