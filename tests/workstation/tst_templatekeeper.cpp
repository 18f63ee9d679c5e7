#include "TemplateKeeper.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
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
} // namespace

class tst_TemplateKeeper : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void handsOutTheFolderItselfWhileEverythingInItIsFit();
    void leavesOutWhatIsNoRegularFile();
    void leavesOutFilesThatAreTooLarge();
    void showsFiveHundredTemplatesAtMost();
    void keepsACopyOfEveryTemplateItSaw();
    void keepsTheOldTemplateWhenItIsOverwritten();
    void warnsOfATemplateThatWasWrittenEmpty();

private:
    void Write(const QString& name, const QByteArray& content) const;
    int KeptCount() const;

    std::unique_ptr<QTemporaryDir> home;
    QString folder;
    QString data;
};

void tst_TemplateKeeper::init()
{
    home = std::make_unique<QTemporaryDir>();
    folder = home->filePath(QStringLiteral("visual"));
    data = home->filePath(QStringLiteral("data"));
    QVERIFY(QDir().mkpath(folder));
}

void tst_TemplateKeeper::Write(const QString& name, const QByteArray& content) const
{
    QFile file(folder + QLatin1Char('/') + name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

int tst_TemplateKeeper::KeptCount() const
{
    return QDir(data + QStringLiteral("/templates-kept")).entryList(QDir::Files).size();
}

void tst_TemplateKeeper::handsOutTheFolderItselfWhileEverythingInItIsFit()
{
    const TemplateKeeper keeper({folder}, data);
    Write(QStringLiteral("a.rpat"), "a");

    QCOMPARE(keeper.GetFitFolder(folder), folder);
}

void tst_TemplateKeeper::leavesOutWhatIsNoRegularFile()
{
    const TemplateKeeper keeper({folder}, data);
    Write(QStringLiteral("a.rpat"), "a");
    QVERIFY(QFile::link(folder + QStringLiteral("/a.rpat"), folder + QLatin1String(linkName)));
    QVERIFY(QDir(folder).mkdir(QStringLiteral("c.rpat")));

    const QString fit = keeper.GetFitFolder(folder);

    QVERIFY(fit != folder);
    QCOMPARE(QDir(fit).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System),
             QStringList{QStringLiteral("a.rpat")});
}

void tst_TemplateKeeper::leavesOutFilesThatAreTooLarge()
{
    const TemplateKeeper keeper({folder}, data);
    Write(QStringLiteral("a.rpat"), "a");
    Write(QStringLiteral("b.rpat"), "b");
    QVERIFY(QFile::resize(folder + QStringLiteral("/a.rpat"), 64LL * 1024 * 1024));
    QVERIFY(QFile::resize(folder + QStringLiteral("/b.rpat"), 64LL * 1024 * 1024 + 1));

    QCOMPARE(QDir(keeper.GetFitFolder(folder)).entryList(QDir::Files), QStringList{QStringLiteral("a.rpat")});
}

void tst_TemplateKeeper::showsFiveHundredTemplatesAtMost()
{
    const TemplateKeeper keeper({folder}, data);
    for (int i = 0; i < 501; ++i) {
        Write(QStringLiteral("%1.rpat").arg(i, 3, 10, QLatin1Char('0')), "x");
    }

    const QStringList shown = QDir(keeper.GetFitFolder(folder)).entryList(QDir::Files, QDir::Name);

    QCOMPARE(shown.size(), 500);
    QCOMPARE(shown.last(), QStringLiteral("499.rpat"));
}

void tst_TemplateKeeper::keepsACopyOfEveryTemplateItSaw()
{
    TemplateKeeper keeper({folder}, data);
    QSignalSpy looked(&keeper, &TemplateKeeper::SigLooked);
    Write(QStringLiteral("a.rpat"), "one");
    Write(QStringLiteral("b.rpat"), "two");
    Write(QStringLiteral("same as b.rpat"), "two");

    keeper.Look();

    QTRY_COMPARE(looked.size(), 1);
    QCOMPARE(KeptCount(), 2);
}

void tst_TemplateKeeper::keepsTheOldTemplateWhenItIsOverwritten()
{
    TemplateKeeper keeper({folder}, data);
    QSignalSpy looked(&keeper, &TemplateKeeper::SigLooked);
    Write(QStringLiteral("a.rpat"), "one");
    keeper.Look();
    QTRY_COMPARE(looked.size(), 1);

    QVERIFY(QFile::remove(folder + QStringLiteral("/a.rpat")));
    Write(QStringLiteral("a.rpat"), "another");

    QTRY_COMPARE(KeptCount(), 2);
}

void tst_TemplateKeeper::warnsOfATemplateThatWasWrittenEmpty()
{
    TemplateKeeper keeper({folder}, data);
    QSignalSpy unreadable(&keeper, &TemplateKeeper::SigUnreadable);
    Write(QStringLiteral("a.rpat"), "");

    keeper.Look();

    QTRY_COMPARE(unreadable.size(), 1);
    QCOMPARE(unreadable.first().first().toString(), QStringLiteral("a.rpat"));
}

QTEST_GUILESS_MAIN(tst_TemplateKeeper)
#include "tst_templatekeeper.moc"
