// SPDX-License-Identifier: Apache-2.0

// What the page for the UI asks of its parts, in order. The test takes the place of the platform's parts, as
// only ELF lets it: they note what they are told and do nothing else.
#include "AddUIWidget.h"
#include "ModalDriver.h"
#include "RpaAppUIDesignWidget.h"
#include "TestApp.h"

#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaAppTool/AppParamEditorWidget.h>
#include <RpaAppTool/AppTableEditorWidget.h>
#include <RpaAppTool/AppToolEditorWidget.h>
#include <RpaAppTool/IAppLogWidget.h>
#include <RpaAppTool/IAppParamWidget.h>
#include <RpaAppTool/IAppTableWidget.h>
#include <RpaAppTool/IAppToolWidget.h>
#include <WbBaseUI/RpaTabBar.h>

#include <QtTest>

#include <memory>
#include <utility>

namespace
{
QStringList notes;
int currentTab = 0;

QString Text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

void Note(const char* text, const QString& value = QString())
{
    notes.append(Text(text) + value);
}

QString NameOf(const RpaToolData* data)
{
    return data->GetItem(0).text;
}

QString NameOf(const RpaParamData* data)
{
    return data->GetItem(0).name;
}

QString NameOf(const RpaTableData* data)
{
    return data->GetColumn(0).name;
}

class NotingTools : public IAppToolWidget
{
public:
    explicit NotingTools(QWidget* parent) : IAppToolWidget(parent) {}
    void SetToolData(RpaToolData* shown) override { Note("tools: ", NameOf(shown)); }
    bool Run(const QString&) override { return false; }
    bool Stop() override { return false; }
    bool IsBusy() const override { return false; }
};

class NotingParams : public IAppParamWidget
{
public:
    explicit NotingParams(QWidget* parent) : IAppParamWidget(parent) {}
    void SetParamData(RpaParamData* shown) override { Note("params: ", NameOf(shown)); }
    QStringList GetParamNames() const override { return {}; }
    QVariant GetParam(const QString&) const override { return {}; }
    bool SetParam(const QString&, const QVariant&) override { return false; }
};

class NotingTable : public IAppTableWidget
{
public:
    explicit NotingTable(QWidget* parent) : IAppTableWidget(parent) {}
    void SetTableData(RpaTableData* shown) override { Note("table: ", NameOf(shown)); }
    void SetUserEditable(bool editable) override { Note(editable ? "table is open" : "table is locked"); }
    QStringList GetColumnNames() const override { return {}; }
    int GetRowCount() const override { return 0; }
    QVariant GetCell(int, int) const override { return {}; }
    bool SetCell(int, int, const QVariant&) override { return false; }
    int AppendRow(const QVariantList&) override { return -1; }
    void ClearRows() override {}
};

class NotingLog : public IAppLogWidget
{
public:
    explicit NotingLog(QWidget* parent) : IAppLogWidget(parent) {}
    void SetLogDataSource(IRpaLogDataSource* source) override { Note(source ? "log: some" : "log: none"); }
};
} // namespace

IAppToolWidget* IAppToolWidget::CreateToolEditor(QWidget* parent)
{
    Note("make tools in ", parent->objectName());
    return new NotingTools(parent);
}

IAppParamWidget* IAppParamWidget::CreateParamWidget(QWidget* parent)
{
    Note("make params in ", parent->objectName());
    return new NotingParams(parent);
}

IAppTableWidget* IAppTableWidget::CreateTableWidget(QWidget* parent)
{
    Note("make table in ", parent->objectName());
    return new NotingTable(parent);
}

IAppLogWidget* IAppLogWidget::CreateDevelopLog(QWidget* parent)
{
    Note("make log in ", parent->objectName());
    return new NotingLog(parent);
}

void AppToolEditorWidget::SetAppToolWidget(IAppToolWidget*)
{
    Note("tool panel: widget");
}

void AppEditorPanel::SetAppDataPtr(const RpaAppDataPtr&)
{
    if (qobject_cast<AppToolEditorWidget*>(this))
        Note("tool panel: app");
    else
        Note(qobject_cast<AppParamEditorWidget*>(this) ? "param panel: app" : "table panel: app");
}

void AppToolEditorWidget::Init(RpaToolData* pageData)
{
    Note("tool panel: ", NameOf(pageData));
}

void AppParamEditorWidget::SetAppParamWidget(IAppParamWidget*)
{
    Note("param panel: widget");
}

void AppParamEditorWidget::Init(RpaParamData* pageData)
{
    Note("param panel: ", NameOf(pageData));
}

void AppTableEditorWidget::SetAppTableWidget(IAppTableWidget*)
{
    Note("table panel: widget");
}

void AppTableEditorWidget::Init(RpaTableData* pageData)
{
    Note("table panel: ", NameOf(pageData));
}

void RpaTabBar::Initialize(const QStringList& names)
{
    Note("bar: ", names.join(QLatin1Char(' ')));
}

void RpaTabBar::AddTab(const QString& name)
{
    Note("bar: also ", name);
}

void RpaTabBar::RemoveTab(int index)
{
    Note("bar: without ", QString::number(index));
}

void RpaTabBar::SetTabText(int index, const QString& name)
{
    Note("bar: ", QStringLiteral("%1 is %2").arg(index).arg(name));
}

void RpaTabBar::SwapTab(int from, int to)
{
    Note("bar: ", QStringLiteral("%1 for %2").arg(from).arg(to));
}

int RpaTabBar::GetCurrentIndex() const
{
    return currentTab;
}

class DesignCallsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        notes.clear();
        currentTab = 0;
        page = std::make_unique<RpaAppUIDesignWidget>();
        made = Take();
        bar = page->findChild<RpaTabBar*>();
        app = MakeApp();
    }

    void cleanup()
    {
        page.reset();
        app.reset();
    }

    void makesItsPartsOneByOne()
    {
        QCOMPARE(made, QStringList({Text("make tools in widgetTool"), Text("tool panel: widget"),
                                    Text("make params in widgetParam"), Text("param panel: widget"),
                                    Text("make table in widgetTable"), Text("table panel: widget"),
                                    Text("make log in widgetLog"), Text("log: some")}));
    }

    void showsAnAppFromItsFirstPage()
    {
        app->GetUIDataManager()->SetIndexActive(1);
        Take();

        page->SetRpaAppData(app);

        QCOMPARE(Take(), QStringList({Text("tool panel: app"), Text("param panel: app"),
                                      Text("table panel: app"), Text("active 0")}) +
                             OfPage(0) + QStringList(Text("bar: 界面0 界面1 界面2")));
    }

    void showsThePageOfATab()
    {
        Show();

        emit bar->SigTabChanged(2);

        QCOMPARE(Take(), QStringList(Text("active 2")) + OfPage(2));
    }

    void showsTheActivePageNoSecondTime()
    {
        Show();

        emit bar->SigTabChanged(0);

        QCOMPARE(Take(), QStringList());
    }

    void addsAPageThenItsTab()
    {
        Show();

        ModalDriver modals;
        modals.ThenIn<AddUIWidget>(Enter);
        emit bar->SigAddTab();

        QCOMPARE(Take(), QStringList({Text("page 3 added"), Text("bar: also 新名"), Text("edited")}));
    }

    void deletesATabThenItsPage()
    {
        Show();
        currentTab = 1;

        emit bar->SigDeleteTab(2);

        QCOMPARE(Take(), QStringList({Text("bar: without 2"), Text("page 2 deleted"), Text("active 1"),
                                      Text("edited")}));
    }

    void renamesAPageThenItsTab()
    {
        Show();

        ModalDriver modals;
        modals.ThenIn<AddUIWidget>(Enter);
        emit bar->SigRenameTab(1);

        QCOMPARE(Take(), QStringList({Text("page 1 renamed"), Text("bar: 1 is 新名"), Text("edited")}));
    }

    void movesATabThenItsPage()
    {
        Show();
        currentTab = 2;

        emit bar->SigTabMoved(0, 1);

        QCOMPARE(Take(), QStringList({Text("bar: 0 for 1"), Text("pages 0 for 1"), Text("active 1"),
                                      Text("active 2"), Text("edited")}));
    }

    void locksItsTableWhileAProcessRuns()
    {
        page->ProcessStart(Text("p"));
        QCOMPARE(Take(), QStringList(Text("table is locked")));
        page->ProcessFinish(Text("p"));
        QCOMPARE(Take(), QStringList(Text("table is open")));
    }

private:
    static QStringList Take() { return std::exchange(notes, {}); }

    static void Enter(AddUIWidget* dialog)
    {
        dialog->SetName(Text("新名"));
        ModalDriver::Press(dialog, Text("确定"));
    }

    static QStringList OfPage(int index)
    {
        const QString number = QString::number(index);
        return {Text("tool panel: 工具") + number,  Text("tools: 工具") + number,
                Text("param panel: 参数") + number, Text("params: 参数") + number,
                Text("table panel: 列") + number,   Text("table: 列") + number};
    }

    // Three pages whose parts carry their number.
    static RpaAppDataPtr MakeApp()
    {
        auto one = RpaAppDataPtr::create();
        one->InitDefault();
        RpaUIDataManager* const pages = one->GetUIDataManager();
        pages->Clear();
        for (int i = 0; i < 3; ++i) {
            RpaToolItem tool;
            tool.text = Text("工具%1").arg(i);
            const RpaUIData* added = pages->AddUIData(Text("界面%1").arg(i), tool);
            RpaParamItem param;
            param.name = Text("参数%1").arg(i);
            added->GetParamData()->InsertItem(-1, param);
            RpaTableColumn column;
            column.name = Text("列%1").arg(i);
            added->GetTableData()->InsertColumn(-1, column);
        }
        Watch(*one);
        return one;
    }

    static void Watch(RpaAppData& one)
    {
        const RpaUIDataManager* pages = one.GetUIDataManager();
        connect(pages, &RpaUIDataManager::SigIndexActiveChanged, pages,
                [](int index) { Note("active ", QString::number(index)); });
        connect(pages, &RpaUIDataManager::SigUIAdded, pages,
                [](int index) { Note("page ", QStringLiteral("%1 added").arg(index)); });
        connect(pages, &RpaUIDataManager::SigUIDeleted, pages,
                [](int index) { Note("page ", QStringLiteral("%1 deleted").arg(index)); });
        connect(pages, &RpaUIDataManager::SigUIRenamed, pages,
                [](int index) { Note("page ", QStringLiteral("%1 renamed").arg(index)); });
        connect(pages, &RpaUIDataManager::SigUISwapped, pages,
                [](int a, int b) { Note("pages ", QStringLiteral("%1 for %2").arg(a).arg(b)); });
        connect(&one, &RpaAppData::SigEdited, pages, [] { Note("edited"); });
    }

    void Show()
    {
        page->SetRpaAppData(app);
        Take();
    }

    std::unique_ptr<RpaAppUIDesignWidget> page;
    RpaTabBar* bar = nullptr;
    RpaAppDataPtr app;
    QStringList made;
};

RPA_TEST_MAIN(DesignCallsTest)

#include "tst_designcalls.moc"
