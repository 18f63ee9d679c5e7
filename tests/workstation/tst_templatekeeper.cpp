// SPDX-License-Identifier: Apache-2.0

#include "TemplateFile.h"
#include "TemplateKeeper.h"
#include "TestFolder.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <WbFoundation/ContentLimits.h>

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

namespace
{
// Windows makes symbolic links for administrators only; its shortcuts are made by everybody.
#ifdef Q_OS_WIN
constexpr char linkName[] = "/b.rpat.lnk";
#else
constexpr char linkName[] = "/b.rpat";
#endif

QByteArray App(const QString& manual)
{
    RpaAppData app;
    app.InitDefault();
    app.GetAppExtendInfo()->manual = manual;
    return app.ToJson();
}

// A template file as the editor writes it.
QByteArray Template(const QString& name, const QByteArray& app)
{
    TemplateRecord record;
    record.name = name;
    record.description = QStringLiteral("关于") + name;
    record.appData = app;
    return TemplateFile::Encode(record);
}

QByteArray Template(const QString& name)
{
    return Template(name, App(name));
}
} // namespace

class tst_TemplateKeeper : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void offersTheAppOfATemplate();
    void offersLargeTemplatesByShortFiles();
    void offersTheTemplateOfAnAppLongerThanAText();
    void neverLetsTheEditorReadTheAuthorsFolder();
    void leavesOutWhatIsNoRegularFile();
    void leavesOutAndNamesFilesThatAreTooLarge();
    void leavesOutAndNamesAnAppThatCouldNotBeOpened();
    void passesOverFilesThatAreNoTemplates();
    void offersFiveHundredTemplatesAtMost();
    void startsAsANewAppWhenTheCopyIsSpoilt();
    void offersWhatWasOverwrittenInPlace();
    void offersTemplatesThatLieElsewhere();
    void keepsTheFolderWhileNothingChanges();
    void removesNothingButItsOwnFolders();
    void callsBackOnceForTheLastWhoAsked();
    void keepsACopyOfEveryTemplateItSaw();
    void keepsTheOldTemplateWhenItIsOverwritten();
    void warnsOfATemplateThatWasWrittenEmpty();

private:
    void Write(const QString& name, const QByteArray& content) const;
    void LookNow();
    QStringList Offered() const;
    TemplateRecord* Offer(const QString& name);
    int KeptCount() const;

    std::unique_ptr<TestFolder> home;
    QString folder;
    QString data;
    QString before;
    std::unique_ptr<TemplateKeeper> keeper;
    std::unique_ptr<TemplateRecord> offer;
    QStringList problems;
};

void tst_TemplateKeeper::init()
{
    home = std::make_unique<TestFolder>();
    folder = home->filePath(QStringLiteral("visual"));
    data = home->filePath(QStringLiteral("data"));
    before = QDir::currentPath();
    QVERIFY(QDir().mkpath(folder));
    // A mistaken removal takes this folder along, and nothing else.
    QVERIFY(QDir().mkpath(home->filePath(QStringLiteral("current/inside"))));
    QVERIFY(QDir::setCurrent(home->filePath(QStringLiteral("current"))));
    keeper = std::make_unique<TemplateKeeper>(QStringList{folder}, data);
    problems.clear();
    connect(keeper.get(), &TemplateKeeper::SigProblem, this,
            [this](const QString& problem) { problems << problem; });
}

void tst_TemplateKeeper::cleanup()
{
    keeper.reset();
    QDir::setCurrent(before);
    home.reset();
}

