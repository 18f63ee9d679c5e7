// SPDX-License-Identifier: Apache-2.0

#include "TableExchange_p.h"
#include "TransferBar_p.h"

#include <WbBaseUI/WbSystemDialogs.h>
#include <WbBaseUI/WbToast.h>

#include <QFileInfo>
#include <QWidget>

TableExchange::TableExchange(TableModel& shown, TransferBar& progress, QWidget* widget)
    : QObject(widget), model(shown), bar(progress), owner(widget)
{
    connect(&transfer, &TableTransfer::SigProgress, &bar, &TransferBar::ShowProgress);
    connect(&bar, &TransferBar::SigCancel, &transfer, &TableTransfer::Cancel);
    connect(&transfer, &TableTransfer::SigImported, this, &TableExchange::TakeImport);
    connect(&transfer, &TableTransfer::SigExported, this, &TableExchange::TellExport);
    connect(&transfer, &TableTransfer::SigCancelled, this, [this] {
        Close();
        WbToast::Show(QStringLiteral("已取消"), ToastInformation);
    });
}

void TableExchange::Import()
{
    const QPointer<RpaTableData> table = model.GetData();
    const QString path = WbSystemDialogs::OpenFile(
        owner, QStringLiteral("导入 Excel 或 CSV 文件"), QString(),
        QStringLiteral("Excel 和 CSV 文件 (*.xlsx *.xlsm *.csv *.txt);;所有文件 (*)"));
    // Another page may be shown by now; what was meant for the table before must not go into its table.
    if (path.isEmpty() || !table || model.GetData() != table || IsBusy())
        return;
    asked = table;
    askedColumns = table->GetColumns();
    transfer.Import(path, askedColumns);
    bar.Open(QStringLiteral("正在导入…"));
    emit SigBusyChanged();
}

void TableExchange::Export()
{
    const QPointer<RpaTableData> table = model.GetData();
    QString path = WbSystemDialogs::SaveFile(owner, QStringLiteral("导出表格"), QStringLiteral("表格.xlsx"),
                                             QStringLiteral("Excel 工作簿 (*.xlsx);;CSV 文件 (*.csv)"));
    if (path.isEmpty() || !table || model.GetData() != table || IsBusy())
        return;
    if (QFileInfo(path).suffix().isEmpty())
        path += QStringLiteral(".xlsx");
    transfer.Export(path, table->GetContent());
    bar.Open(QStringLiteral("正在导出…"));
    emit SigBusyChanged();
}

void TableExchange::EndImport(const QString& why)
{
    if (!transfer.IsImporting())
        return;
    transfer.Cancel();
    WbToast::Show(why, ToastWarning);
}

void TableExchange::TakeImport(const TableImport& result)
{
    Close();
    if (!result.problem.isEmpty()) {
        WbToast::Show(result.problem, ToastError);
        return;
    }
    if (!asked || model.GetData() != asked || asked->GetColumns() != askedColumns) {
        WbToast::Show(QStringLiteral("表格的列已改变，没有导入，请重新导入"), ToastWarning);
        return;
    }
    model.AppendRows(result.rows, QStringLiteral("导入"));
    const QString from =
        result.sheet.isEmpty() ? QString() : QStringLiteral("从第一个工作表“%1”").arg(result.sheet.left(31));
    const QString told = QStringLiteral("已%1导入 %2 行").arg(from).arg(result.rows.size());
    if (result.misfits.Any())
        WbToast::Show(QStringLiteral("%1，%2，留空").arg(told, result.misfits.GetText()), ToastWarning);
    else
        WbToast::Show(told, ToastSuccess);
}

void TableExchange::TellExport(int rows, const QString& problem)
{
    Close();
    if (problem.isEmpty())
        WbToast::Show(QStringLiteral("已导出 %1 行").arg(rows), ToastSuccess);
    else
        WbToast::Show(problem, ToastError);
}

void TableExchange::Close()
{
    bar.hide();
    emit SigBusyChanged();
}
