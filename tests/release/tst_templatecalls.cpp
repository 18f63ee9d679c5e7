// SPDX-License-Identifier: Apache-2.0

// The dialogs of templates, and the app that starts from one.
#include "EditorCalls.h"
#include "ModalDriver.h"
#include "TestApp.h"
#include "TestFolder.h"
#include "ToastWatcher.h"

#include <OxBase/DpiTool.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaCore/RpaSuperDir.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <WbBaseUI/WbComboBox.h>
#include <WbBaseUI/WbPushButton.h>

#include <QBoxLayout>
#include <QDataStream>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

namespace
{
QMargins Scaled(int left, int top, int right, int bottom)
{
    return {DpiTool::ScaleDefault(left), DpiTool::ScaleDefault(top), DpiTool::ScaleDefault(right),
            DpiTool::ScaleDefault(bottom)};
}

QBoxLayout* Row(const QWidget* dialog, const char* name)
{
    return dialog->findChild<QBoxLayout*>(QLatin1String(name));
}

QString LabelText(const QWidget* dialog, const char* name)
{
    return dialog->findChild<QLabel*>(QLatin1String(name))->text();
}

const WbPushButton* Button(const QWidget* dialog, const char* name)
{
    return dialog->findChild<WbPushButton*>(QLatin1String(name));
}
} // namespace

class TemplateCallsTest : public EditorCalls
{
    Q_OBJECT

private slots:
    void init()
    {
        SetUp();
        folder = std::make_unique<TestFolder>();
    }

    void theExportDialogKeepsItsTextsAndMeasures()
    {
        Open();
        ModalDriver modals;
        modals.Then([](QWidget* dialog) {
            QCOMPARE(LabelText(dialog, "nameLabel"), QStringLiteral("模板名称:"));
            QCOMPARE(LabelText(dialog, "directionLabel"), QStringLiteral("模板描述:"));
            QCOMPARE(LabelText(dialog, "saveLabel"), QStringLiteral("存储路径:"));
            QCOMPARE(Button(dialog, "confirmBtn")->GetButtonType(), 1);
            QCOMPARE(Button(dialog, "cancleSelectBtn")->GetButtonType(), 3);
            QCOMPARE(Button(dialog, "openPushButton")->GetButtonType(), 3);
            const auto* title = dialog->findChild<QWidget*>(QStringLiteral("dialogTitleBar"));
            const int titleHeight = title->minimumHeight();
            for (const qreal scale : {1.0, 2.0}) {
                DpiTool::SetScale(scale);
                QCOMPARE(title->minimumHeight(), DpiTool::ScaleDefault(titleHeight));
                QCOMPARE(dialog->minimumSize(),
                         QSize(DpiTool::ScaleDefault(400), DpiTool::ScaleDefault(280)));
                QCOMPARE(dialog->maximumSize(), dialog->minimumSize());
                QCOMPARE(Row(dialog, "mainLayout")->contentsMargins(), Scaled(20, 12, 20, 12));
                QCOMPARE(Row(dialog, "mainLayout")->spacing(), DpiTool::ScaleDefault(8));
                for (const char* row : {"nameHLayout", "directionHLayout", "saveFileHLayout"})
                    QCOMPARE(Row(dialog, row)->spacing(), DpiTool::ScaleDefault(4));
                QCOMPARE(Row(dialog, "btnLayout")->spacing(), DpiTool::ScaleDefault(8));
            }
            DpiTool::SetScale(1.0);
            QVERIFY(ModalDriver::Press(dialog, QStringLiteral("取消")));
        });

        author->Press("pushButtonExportAppData");
    }

    void theSelectionKeepsItsTextsAndMeasures()
    {
        Export(QStringLiteral("甲"), QStringLiteral("第一个模板"));
        ModalDriver modals;
        modals.Then([](QWidget* dialog) {
            QCOMPARE(LabelText(dialog, "directorLabel"), QStringLiteral("选择模板:"));
            QCOMPARE(LabelText(dialog, "descLabel"), QStringLiteral("第一个模板"));
            QVERIFY(dialog->findChild<QLabel*>(QStringLiteral("descLabel"))->wordWrap());
            QCOMPARE(dialog->findChild<WbComboBox*>(QStringLiteral("comboBox"))->GetBusinessStyle(), 1);
            QCOMPARE(Button(dialog, "confirmBtn")->GetButtonType(), 1);
            QCOMPARE(Button(dialog, "cancleSelectBtn")->GetButtonType(), 3);
            const auto* title = dialog->findChild<QWidget*>(QStringLiteral("dialogTitleBar"));
            const int titleHeight = title->minimumHeight();
            for (const qreal scale : {1.0, 2.0}) {
                DpiTool::SetScale(scale);
                QCOMPARE(title->minimumHeight(), DpiTool::ScaleDefault(titleHeight));
                QCOMPARE(dialog->minimumSize(),
                         QSize(DpiTool::ScaleDefault(400), DpiTool::ScaleDefault(240)));
                QCOMPARE(dialog->maximumSize(), dialog->minimumSize());
                const auto* label = dialog->findChild<QLabel*>(QStringLiteral("directorLabel"));
                QCOMPARE(label->minimumWidth(), DpiTool::ScaleDefault(64));
                QCOMPARE(label->maximumWidth(), DpiTool::ScaleDefault(64));
                QCOMPARE(Row(dialog, "verticalLayout")->contentsMargins(), Scaled(30, 40, 30, 20));
                QCOMPARE(Row(dialog, "verticalLayout")->spacing(), DpiTool::ScaleDefault(4));
                QCOMPARE(Row(dialog, "horizontalLayout")->contentsMargins(), Scaled(0, 0, 20, 0));
                QCOMPARE(Row(dialog, "horizontalLayout")->spacing(), DpiTool::ScaleDefault(4));
                QCOMPARE(Row(dialog, "btnLayout")->spacing(), DpiTool::ScaleDefault(8));
            }
            DpiTool::SetScale(1.0);
            QVERIFY(ModalDriver::Press(dialog, QStringLiteral("取消")));
        });

        OpenWithoutDevelopVersion();

        QCOMPARE(author->GetInstructions(), QString());
    }

