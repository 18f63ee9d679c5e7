// SPDX-License-Identifier: Apache-2.0

#include "EditorDriver.h"
#include "EditorWorld.h"
#include "ModalDriver.h"
#include "TestApp.h"
#include "TestFolder.h"
#include "ToastWatcher.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaCore/RpaSuperDir.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>

#include <QApplication>
#include <QComboBox>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QtEndian>
#include <QtTest>

#include <memory>

namespace
{
QLineEdit* Field(const QWidget* dialog, const char* name)
{
    return dialog->findChild<QLineEdit*>(QLatin1String(name));
}

void Fill(const QWidget* dialog, const QString& name, const QString& description, const QString& path)
{
    Field(dialog, "nameLineEdit")->setText(name);
    Field(dialog, "directionLineEdit")->setText(description);
    Field(dialog, "saveFileLineEdit")->setText(path);
}

QByteArray ReadFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void WriteFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

QByteArray StreamRecord(const QString& text)
{
    QByteArray content;
    QDataStream stream(&content, QIODevice::WriteOnly);
    stream << text;
    return content;
}
} // namespace

class TemplatesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { world.Start(); }

    void init()
    {
        world.SignIn();
        RpaGlobalDataManager::Instance()->SetSuperAdmin(true);
        app = world.CreateApp();
        folder = std::make_unique<TestFolder>();
    }

    // Export

    void namesTheFirstEmptyField_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("description");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("text");
        const QString given = QStringLiteral("x");
        const QString blank = QStringLiteral("  ");
        QTest::newRow("nothing") << QString() << QString() << QString() << QStringLiteral("模板名称不能为空");
        QTest::newRow("blank name") << blank << given << given << QStringLiteral("模板名称不能为空");
        QTest::newRow("blank description") << given << blank << given << QStringLiteral("模板描述不能为空");
        QTest::newRow("blank path") << given << given << blank << QStringLiteral("存储路径不能为空");
        QTest::newRow("blank description and path")
            << given << blank << blank << QStringLiteral("模板描述不能为空");
    }

    void namesTheFirstEmptyField()
    {
        QFETCH(QString, name);
        QFETCH(QString, description);
        QFETCH(QString, path);
        QFETCH(QString, text);
        EditorDriver author;
        OpenVersion(author);
        ToastWatcher toasts;
        ModalDriver modals;
        modals.Then([&](QWidget* dialog) {
            QCOMPARE(dialog->windowTitle(), QStringLiteral("生成模板"));
            QCOMPARE(dialog->size(), QSize(400, 280));
            QVERIFY(Field(dialog, "saveFileLineEdit")->isReadOnly());
            Fill(dialog, name, description, path);
            QVERIFY(ModalDriver::Press(dialog, QStringLiteral("确定")));
            QVERIFY(dialog->isVisible());
            QVERIFY(ModalDriver::Press(dialog, QStringLiteral("取消")));
        });

        author.Press("pushButtonExportAppData");

        QCOMPARE(toasts.GetToasts(), QVector<SeenToast>({{text, 2}}));
        QVERIFY(QDir(folder->path()).entryList(QDir::Files).isEmpty());
    }

    void isTakenAwayWhileTheFolderIsChosen()
    {
        EditorDriver author;
        OpenVersion(author);
        ModalDriver modals;
        modals.Then([&](QWidget* dialog) {
            modals.ThenIn<QFileDialog>([&author](QFileDialog*) { author.Destroy(); });
            ModalDriver::Press(dialog, QStringLiteral("打开"));
        });

        author.Press("pushButtonExportAppData");

        QVERIFY(!author.GetEditor());
        QCOMPARE(modals.GetSeenCount(), 2);
        QVERIFY(!QApplication::activeModalWidget());
    }

    void cancellingTheFolderEmptiesThePath()
    {
        EditorDriver author;
        OpenVersion(author);
        ModalDriver modals;
        modals.Then([&](QWidget* dialog) {
            Fill(dialog, QStringLiteral("n"), QStringLiteral("d"), folder->path());
            modals.Then([](QWidget* files) {
                QCOMPARE(files->windowTitle(), QStringLiteral("请选择生成模板的存储路径"));
                ModalDriver::Reject(files);
            });
            QVERIFY(ModalDriver::Press(dialog, QStringLiteral("打开")));
            QCOMPARE(Field(dialog, "saveFileLineEdit")->text(), QString());
            ModalDriver::Reject(dialog);
        });

        author.Press("pushButtonExportAppData");

        QCOMPARE(modals.GetSeenCount(), 2);
    }

    void writesTheChosenFolder()
    {
        EditorDriver author;
        OpenVersion(author);
        ToastWatcher toasts;
        ModalDriver modals;
        modals.Then([&](QWidget* dialog) {
            Fill(dialog, QStringLiteral("n"), QStringLiteral("d"), QString());
            modals.Then([&](QWidget* files) {
                Field(files, "fileNameEdit")->setText(folder->path());
                QMetaObject::invokeMethod(files, "accept");
            });
            QVERIFY(ModalDriver::Press(dialog, QStringLiteral("打开")));
            QCOMPARE(Field(dialog, "saveFileLineEdit")->text(), folder->path());
            QVERIFY(ModalDriver::Press(dialog, QStringLiteral("确定")));
        });

        author.Press("pushButtonExportAppData");

        QCOMPARE(toasts.GetToasts(), QVector<SeenToast>({{QStringLiteral("生成模板成功"), 3}}));
        QVERIFY(QFile::exists(folder->filePath(QStringLiteral("n"))));
    }

    void writesOneStreamRecordWithTheWholeApp()
    {
        EditorDriver author;
        OpenVersion(author, QStringLiteral("先登录"));

        Export(author, QStringLiteral(" 报表模板 "), QStringLiteral("每日报表"));

        const QByteArray content = ReadFile(folder->filePath(QStringLiteral("报表模板")));
        QCOMPARE(content.size(), int(qFromBigEndian<quint32>(content.constData())) + 4);
        QDataStream stream(content);
        QString text;
        stream >> text;
        const QJsonObject record = QJsonDocument::fromJson(text.toUtf8()).object();
        QCOMPARE(record.keys(), QStringList({QStringLiteral("appData"), QStringLiteral("templateDirection"),
                                             QStringLiteral("templateName")}));
        QCOMPARE(record.value(QStringLiteral("templateName")).toString(), QStringLiteral("报表模板"));
        QCOMPARE(record.value(QStringLiteral("templateDirection")).toString(), QStringLiteral("每日报表"));
        QVERIFY(text.indexOf(QStringLiteral("\"templateName\"")) <
                text.indexOf(QStringLiteral("\"appData\"")));
    }

    void hasWrittenTheFileWhenItSaysSo()
    {
        EditorDriver author;
        OpenVersion(author);
        ToastWatcher toasts;
        QByteArray then;
        connect(&toasts, &ToastWatcher::SigToast, &toasts,
                [&] { then = ReadFile(folder->filePath(QStringLiteral("n"))); });

        Export(author, QStringLiteral("n"), QStringLiteral("d"));

        QCOMPARE(toasts.GetTexts(), QStringList(QStringLiteral("生成模板成功")));
        QVERIFY(!then.isEmpty());
        QCOMPARE(then, ReadFile(folder->filePath(QStringLiteral("n"))));
    }

    void replacesAFileOfTheSameNameWithoutAsking()
    {
        WriteFile(folder->filePath(QStringLiteral("n")), QByteArray(100000, 'x'));
        EditorDriver author;
        OpenVersion(author);

        Export(author, QStringLiteral("n"), QStringLiteral("d"));

        const QByteArray content = ReadFile(folder->filePath(QStringLiteral("n")));
        QCOMPARE(content.size(), int(qFromBigEndian<quint32>(content.constData())) + 4);
    }

    void saysWhenTheFileCannotBeWritten()
    {
        EditorDriver author;
        OpenVersion(author);
        ToastWatcher toasts;
        ModalDriver modals;
        modals.Then([&](QWidget* dialog) {
            Fill(dialog, QStringLiteral("no/such/folder"), QStringLiteral("d"), folder->path());
            QVERIFY(ModalDriver::Press(dialog, QStringLiteral("确定")));
        });

        author.Press("pushButtonExportAppData");

        QCOMPARE(toasts.GetToasts(), QVector<SeenToast>({{QStringLiteral("生成模板失败"), 2}}));
    }

    void hasNothingToExportWithoutAnApp()
    {
        EditorDriver author;
        ToastWatcher toasts;
        ModalDriver noDialog;

        author.Press("pushButtonExportAppData");

        QCOMPARE(toasts.GetToasts(),
                 QVector<SeenToast>({{QStringLiteral("不存在数据，请先创建数据后在进行生成模板"), 2}}));
    }

    // Selection

    void startsANewAppFromAnExportedTemplate()
    {
        EditorDriver first;
        OpenVersion(first, QStringLiteral("先登录"));
        Export(first, QStringLiteral("报表模板"), QStringLiteral("每日报表"));
        first.Destroy();
        OfferTemplates();
        EditorDriver author;
        ModalDriver modals;
        modals.Then([](QWidget* dialog) {
            QCOMPARE(dialog->windowTitle(), QStringLiteral("选择模板"));
            QCOMPARE(dialog->size(), QSize(400, 240));
            QCOMPARE(Combo(dialog)->currentText(), QStringLiteral("报表模板"));
            QCOMPARE(Description(dialog), QStringLiteral("每日报表"));
            QVERIFY(ModalDriver::Press(dialog, QStringLiteral("确定")));
        });

        author.GetEditor()->SetExecuteInfo(world.CreateApp());
        QTRY_VERIFY(!author.GetVersions().isEmpty());

        QVERIFY(author.GetInstructions().contains(QStringLiteral("先登录")));
        QCOMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));
        // It counts as unsaved work.
        modals.Then([](QWidget* box) { ModalDriver::Reject(box); });
        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::Refused);
    }

    void cancellingStartsFromTheDefault()
    {
        WriteTemplate(QStringLiteral("a"), QStringLiteral("甲"), QStringLiteral("d"),
                      QStringLiteral("template"));
        OfferTemplates();
        EditorDriver author;
        ModalDriver modals;
        modals.Then([](QWidget* dialog) { QVERIFY(ModalDriver::Press(dialog, QStringLiteral("取消"))); });

        author.GetEditor()->SetExecuteInfo(app);
        QTRY_VERIFY(!author.GetVersions().isEmpty());

        QCOMPARE(author.GetInstructions(), QString());
        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::NothingPending);
    }

    void startsFromTheDefaultWithoutTemplates_data()
    {
        QTest::addColumn<QString>("what");
        QTest::newRow("no folder is set") << QString();
        QTest::newRow("the folder is missing") << QStringLiteral("missing");
        QTest::newRow("the folder is empty") << QStringLiteral("empty");
        QTest::newRow("only files that are no templates") << QStringLiteral("broken");
    }

    void startsFromTheDefaultWithoutTemplates()
    {
        QFETCH(QString, what);
        if (what == QStringLiteral("broken"))
            WriteBrokenFiles();
        const QString dir = what == QStringLiteral("missing") ? folder->filePath(QStringLiteral("gone"))
                            : what.isEmpty()                  ? QString()
                                                              : folder->path();
        RpaSuperDir::Instance()->SetTemplateDirs(dir, QString());
        EditorDriver author;
        ModalDriver noDialog;

        author.GetEditor()->SetExecuteInfo(app);
        QTRY_VERIFY(!author.GetVersions().isEmpty());

        QCOMPARE(author.GetInstructions(), QString());
    }

    void listsTemplatesOfTheSameNameInTheOrderOfTheirFiles()
    {
        WriteTemplate(QStringLiteral("b"), QStringLiteral("同名"), QStringLiteral("second"), QString());
        WriteTemplate(QStringLiteral("a"), QStringLiteral("同名"), QStringLiteral("first"), QString());
        WriteTemplate(QStringLiteral("c"), QStringLiteral("另一个"), QStringLiteral("third"), QString());
        WriteBrokenFiles();
        OfferTemplates();
        EditorDriver author;
        ModalDriver modals;
        modals.Then([](QWidget* dialog) {
            QComboBox* combo = Combo(dialog);
            QCOMPARE(combo->count(), 3);
            QCOMPARE(combo->currentIndex(), 0);
            QCOMPARE(Description(dialog), QStringLiteral("first"));
            QCOMPARE(combo->itemData(0).toString(), QStringLiteral("a"));
            combo->setCurrentIndex(1);
            QCOMPARE(combo->currentText(), QStringLiteral("同名"));
            QCOMPARE(Description(dialog), QStringLiteral("second"));
            ModalDriver::Reject(dialog);
        });

        author.GetEditor()->SetExecuteInfo(app);

        QTRY_VERIFY(!author.GetVersions().isEmpty());
    }

    void takesTheTemplateThatWasChosen()
    {
        WriteTemplate(QStringLiteral("a"), QStringLiteral("甲"), QStringLiteral("d"),
                      QStringLiteral("content a"));
        WriteTemplate(QStringLiteral("b"), QStringLiteral("乙"), QStringLiteral("d"),
                      QStringLiteral("content b"));
        OfferTemplates();
        EditorDriver author;
        ModalDriver modals;
        modals.Then([](QWidget* dialog) {
            QTest::keyClick(Combo(dialog), Qt::Key_Down);
            QVERIFY(ModalDriver::Press(dialog, QStringLiteral("确定")));
        });

        author.GetEditor()->SetExecuteInfo(app);
        QTRY_VERIFY(!author.GetVersions().isEmpty());

        QVERIFY(author.GetInstructions().contains(QStringLiteral("content b")));
    }

    void offersTheFolderOfTheAppsKind_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("dialogs");
        QTest::newRow("visual") << 0 << 0;
        QTest::newRow("program") << 1 << 1;
        QTest::newRow("any other kind") << 5 << 1;
    }

    void offersTheFolderOfTheAppsKind()
    {
        QFETCH(int, kind);
        QFETCH(int, dialogs);
        WriteTemplate(QStringLiteral("a"), QStringLiteral("甲"), QStringLiteral("d"), QString());
        RpaSuperDir::Instance()->SetTemplateDirs(QString(), folder->path());
        app.SetAppKind(kind);
        EditorDriver author;
        ModalDriver modals;
        if (dialogs > 0)
            modals.Then([](QWidget* dialog) { ModalDriver::Reject(dialog); });

        author.GetEditor()->SetExecuteInfo(app);
        QTRY_VERIFY(!author.GetVersions().isEmpty());

        QCOMPARE(modals.GetSeenCount(), dialogs);
    }

    void isTakenAwayWhileTheTemplatesAreOffered()
    {
        WriteTemplate(QStringLiteral("a"), QStringLiteral("甲"), QStringLiteral("d"), QString());
        OfferTemplates();
        EditorDriver author;
        ModalDriver modals;
        modals.Then([&author](QWidget*) { author.Destroy(); });

        author.GetEditor()->SetExecuteInfo(app);

        QTRY_VERIFY(!author.GetEditor());
    }