void tst_TemplateKeeper::Write(const QString& name, const QByteArray& content) const
{
    QFile file(folder + QLatin1Char('/') + name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

void tst_TemplateKeeper::LookNow()
{
    QSignalSpy looked(keeper.get(), &TemplateKeeper::SigLooked);
    keeper->Look();
    QTRY_VERIFY_WITH_TIMEOUT(!looked.isEmpty(), 60000);
}

QStringList tst_TemplateKeeper::Offered() const
{
    return QDir(keeper->GetFitFolder(folder))
        .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System | QDir::Hidden, QDir::Name);
}

// What the editor reads.
TemplateRecord* tst_TemplateKeeper::Offer(const QString& name)
{
    QFile file(keeper->GetFitFolder(folder) + QLatin1Char('/') + name);
    QString json;
    if (file.open(QIODevice::ReadOnly)) {
        QDataStream stream(&file);
        stream >> json;
    }
    offer = std::make_unique<TemplateRecord>();
    offer->Parse(json.toUtf8());
    return offer.get();
}

int tst_TemplateKeeper::KeptCount() const
{
    return QDir(keeper->GetKeptFolder()).entryList(QDir::Files).size();
}

void tst_TemplateKeeper::offersTheAppOfATemplate()
{
    const QStringList names{QStringLiteral("甲"), QStringLiteral("乙")};
    const QList<QByteArray> apps{App(names.at(0)), App(names.at(1))};
    Write(QStringLiteral("a"), Template(names.at(0), apps.at(0)));
    Write(QStringLiteral("b"), Template(names.at(1), apps.at(1)));

    LookNow();

    QCOMPARE(Offered(), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    for (int i = 0; i < Offered().size(); ++i) {
        const TemplateRecord* record = Offer(Offered().at(i));
        QCOMPARE(record->name, names.at(i));
        QCOMPARE(record->description, QStringLiteral("关于") + names.at(i));
        RpaAppData app;
        QVERIFY(app.Parse(record->appData));
        QCOMPARE(app.ToJson(), apps.at(i));
    }
    QCOMPARE(problems, QStringList());
}

// The editor reads all of them while the author waits.
void tst_TemplateKeeper::offersLargeTemplatesByShortFiles()
{
    const QString manual(2 * 1024 * 1024, QLatin1Char('x'));
    Write(QStringLiteral("a"), Template(QStringLiteral("甲"), App(manual)));

    LookNow();

    QVERIFY(QFileInfo(keeper->GetFitFolder(folder) + QStringLiteral("/a")).size() < 1024);
    RpaAppData app;
    QVERIFY(app.Parse(Offer(QStringLiteral("a"))->appData));
    QVERIFY(app.GetAppExtendInfo()->manual == manual);
}

// As one string of a template the app is longer than any text in an app may be.
void tst_TemplateKeeper::offersTheTemplateOfAnAppLongerThanAText()
{
    // Quotes are written as two characters, and as four in a template.
    const QByteArray json = App(QString(ContentLimits::textBytes / 2, QLatin1Char('"')));
    QVERIFY(json.size() > ContentLimits::textBytes);
    Write(QStringLiteral("a"), Template(QStringLiteral("甲"), json));

    LookNow();

    QCOMPARE(problems, QStringList());
    QCOMPARE(Offered(), QStringList{QStringLiteral("a")});
    RpaAppData again;
    QVERIFY(again.Parse(Offer(QStringLiteral("a"))->appData));
    QVERIFY(again.ToJson() == json);
}

void tst_TemplateKeeper::neverLetsTheEditorReadTheAuthorsFolder()
{
    QCOMPARE(keeper->GetFitFolder(folder), QString());
    Write(QStringLiteral("a"), Template(QStringLiteral("甲")));

    LookNow();

    QVERIFY(keeper->GetFitFolder(folder).startsWith(data));
}

void tst_TemplateKeeper::leavesOutWhatIsNoRegularFile()
{
    Write(QStringLiteral("a.rpat"), Template(QStringLiteral("甲")));
    QVERIFY(QFile::link(folder + QStringLiteral("/a.rpat"), folder + QLatin1String(linkName)));
    QVERIFY(QDir(folder).mkdir(QStringLiteral("c.rpat")));

    LookNow();

    QCOMPARE(Offered(), QStringList{QStringLiteral("a.rpat")});
}

void tst_TemplateKeeper::leavesOutAndNamesFilesThatAreTooLarge()
{
    Write(QStringLiteral("a"), Template(QStringLiteral("甲")));
    Write(QStringLiteral("b"), "b");
    QVERIFY(QFile::resize(folder + QStringLiteral("/b"), TemplateFile::LargestBytes() + 1));

    LookNow();

    QCOMPARE(Offered(), QStringList{QStringLiteral("a")});
    QCOMPARE(problems, QStringList{QStringLiteral("模板文件“b”过大，不会出现在模板列表中")});
}

void tst_TemplateKeeper::leavesOutAndNamesAnAppThatCouldNotBeOpened()
{
    const QByteArray manual(ContentLimits::textBytes + 1, 'x');
    Write(QStringLiteral("a"),
          Template(QStringLiteral("甲"), "{\"extendInfo\":{\"manual\":\"" + manual + "\"}}"));

    LookNow();
    LookNow();

    QCOMPARE(Offered(), QStringList());
    QCOMPARE(problems.size(), 1);
    QVERIFY2(problems.first().startsWith(QStringLiteral("模板文件“a”的内容无法读取")),
             qPrintable(problems.first()));
}

void tst_TemplateKeeper::passesOverFilesThatAreNoTemplates()
{
    Write(QStringLiteral("readme"), "some text, longer than a head");
    Write(QStringLiteral("nameless"), Template(QString()));
    QByteArray cut = Template(QStringLiteral("丙"));
    cut.chop(1);
    Write(QStringLiteral("cut"), cut);

    LookNow();

    QCOMPARE(Offered(), QStringList());
    QCOMPARE(problems, QStringList());
}

void tst_TemplateKeeper::offersFiveHundredTemplatesAtMost()
{
    const QByteArray content = Template(QStringLiteral("甲"));
    for (int i = 0; i < 501; ++i)
        Write(QStringLiteral("%1.rpat").arg(i, 3, 10, QLatin1Char('0')), content);

    LookNow();

    QCOMPARE(Offered().size(), 500);
    QCOMPARE(Offered().last(), QStringLiteral("499.rpat"));
}

void tst_TemplateKeeper::startsAsANewAppWhenTheCopyIsSpoilt()
{
    Write(QStringLiteral("a"), Template(QStringLiteral("甲")));
    LookNow();
    const QByteArray reference = Offer(QStringLiteral("a"))->appData;
    QFile copy(QDir(keeper->GetKeptFolder()).entryInfoList(QDir::Files).first().filePath());
    QVERIFY(copy.open(QIODevice::ReadWrite));
    copy.seek(copy.size() - 4);
    copy.write("xxxx");
    copy.close();
    QSignalSpy lost(keeper.get(), &TemplateKeeper::SigContentLost);

    RpaAppData app;
    QVERIFY(app.Parse(reference));

    QCOMPARE(lost.size(), 1);
    QCOMPARE(app.GetAppExtendInfo()->manual, QString());
    QCOMPARE(app.GetUIDataManager()->GetCount(), 1);
}

void tst_TemplateKeeper::offersWhatWasOverwrittenInPlace()
{
    Write(QStringLiteral("a"), Template(QStringLiteral("甲")));
    LookNow();

    Write(QStringLiteral("a"), Template(QStringLiteral("乙乙")));
    LookNow();

    QCOMPARE(Offer(QStringLiteral("a"))->name, QStringLiteral("乙乙"));
}

void tst_TemplateKeeper::offersTemplatesThatLieElsewhere()
{
    const QString desk = home->filePath(QStringLiteral("desk"));
    QVERIFY(QDir().mkpath(desk));
    const auto put = [&desk](const QString& name, const QByteArray& content) {
        QFile file(desk + QLatin1Char('/') + name);
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    };
    Write(QStringLiteral("对账"), Template(QStringLiteral("对账")));
    QVERIFY(put(QStringLiteral("对账"), Template(QStringLiteral("新对账"))));
    QVERIFY(put(QStringLiteral("未选"), Template(QStringLiteral("未选"))));
    QVERIFY(QDir().mkpath(desk + QStringLiteral("/文件夹")));

    keeper->SetOthers(folder, {desk + QStringLiteral("/对账"), desk + QStringLiteral("/没有"),
                               desk + QStringLiteral("/文件夹"), folder + QStringLiteral("/对账")});
    LookNow();

    QCOMPARE(Offered(), (QStringList{QStringLiteral("对账"), QStringLiteral("对账-2")}));
    QCOMPARE(Offer(QStringLiteral("对账"))->name, QStringLiteral("对账"));
    QCOMPARE(Offer(QStringLiteral("对账-2"))->name, QStringLiteral("新对账"));
    QCOMPARE(problems, QStringList());
}

void tst_TemplateKeeper::keepsTheFolderWhileNothingChanges()
{
    Write(QStringLiteral("a"), Template(QStringLiteral("甲")));
    LookNow();
    const QString first = keeper->GetFitFolder(folder);

    LookNow();
    QCOMPARE(keeper->GetFitFolder(folder), first);

    Write(QStringLiteral("b"), Template(QStringLiteral("乙")));
    LookNow();
    QVERIFY(keeper->GetFitFolder(folder) != first);
    // Somebody may be reading it just now.
    QVERIFY(QFile::exists(first + QStringLiteral("/a")));
}

void tst_TemplateKeeper::removesNothingButItsOwnFolders()
{
    for (const char* name : {"a", "b", "c"}) {
        Write(QString::fromLatin1(name), Template(QStringLiteral("甲")));
        LookNow();
    }

    QVERIFY(QFile::exists(home->filePath(QStringLiteral("current/inside"))));
    QCOMPARE(QDir(folder).entryList(QDir::Files).size(), 3);
    QCOMPARE(
        QDir(data + QStringLiteral("/templates-fit")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 2);
}

void tst_TemplateKeeper::callsBackOnceForTheLastWhoAsked()
{
    QStringList calls;
    QSignalSpy looked(keeper.get(), &TemplateKeeper::SigLooked);

    keeper->LookThen([&] { calls << QStringLiteral("first"); });
    keeper->LookThen([&] { calls << QStringLiteral("second"); });

    QCOMPARE(calls, QStringList());
    QTRY_COMPARE(calls, QStringList{QStringLiteral("second")});
    QCOMPARE(looked.size(), 2);
}

void tst_TemplateKeeper::keepsACopyOfEveryTemplateItSaw()
{
    const QByteArray content = Template(QStringLiteral("乙"));
    Write(QStringLiteral("a.rpat"), "one, which is no template");
    Write(QStringLiteral("b.rpat"), content);
    Write(QStringLiteral("same as b.rpat"), content);

    LookNow();

    QCOMPARE(KeptCount(), 2);
}

void tst_TemplateKeeper::keepsTheOldTemplateWhenItIsOverwritten()
{
    Write(QStringLiteral("a.rpat"), Template(QStringLiteral("甲")));
    LookNow();

    QVERIFY(QFile::remove(folder + QStringLiteral("/a.rpat")));
    Write(QStringLiteral("a.rpat"), Template(QStringLiteral("另一个")));

    QTRY_COMPARE(KeptCount(), 2);
}

void tst_TemplateKeeper::warnsOfATemplateThatWasWrittenEmpty()
{
    Write(QStringLiteral("a.rpat"), "");

    LookNow();

    QCOMPARE(problems,
             QStringList{QStringLiteral("模板文件“a.rpat”没有内容，请重新生成，不会出现在模板列表中")});
}

QTEST_GUILESS_MAIN(tst_TemplateKeeper)
#include "tst_templatekeeper.moc"