    void writesTheWholeAppWithItsIdentity()
    {
        Export(QStringLiteral("甲"), QStringLiteral("第一个模板"));

        QFile file(folder->filePath(QStringLiteral("甲")));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QDataStream stream(&file);
        QString text;
        stream >> text;
        const QJsonObject record = QJsonDocument::fromJson(text.toUtf8()).object();
        const QByteArray base64 = record.value(QStringLiteral("appData")).toString().toLatin1();
        RpaAppData app;
        app.Parse(base64.startsWith('{') ? record.value(QStringLiteral("appData")).toString().toUtf8()
                                         : QByteArray::fromBase64(base64));
        QCOMPARE(app.GetAppExtendInfo()->GetManual(), QStringLiteral("template content"));
        QCOMPARE(app.GetAppExtendInfo()->GetAppId(), QStringLiteral("app1"));
    }

    void startsAnewFromATemplateThoughAVersionWasOpen()
    {
        Export(QStringLiteral("甲"), QStringLiteral("第一个模板"));
        PickAndLoad(QStringLiteral("乙版"));
        ModalDriver modals;
        modals.Then([](QWidget* dialog) { QVERIFY(ModalDriver::Press(dialog, QStringLiteral("确定"))); });
        RpaSuperDir::Instance()->SetTemplateDirs(folder->path(), QString());

        QVERIFY(QMetaObject::invokeMethod(author->GetEditor(), "SlotRefresh"));
        StandInRequests::AnswerList({Versions(AppSnapshotGray).last()});

        QCOMPARE(author->GetSelectedVersion(), QStringLiteral("版本1"));
        QVERIFY(author->GetInstructions().contains(QStringLiteral("template content")));
        QVERIFY(!author->GetEditor()->findChild<QDialog*>()); // neither that of the export is left
        CallLog::Take();
        author->Press("pushButtonSave");
        QCOMPARE(CallLog::Take().last(), QStringLiteral("save 版本1"));
    }

    void describesTheTemplateThatIsPicked()
    {
        Export(QStringLiteral("甲"), QStringLiteral("第一个模板"));
        author.reset();
        StandInRequests::Reset();
        Export(QStringLiteral("乙"), QStringLiteral("第二个模板"));
        ModalDriver modals;
        modals.Then([](QWidget* dialog) {
            auto* combo = dialog->findChild<QComboBox*>(QStringLiteral("comboBox"));
            QCOMPARE(combo->count(), 2);
            const QString first = LabelText(dialog, "descLabel");
            QTest::keyClick(combo, Qt::Key_Down);
            QVERIFY(LabelText(dialog, "descLabel") != first);
            QTest::keyClick(combo, Qt::Key_Up);
            QCOMPARE(LabelText(dialog, "descLabel"), first);
            ModalDriver::Reject(dialog);
        });

        OpenWithoutDevelopVersion();
    }

private:
    void OpenWithoutDevelopVersion()
    {
        RpaSuperDir::Instance()->SetTemplateDirs(folder->path(), QString());
        author = std::make_unique<EditorDriver>();
        author->GetEditor()->SetExecuteInfo(App());
        StandInRequests::AnswerList({Versions(AppSnapshotGray).last()});
    }

    // Leaves the editor open that exported.
    void Export(const QString& name, const QString& description)
    {
        Open(Versions(), Content(QStringLiteral("template content")));
        ToastWatcher toasts;
        ModalDriver modals;
        modals.Then([&](QWidget* dialog) {
            const auto put = [dialog](const char* field, const QString& text) {
                dialog->findChild<QLineEdit*>(QLatin1String(field))->setText(text);
            };
            put("nameLineEdit", name);
            put("directionLineEdit", description);
            put("saveFileLineEdit", folder->path());
            QVERIFY(ModalDriver::Press(dialog, QStringLiteral("确定")));
        });
        author->Press("pushButtonExportAppData");
        QCOMPARE(toasts.GetToasts(), QVector<SeenToast>({{QStringLiteral("生成模板成功"), 3}}));
    }

    std::unique_ptr<TestFolder> folder;
};

RPA_TEST_MAIN(TemplateCallsTest)
#include "tst_templatecalls.moc"
