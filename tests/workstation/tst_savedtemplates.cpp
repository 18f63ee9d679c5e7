// SPDX-License-Identifier: Apache-2.0

#include "SavedTemplates.h"
#include "TestFolder.h"

#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QSignalSpy>
#include <QtTest>

// Has the name and the fields of the editor's dialog.
class RpaTemplateExportDlg : public QDialog
{
    Q_OBJECT

public:
    RpaTemplateExportDlg(const QString& folder, const QString& name)
    {
        auto* folderEdit = new QLineEdit(folder, this);
        folderEdit->setObjectName(QStringLiteral("saveFileLineEdit"));
        auto* nameEdit = new QLineEdit(name, this);
        nameEdit->setObjectName(QStringLiteral("nameLineEdit"));
    }
};

class tst_SavedTemplates : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void remembersWhatTheAuthorAccepted();
    void keepsTheKindsApart();
    void forgetsWhatTheAuthorCancelled();
    void remembersInTheNextRun();
    void remembersAFileOnce();
    void startsEmptyWithASpoiltFile();

private:
    void Save(const QString& folder, const QString& name, QDialog::DialogCode answer = QDialog::Accepted);

    std::unique_ptr<TestFolder> home;
    QString file;
    int kind = 0;
    std::unique_ptr<SavedTemplates> saved;
};

void tst_SavedTemplates::init()
{
    saved.reset();
    home = std::make_unique<TestFolder>();
    file = home->filePath(QStringLiteral("saved.json"));
    kind = 0;
    saved = std::make_unique<SavedTemplates>(file, [this] { return kind; });
}

void tst_SavedTemplates::Save(const QString& folder, const QString& name, QDialog::DialogCode answer)
{
    RpaTemplateExportDlg dialog(folder, name);
    QTimer::singleShot(0, &dialog, [&dialog, answer] { dialog.done(answer); });
    dialog.exec();
}

void tst_SavedTemplates::remembersWhatTheAuthorAccepted()
{
    QSignalSpy told(saved.get(), &SavedTemplates::SigSaved);

    Save(QStringLiteral("/桌面/"), QStringLiteral(" 对账 "));

    QCOMPARE(saved->GetFiles(0), QStringList(QStringLiteral("/桌面/对账")));
    QCOMPARE(told.size(), 0); // nothing is written yet
    QTRY_COMPARE(told.size(), 1);
}

void tst_SavedTemplates::keepsTheKindsApart()
{
    Save(QStringLiteral("/桌面"), QStringLiteral("对账"));
    kind = 1;
    Save(QStringLiteral("/桌面"), QStringLiteral("报表"));

    QCOMPARE(saved->GetFiles(0), QStringList(QStringLiteral("/桌面/对账")));
    QCOMPARE(saved->GetFiles(1), QStringList(QStringLiteral("/桌面/报表")));
}

void tst_SavedTemplates::forgetsWhatTheAuthorCancelled()
{
    Save(QStringLiteral("/桌面"), QStringLiteral("对账"), QDialog::Rejected);

    QCOMPARE(saved->GetFiles(0), QStringList());
    QVERIFY(!QFile::exists(file));
}

void tst_SavedTemplates::remembersInTheNextRun()
{
    Save(QStringLiteral("/桌面"), QStringLiteral("对账"));
    kind = 1;
    Save(QStringLiteral("/网盘"), QStringLiteral("报表"));

    const SavedTemplates next(file, [] { return 0; });

    QCOMPARE(next.GetFiles(0), QStringList(QStringLiteral("/桌面/对账")));
    QCOMPARE(next.GetFiles(1), QStringList(QStringLiteral("/网盘/报表")));
}

void tst_SavedTemplates::remembersAFileOnce()
{
    QSignalSpy told(saved.get(), &SavedTemplates::SigSaved);

    Save(QStringLiteral("/桌面"), QStringLiteral("对账"));
    Save(QStringLiteral("/桌面"), QStringLiteral("对账"));

    QCOMPARE(saved->GetFiles(0).size(), 1);
    QTRY_COMPARE(told.size(), 2); // its content is another
}

void tst_SavedTemplates::startsEmptyWithASpoiltFile()
{
    QFile spoilt(file);
    QVERIFY(spoilt.open(QIODevice::WriteOnly));
    spoilt.write("{\"0\":[\"relative\",7,\"/桌面/好\"],\"x\":3,\"1\":{}}");
    spoilt.close();

    const SavedTemplates next(file, [] { return 0; });

    QCOMPARE(next.GetFiles(0), QStringList(QStringLiteral("/桌面/好")));
    QCOMPARE(next.GetFiles(1), QStringList());
}

QTEST_MAIN(tst_SavedTemplates)
#include "tst_savedtemplates.moc"
