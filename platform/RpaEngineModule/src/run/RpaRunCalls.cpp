// SPDX-License-Identifier: Apache-2.0

#include "RpaRunCalls_p.h"
#include "RpaRunDialog_p.h"
#include "RpaRun_p.h"

namespace
{

// A page of rows small enough not to hold up the user.
constexpr int rowsPerCall = 1000;

QVariantMap ToVariant(const QMap<QString, QString>& texts)
{
    QVariantMap map;
    for (auto it = texts.begin(); it != texts.end(); ++it)
        map.insert(it.key(), it.value());
    return map;
}

} // namespace

RpaRunCalls::RpaRunCalls(RpaRun& owner, const RpaRunParts& given, QObject* parent)
    : QObject(parent), run(owner), parts(given)
{
    AddParamCalls();
    AddTableCalls();
    AddElementCalls();
    AddBrowserCalls();
    AddDialogCalls();
}

RpaRunCalls::~RpaRunCalls()
{
    delete dialog;
}

void RpaRunCalls::Take(qint64 callId, const QString& name, const QVariantList& arguments)
{
    const auto call = calls.constFind(name);
    if (call != calls.constEnd()) {
        const Result result = (*call)(arguments);
        if (result.refusal.isEmpty())
            run.Answer(callId, result.value);
        else
            run.Refuse(callId, result.refusal);
        return;
    }
    const auto late = lateCalls.constFind(name);
    if (late != lateCalls.constEnd())
        (*late)(callId, arguments);
    else
        run.Refuse(callId, QStringLiteral("编辑器不认识操作“%1”").arg(name.left(64)));
}

void RpaRunCalls::AddParamCalls()
{
    const auto missing = [this] { return !parts.params.Get(); };
    const QString none = QStringLiteral("当前界面没有参数");
    calls.insert(QStringLiteral("param.names"), [this](const QVariantList&) -> Result {
        return {parts.params.Get() ? parts.params.Get()->GetParamNames() : QStringList(), {}};
    });
    calls.insert(QStringLiteral("param.secrets"), [this](const QVariantList&) -> Result {
        return {parts.params.Get() ? parts.params.Get()->GetSecretParamNames() : QStringList(), {}};
    });
    calls.insert(QStringLiteral("param.get"), [this, missing, none](const QVariantList& arguments) -> Result {
        if (missing())
            return Refused(none);
        const QString name = arguments.value(0).toString();
        if (!parts.params.Get()->GetParamNames().contains(name))
            return Refused(QStringLiteral("当前界面没有名为“%1”的参数").arg(name));
        return {parts.params.Get()->GetParam(name), {}};
    });
    calls.insert(QStringLiteral("param.set"), [this, missing, none](const QVariantList& arguments) -> Result {
        if (missing())
            return Refused(none);
        const QString name = arguments.value(0).toString();
        if (!parts.params.Get()->SetParam(name, arguments.value(1)))
            return Refused(QStringLiteral("无法设置参数“%1”：没有这个参数，或值与类型不符").arg(name));
        return {};
    });
}

void RpaRunCalls::AddTableCalls()
{
    const auto add = [this](const QString& name, const Call& call) {
        calls.insert(name, [this, call](const QVariantList& arguments) {
            return parts.table.Get() ? call(arguments) : Refused(QStringLiteral("当前界面没有表格"));
        });
    };
    const QString misfit = QStringLiteral("值与表格的列不符，或超出了表格范围");
    add(QStringLiteral("table.columns"), [this](const QVariantList&) -> Result {
        return {parts.table.Get()->GetColumnNames(), {}};
    });
    add(QStringLiteral("table.count"), [this](const QVariantList&) -> Result {
        return {parts.table.Get()->GetRowCount(), {}};
    });
    add(QStringLiteral("table.clear"), [this](const QVariantList&) -> Result {
        parts.table.Get()->ClearRows();
        return {};
    });
    add(QStringLiteral("table.get"), [this](const QVariantList& arguments) -> Result {
        return {parts.table.Get()->GetCell(arguments.value(0).toInt(), arguments.value(1).toInt()), {}};
    });
    add(QStringLiteral("table.set"), [this, misfit](const QVariantList& arguments) -> Result {
        const bool fits = parts.table.Get()->SetCell(arguments.value(0).toInt(), arguments.value(1).toInt(),
                                                     arguments.value(2));
        return fits ? Result() : Refused(misfit);
    });
    add(QStringLiteral("table.append"), [this, misfit](const QVariantList& arguments) -> Result {
        const int row = parts.table.Get()->AppendRow(arguments.value(0).toList());
        return row < 0 ? Refused(misfit) : Result{row, {}};
    });
    // How many of the rows were taken: the first that does not fit ends it.
    add(QStringLiteral("table.extend"), [this](const QVariantList& arguments) -> Result {
        const QVariantList rows = arguments.value(0).toList();
        int taken = 0;
        while (taken < rows.size() && parts.table.Get()->AppendRow(rows.at(taken).toList()) >= 0)
            ++taken;
        return {taken, {}};
    });
    add(QStringLiteral("table.rows"), [this](const QVariantList& arguments) -> Result {
        const int first = qMax(0, arguments.value(0).toInt());
        const int last = qMin(parts.table.Get()->GetRowCount(), first + rowsPerCall);
        const int columns = parts.table.Get()->GetColumnNames().size();
        QVariantList rows;
        for (int row = first; row < last; ++row) {
            QVariantList cells;
            for (int column = 0; column < columns; ++column)
                cells << parts.table.Get()->GetCell(row, column);
            rows << QVariant(cells);
        }
        return {rows, {}};
    });
}