private:
    static QComboBox* Combo(const QWidget* dialog)
    {
        return dialog->findChild<QComboBox*>(QStringLiteral("comboBox"));
    }

    static QString Description(const QWidget* dialog)
    {
        return dialog->findChild<QLabel*>(QStringLiteral("descLabel"))->text();
    }

    void OpenVersion(EditorDriver& author, const QString& instructions = {})
    {
        world.AddVersion(app, QStringLiteral("版本1"), QString(), instructions);
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));
    }

    void Export(EditorDriver& author, const QString& name, const QString& description)
    {
        ToastWatcher toasts;
        ModalDriver modals;
        modals.Then([&](QWidget* dialog) {
            Fill(dialog, name, description, folder->path());
            QVERIFY(ModalDriver::Press(dialog, QStringLiteral("确定")));
        });
        author.Press("pushButtonExportAppData");
        QCOMPARE(toasts.GetToasts(), QVector<SeenToast>({{QStringLiteral("生成模板成功"), 3}}));
    }

    void OfferTemplates() { RpaSuperDir::Instance()->SetTemplateDirs(folder->path(), QString()); }

    // As another workstation wrote it: the app's JSON as bytes of its own.
    void WriteTemplate(const QString& file, const QString& name, const QString& description,
                       const QString& instructions)
    {
        EditorDriver author;
        const RobotExecuteInfo source = world.CreateApp();
        world.AddVersion(source, QStringLiteral("版本1"), QString(), instructions);
        author.GetEditor()->SetExecuteInfo(source);
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));
        Export(author, name, description);
        if (file != name) {
            QFile::remove(folder->filePath(file));
            QVERIFY(QFile::rename(folder->filePath(name), folder->filePath(file)));
        }
    }

    void WriteBrokenFiles()
    {
        WriteFile(folder->filePath(QStringLiteral("0-empty")), QByteArray());
        WriteFile(folder->filePath(QStringLiteral("1-text")), QByteArrayLiteral("no stream"));
        WriteFile(folder->filePath(QStringLiteral("2-nameless")),
                  StreamRecord(QStringLiteral("{\"templateName\":\"\",\"templateDirection\":\"d\"}")));
        WriteFile(folder->filePath(QStringLiteral("3-no-json")), StreamRecord(QStringLiteral("[1,2")));
        WriteFile(folder->filePath(QStringLiteral("4-cut")), QByteArray::fromHex("7fffffff00"));
        QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("5-folder")));
        // Reading a process's memory from its first byte fails for everybody, an administrator too.
        const QString unreadable = QStringLiteral("/proc/self/mem");
        if (QFile::exists(unreadable))
            QVERIFY(QFile::link(unreadable, folder->filePath(QStringLiteral("6-unreadable"))));
    }

    EditorWorld world;
    RobotExecuteInfo app;
    std::unique_ptr<TestFolder> folder;
};

RPA_TEST_MAIN(TemplatesTest)
#include "tst_templates.moc"