void RpaRunCalls::AddElementCalls()
{
    calls.insert(QStringLiteral("element"), [this](const QVariantList& arguments) -> Result {
        const RpaNode node = parts.htmlNodes.Get()
                                 ? parts.htmlNodes.Get()->FindNode(arguments.value(0).toString())
                                 : RpaNode();
        if (node.id.isEmpty())
            return Refused(QStringLiteral("找不到已捕获的元素，请重新捕获"));
        return {QVariantMap{{QStringLiteral("name"), node.name},
                            {QStringLiteral("css"), node.css},
                            {QStringLiteral("xpath"), node.xpath},
                            {QStringLiteral("attributes"), ToVariant(node.attributes)}},
                {}};
    });
    calls.insert(QStringLiteral("app.id"), [this](const QVariantList&) -> Result {
        return {parts.appId, {}};
    });
}

void RpaRunCalls::AddBrowserCalls()
{
    const auto answerTo = [this](qint64 callId) -> IBrowserEngine::Answer {
        // The page may answer after the run has ended.
        return [guard = QPointer<RpaRunCalls>(this), callId](bool ok, const QVariant& value) {
            if (!guard)
                return;
            if (ok)
                guard->run.Answer(callId, value);
            else
                guard->run.Refuse(callId, value.toString().isEmpty()
                                              ? QStringLiteral("浏览器没有完成这个操作")
                                              : value.toString());
        };
    };
    const auto add = [this](const QString& name, const LateCall& call) {
        lateCalls.insert(name, [this, call](qint64 callId, const QVariantList& arguments) {
            if (parts.browser.Get())
                call(callId, arguments);
            else
                run.Refuse(callId, QStringLiteral("此工作站没有内置浏览器"));
        });
    };
    add(QStringLiteral("browser.open"), [this, answerTo](qint64 callId, const QVariantList& arguments) {
        parts.browser.Get()->Open(arguments.value(0).toString(), answerTo(callId));
    });
    add(QStringLiteral("browser.script"), [this, answerTo](qint64 callId, const QVariantList& arguments) {
        parts.browser.Get()->RunScript(arguments.value(0).toString(), answerTo(callId));
    });
}

void RpaRunCalls::AddDialogCalls()
{
    lateCalls.insert(QStringLiteral("dialog.message"), [this](qint64 callId, const QVariantList& arguments) {
        ShowDialog(callId, new RpaRunDialog(RpaRunDialog::Message, arguments.value(0).toString(), {}));
    });
    lateCalls.insert(QStringLiteral("dialog.confirm"), [this](qint64 callId, const QVariantList& arguments) {
        ShowDialog(callId, new RpaRunDialog(RpaRunDialog::Confirm, arguments.value(0).toString(), {}));
    });
    lateCalls.insert(QStringLiteral("dialog.input"), [this](qint64 callId, const QVariantList& arguments) {
        ShowDialog(callId, new RpaRunDialog(RpaRunDialog::Input, arguments.value(0).toString(),
                                            arguments.value(1).toString()));
    });
}

void RpaRunCalls::ShowDialog(qint64 callId, RpaRunDialog* shown)
{
    // Not exec(): a nested loop here would stand on the stack of the run that may end meanwhile.
    delete dialog;
    dialog = shown;
    connect(shown, &RpaRunDialog::finished, this, [this, callId, shown] {
        run.Answer(callId, shown->GetAnswer());
        shown->deleteLater();
    });
    shown->open();
}
